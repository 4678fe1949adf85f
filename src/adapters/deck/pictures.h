// Pictures of slides: by LibreOffice where it is installed, else by the painter of the house.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "adapters/deck/deck.h"
#include "adapters/deck/picture_source.h"
#include "adapters/deck/studio.h"

namespace qrn::deck {

struct PictureRequest {
  std::size_t slide = 0;      // index into the slides
  bool slideChanged = false;  // it differs from the deck on the disk: it is then drawn by itself
  std::string file, format;
  int width = 0, height = 0;
};

class Pictures {
 public:
  Pictures(const std::string& cacheFolder, SlidePainter* fallback)
      : studio_(std::make_shared<Studio>(cacheFolder)), fallback_(fallback) {}
  bool byLibreOffice() const { return studio_->works(); }
  // JPEG pictures of all slides; null without LibreOffice.
  std::unique_ptr<host::PictureRun> makeAll(std::shared_ptr<const PictureSource> source, int width,
                                            int height);
  // Throws HostError when no picture can be made or the file cannot be written.
  void make(const PictureSource& source, const PictureRequest& request,
            const std::function<SlideDrawing()>& drawing);

 private:
  bool convert(const PictureSource& source, const std::string& pdf);
  bool drawPage(const std::string& pdf, std::size_t page, const PictureKind& kind,
                const std::string& picture) const;
  bool makeByOffice(const PictureSource& source, const PictureRequest& request, const PictureKind& kind,
                    const std::string& picture);

  std::shared_ptr<Studio> studio_;
  SlidePainter* fallback_;
};

}  // namespace qrn::deck

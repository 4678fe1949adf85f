// Pictures of slides: LibreOffice makes a PDF of the deck, pdftoppm draws its pages; both are kept in the
// cache folder under a name made of what is drawn, so that votes never cause a new drawing. Without them the
// fallback painter draws title and text.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "adapters/deck/deck.h"
#include "adapters/deck/package.h"
#include "adapters/deck/slide_list.h"

namespace qrn::deck {

// The deck as it is to be drawn.
struct PictureSource {
  Parts parts;  // shape changes included
  std::string presentation;
  std::vector<SlideEntry> slides;
};

struct PictureRequest {
  std::size_t slide = 0;      // index into the slides
  bool slideChanged = false;  // it differs from the deck on the disk: it is then drawn by itself
  std::string file, format;
  int width = 0, height = 0;
};

// Name of what the slide looks like: the same as long as nothing that is drawn changes; tags, notes and other
// slides do not count.
std::string slideVersion(const PictureSource& source, std::size_t slide);
std::string deckVersion(const PictureSource& source);

class Pictures {
 public:
  Pictures(const std::string& cacheFolder, SlidePainter* fallback);
  bool byLibreOffice() const { return !office_.empty() && !failed_; }
  void prepare(const PictureSource& source, const std::function<void(const std::string&)>& progress);
  // Throws HostError when no picture can be made or the file cannot be written.
  void make(const PictureSource& source, const PictureRequest& request,
            const std::function<SlideDrawing()>& drawing);

 private:
  std::string pdfNamed(const std::string& name) const;
  bool convert(const PictureSource& source, const std::string& pdf);
  bool runOffice(const std::string& deck, const std::string& folder, std::size_t slides);
  bool drawPage(const std::string& pdf, std::size_t page, const PictureRequest& request,
                const std::string& picture) const;
  bool makeByOffice(const PictureSource& source, const PictureRequest& request, const std::string& picture);
  void dropOld() const;

  std::string folder_, office_, painter_;
  SlidePainter* fallback_;
  bool failed_ = false, busy_ = false;
};

}  // namespace qrn::deck

#include "adapters/deck/pictures.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdio>

#include "adapters/deck/picture_run.h"
#include "adapters/deck/text.h"
#include "adapters/deck/zip_source.h"
#include "base/text.h"

namespace qrn::deck {

namespace {

PictureKind kindOf(const PictureRequest& request) {
  const std::string format = upperCase(request.format);
  const bool jpeg = format == "JPG" || format == "JPEG";
  if ((!jpeg && format != "PNG") || request.width < 1 || request.height < 1)
    throw HostError(Fault::program, 5, "A slide cannot be drawn as " + request.format);
  return {jpeg, request.width, request.height};
}

// A picture can be made again, so nothing is flushed.
void copyPicture(const std::string& picture, const std::string& target) {
  const File in = File::open(picture, O_RDONLY);
  struct stat info {};
  NewFile out(target);
  if (::fstat(in.fd(), &info) != 0 || !copyBytes(in.fd(), out.fd(), static_cast<std::uint64_t>(info.st_size)))
    throwDisk("Cannot write", target);
  out.rename();
}

}  // namespace

std::unique_ptr<host::PictureRun> Pictures::makeAll(std::shared_ptr<const PictureSource> source, int width,
                                                    int height) {
  if (!byLibreOffice() || studio_->busy || source->slides().empty())
    return nullptr;
  return std::make_unique<PictureRun>(studio_, std::move(source), PictureKind{true, width, height});
}

void Pictures::make(const PictureSource& source, const PictureRequest& request,
                    const std::function<SlideDrawing()>& drawing) {
  const PictureKind kind = kindOf(request);
  const std::string picture = studio_->pictureNamed(source.slideVersion(request.slide), kind);
  if (isKept(picture) || (byLibreOffice() && makeByOffice(source, request, kind, picture))) {
    copyPicture(picture, request.file);
    return;
  }
  if (fallback_ == nullptr)
    throw HostError(
        Fault::world, 0,
        "No picture of slide " + std::to_string(request.slide + 1) + " of " + source.parts().file() +
            " could be made: " + (studio_->isThere() ? "LibreOffice failed." : "LibreOffice is not there."));
  fallback_->paint(drawing(), request.file, kind.jpeg ? "JPG" : "PNG", kind.width, kind.height);
}

bool Pictures::makeByOffice(const PictureSource& source, const PictureRequest& request,
                            const PictureKind& kind, const std::string& picture) {
  if (studio_->busy)
    return false;  // asked for again while the office program works: its answer would come too late
  const std::string whole = studio_->pdfNamed(source.deckVersion());
  if (isKept(whole) || (!request.slideChanged && convert(source, whole)))
    return drawPage(whole, request.slide + 1, kind, picture);
  if (!request.slideChanged)
    return false;
  const std::string single = studio_->pdfNamed(source.slideVersion(request.slide));
  return (isKept(single) || convert(source.only(request.slide), single)) &&
         drawPage(single, 1, kind, picture);
}

// False when the office program failed or the cache cannot be written; the painter then has to do.
bool Pictures::convert(const PictureSource& source, const std::string& pdf) {
  Conversion conversion(studio_, source);
  conversion.wait();
  return conversion.finish(pdf);
}

bool Pictures::drawPage(const std::string& pdf, std::size_t page, const PictureKind& kind,
                        const std::string& picture) const {
  studio_->makeFolders();
  const WorkFolder work(*studio_);
  const std::string stem = work.path() + "/page";
  const std::optional<int> result = runProgram(studio_->drawing(pdf, stem, page, page, kind), kDrawSeconds);
  return result == 0 && std::rename((stem + (kind.jpeg ? ".jpg" : ".png")).c_str(), picture.c_str()) == 0;
}

}  // namespace qrn::deck

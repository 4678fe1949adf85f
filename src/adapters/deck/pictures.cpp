#include "adapters/deck/pictures.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>

#include "adapters/deck/process.h"
#include "adapters/deck/relationships.h"
#include "adapters/deck/text.h"
#include "adapters/deck/xml.h"

namespace qrn::deck {

namespace {

namespace fs = std::filesystem;

constexpr double kDrawSeconds = 60, kOfficeSeconds = 120, kOfficeSecondsEachSlide = 2;
constexpr auto kKeepUnused = std::chrono::hours(24 * 30), kKeepWork = std::chrono::hours(24);

std::string defaultFolder() {
  if (const char* cache = std::getenv("XDG_CACHE_HOME"); cache != nullptr && *cache == '/')
    return std::string(cache) + "/quorin-matrix";
  const char* home = std::getenv("HOME");
  return std::string(home == nullptr ? "/tmp" : home) + "/.cache/quorin-matrix";
}

// The slide as the office program is to draw it: shown although hidden, and without its hidden shapes, which
// not every version leaves out by itself.
std::string drawableSlide(const Parts& parts, const std::string& part) {
  const Xml xml(parts.read(part), parts.file() + " (" + part + ")");
  Splices splices;
  const Xml::AttributeExtent show = xml.attribute(xml.root(), "show");
  if (show.begin != std::string::npos)
    splices.replace(show.begin, show.end, "");
  std::size_t removedTo = 0;
  pugi::xml_node content = childOf(xml.root(), Space::presentation, "cSld");
  const auto look = [&](pugi::xml_node node) {
    const bool hidden = is(node, Space::presentation, "cNvPr") && isTrue(node.attribute("hidden").value());
    const pugi::xml_node shape = node.parent().parent();
    if (hidden && shape && !is(shape, Space::presentation, "cSld")) {
      const Xml::Extent place = xml.extent(shape);
      if (place.begin >= removedTo) {  // else inside a hidden group
        splices.replace(place.begin, place.end, "");
        removedTo = place.end;
      }
    }
    return false;
  };
  content.find_node(look);
  return splices.applyTo(xml);
}

class Folder {  // goes away with all that is in it
 public:
  explicit Folder(const std::string& stem) : path_(stem + "XXXXXX") {
    if (::mkdtemp(path_.data()) == nullptr)
      throwDisk("Cannot write to", stem);
  }
  ~Folder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

class Busy {
 public:
  explicit Busy(bool& flag) : flag_(flag) { flag_ = true; }
  ~Busy() { flag_ = false; }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  bool& flag_;
};

void writeDrawable(const PictureSource& source, const std::string& file) {
  Parts drawable = source.parts;
  for (const SlideEntry& slide : source.slides) {
    std::string text = drawableSlide(source.parts, slide.part);
    if (text != source.parts.read(slide.part))
      drawable.put(slide.part, std::move(text));
  }
  const File out = File::open(file, O_RDWR | O_CREAT | O_EXCL, 0600);
  writePackage(drawable, out.fd(), file);
}

bool isJpeg(const std::string& format) {
  return format == "JPG" || format == "JPEG";
}

}  // namespace

Pictures::Pictures(const std::string& cacheFolder, SlidePainter* fallback)
    : folder_(cacheFolder.empty() ? defaultFolder() : cacheFolder), fallback_(fallback) {
  office_ = findProgram("soffice");
  if (office_.empty())
    office_ = findProgram("libreoffice");
  painter_ = findProgram("pdftoppm");
  if (painter_.empty())
    office_.clear();
}

void Pictures::prepare(const PictureSource& source, const std::function<void(const std::string&)>& progress) {
  if (!byLibreOffice() || busy_ || source.slides.empty())
    return;
  const std::string pdf = pdfNamed(deckVersion(source));
  if (exists(pdf))
    return;
  if (progress)
    progress("Drawing " + std::to_string(source.slides.size()) + " slides");
  failed_ = !convert(source, pdf);
}

void Pictures::make(const PictureSource& source, const PictureRequest& request,
                    const std::function<SlideDrawing()>& drawing) {
  const std::string format = upperCase(request.format);
  if ((format != "PNG" && !isJpeg(format)) || request.width < 1 || request.height < 1)
    throw HostError(Fault::program, 5, "A slide cannot be drawn as " + request.format);
  const std::string picture = folder_ + "/pictures/" + slideVersion(source, request.slide) + "-" +
                              std::to_string(request.width) + "x" + std::to_string(request.height) +
                              (isJpeg(format) ? ".jpg" : ".png");
  if (exists(picture) || (byLibreOffice() && makeByOffice(source, request, picture))) {
    saveText(request.file, readWhole(picture));
    return;
  }
  if (fallback_ == nullptr)
    throw HostError(
        Fault::world, 0,
        "No picture of slide " + std::to_string(request.slide + 1) + " of " + source.parts.file() +
            " could be made: " + (office_.empty() ? "LibreOffice is not there." : "LibreOffice failed."));
  fallback_->paint(drawing(), request.file, isJpeg(format) ? "JPG" : "PNG", request.width, request.height);
}

bool Pictures::makeByOffice(const PictureSource& source, const PictureRequest& request,
                            const std::string& picture) {
  if (busy_)
    return false;  // asked for again while the office program works: its answer would come too late
  const std::string whole = pdfNamed(deckVersion(source));
  if (exists(whole))
    return drawPage(whole, request.slide + 1, request, picture);
  if (!request.slideChanged) {
    failed_ = !convert(source, whole);
    return !failed_ && drawPage(whole, request.slide + 1, request, picture);
  }
  const std::string single = pdfNamed(slideVersion(source, request.slide));
  if (!exists(single)) {
    PictureSource one{source.parts, source.presentation, {source.slides[request.slide]}};
    one.parts.put(one.presentation,
                  presentationOfOneSlide(source.parts, source.presentation, one.slides.front().id));
    failed_ = !convert(one, single);
  }
  return !failed_ && drawPage(single, 1, request, picture);
}

std::string Pictures::pdfNamed(const std::string& name) const {
  return folder_ + "/pdf/" + name + ".pdf";
}

// False when the office program failed or the cache cannot be written; the painter then has to do.
bool Pictures::convert(const PictureSource& source, const std::string& pdf) {
  try {
    std::error_code error;
    fs::create_directories(folder_ + "/pdf", error);
    fs::create_directories(folder_ + "/pictures", error);
    dropOld();
    const Folder work(folder_ + "/work-");
    const std::string deck = work.path() + "/deck.pptx";
    writeDrawable(source, deck);
    const Busy working(busy_);
    return runOffice(deck, work.path(), source.slides.size()) &&
           ::rename((work.path() + "/deck.pdf").c_str(), pdf.c_str()) == 0;
  } catch (const HostError& error) {
    if (error.fault() != Fault::world)
      throw;
    return false;
  }
}

// A profile of its own, so that an office program that the user has open does not take the work over; one
// that is in use by another of our programs is left to it.
bool Pictures::runOffice(const std::string& deck, const std::string& folder, std::size_t slides) {
  for (int number = 1; number <= 9; ++number) {
    const std::string profile = folder_ + "/office-" + std::to_string(number);
    const File lock(::open((profile + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!lock.isOpen() || ::flock(lock.fd(), LOCK_EX | LOCK_NB) != 0)
      continue;
    const std::optional<int> result =
        runProgram({office_, "-env:UserInstallation=file://" + profile, "--headless", "--norestore",
                    "--convert-to", "pdf", "--outdir", folder, deck},
                   kOfficeSeconds + kOfficeSecondsEachSlide * static_cast<double>(slides));
    return result == 0 && exists(folder + "/deck.pdf");
  }
  return false;
}

bool Pictures::drawPage(const std::string& pdf, std::size_t page, const PictureRequest& request,
                        const std::string& picture) const {
  const bool jpeg = isJpeg(upperCase(request.format));
  const Folder work(folder_ + "/work-");
  const std::string number = std::to_string(page), stem = work.path() + "/page";
  const std::optional<int> result =
      runProgram({painter_, jpeg ? "-jpeg" : "-png", "-f", number, "-l", number, "-singlefile", "-scale-to-x",
                  std::to_string(request.width), "-scale-to-y", std::to_string(request.height), pdf, stem},
                 kDrawSeconds);
  const std::string made = stem + (jpeg ? ".jpg" : ".png");
  ::utimensat(AT_FDCWD, pdf.c_str(), nullptr, 0);  // used: keep it
  return result == 0 && ::rename(made.c_str(), picture.c_str()) == 0;
}

void Pictures::dropOld() const {
  const auto drop = [](const std::string& folder, const std::string& stem, std::chrono::hours unused) {
    std::error_code error, ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
      const auto used = fs::last_write_time(entry.path(), ignored);
      if (!ignored && entry.path().filename().string().rfind(stem, 0) == 0 &&
          fs::file_time_type::clock::now() - used > unused)
        fs::remove_all(entry.path(), ignored);
    }
  };
  drop(folder_ + "/pdf", "", kKeepUnused);
  drop(folder_ + "/pictures", "", kKeepUnused);
  drop(folder_, "work-", kKeepWork);  // of runs that were killed
}

}  // namespace qrn::deck

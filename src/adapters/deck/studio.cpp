#include "adapters/deck/studio.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>

#include "adapters/deck/xml.h"

namespace qrn::deck {

namespace {

namespace fs = std::filesystem;

constexpr double kOfficeSeconds = 120, kOfficeSecondsEachSlide = 2;
constexpr auto kKeepUnused = std::chrono::hours(24 * 30), kKeepWork = std::chrono::hours(24);
constexpr const char* kJpegQuality = "quality=92";  // letters keep clean edges

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

void writeDrawable(const PictureSource& source, const std::string& file) {
  Parts drawable = source.parts();
  for (const SlideEntry& slide : source.slides()) {
    std::string text = drawableSlide(source.parts(), slide.part);
    if (text != source.parts().read(slide.part))
      drawable.put(slide.part, std::move(text));
  }
  const File out = File::open(file, O_RDWR | O_CREAT | O_EXCL, 0600);
  writePackage(drawable, out.fd(), file);
}

}  // namespace

Studio::Studio(const std::string& cacheFolder)
    : folder_(cacheFolder.empty() ? defaultFolder() : cacheFolder) {
  office_ = findProgram("soffice");
  if (office_.empty())
    office_ = findProgram("libreoffice");
  painter_ = findProgram("pdftoppm");
  if (painter_.empty())
    office_.clear();
}

std::string Studio::pdfNamed(const std::string& version) const {
  return folder_ + "/pdf/" + version + ".pdf";
}

std::string Studio::pictureNamed(const std::string& version, const PictureKind& kind) const {
  return folder_ + "/pictures/" + version + "-" + std::to_string(kind.width) + "x" +
         std::to_string(kind.height) + (kind.jpeg ? ".jpg" : ".png");
}

std::vector<std::string> Studio::drawing(const std::string& pdf, const std::string& stem, std::size_t first,
                                         std::size_t last, const PictureKind& kind) const {
  std::vector<std::string> command = {painter_, "-f", std::to_string(first), "-l", std::to_string(last)};
  const auto add = [&command](std::initializer_list<std::string> words) {
    command.insert(command.end(), words);
  };
  kind.jpeg ? add({"-jpeg", "-jpegopt", kJpegQuality}) : add({"-png"});
  if (first == last)
    add({"-singlefile"});
  add({"-scale-to-x", std::to_string(kind.width), "-scale-to-y", std::to_string(kind.height), pdf, stem});
  return command;
}

void Studio::makeFolders() const {
  std::error_code ignored;
  fs::create_directories(folder_ + "/pdf", ignored);
  fs::create_directories(folder_ + "/pictures", ignored);
}

void Studio::dropOld() const {
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

double now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

bool isKept(const std::string& file) {
  return ::utimensat(AT_FDCWD, file.c_str(), nullptr, 0) == 0;
}

WorkFolder::WorkFolder(const Studio& studio) : path_(studio.folder() + "/work-XXXXXX") {
  if (::mkdtemp(path_.data()) == nullptr)
    throwDisk("Cannot write to", studio.folder());
}

WorkFolder::~WorkFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

Conversion::Conversion(std::shared_ptr<Studio> studio, const PictureSource& source)
    : studio_(std::move(studio)),
      limitSeconds_(kOfficeSeconds + kOfficeSecondsEachSlide * static_cast<double>(source.slides().size())),
      started_(now()) {
  try {
    start(source);
  } catch (const HostError& error) {
    if (error.fault() != Fault::world)
      throw;  // else the cache cannot be written: finish() tells
  }
  studio_->busy = true;
}

// A profile of its own, so that an office program that the user has open does not take the work over; one
// that is in use by another of our programs is left to it.
void Conversion::start(const PictureSource& source) {
  studio_->makeFolders();
  studio_->dropOld();
  work_ = std::make_unique<WorkFolder>(*studio_);
  const std::string deck = work_->path() + "/deck.pptx";
  writeDrawable(source, deck);
  for (int number = 1; number <= 9; ++number) {
    const std::string profile = studio_->folder() + "/office-" + std::to_string(number);
    profileLock_ = File(::open((profile + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!profileLock_.isOpen() || ::flock(profileLock_.fd(), LOCK_EX | LOCK_NB) != 0)
      continue;
    program_ = Program({studio_->office(), "-env:UserInstallation=file://" + profile, "--headless",
                        "--norestore", "--convert-to", "pdf", "--outdir", work_->path(), deck});
    return;
  }
}

bool Conversion::hasEnded() const {
  return program_.hasEnded() || now() - started_ > limitSeconds_;
}

bool Conversion::finish(const std::string& pdf) {
  const bool done = program_.end() == 0 && ::rename((work_->path() + "/deck.pdf").c_str(), pdf.c_str()) == 0;
  studio_->failed = !done;
  return done;
}

}  // namespace qrn::deck

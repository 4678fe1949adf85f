// Where slides become pictures: LibreOffice makes a PDF of the deck, pdftoppm draws its pages, and a cache
// keeps both. What is kept goes after 30 days without use.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "adapters/deck/picture_source.h"
#include "adapters/deck/process.h"
#include "base/disk.h"

namespace qrn::deck {

struct PictureKind {
  bool jpeg = false;
  int width = 0, height = 0;
};

inline constexpr double kDrawSeconds = 60;  // for one page

// Shared by all that makes pictures of one deck.
class Studio {
 public:
  explicit Studio(const std::string& cacheFolder);  // "": that of the user
  bool isThere() const { return !office_.empty(); }
  bool works() const { return isThere() && !failed; }
  std::string pdfNamed(const std::string& version) const;
  std::string pictureNamed(const std::string& version, const PictureKind& kind) const;
  // The command that draws pages `first` to `last` of the PDF to `stem`-N.jpg (or .png), N from 1 with zeros
  // before it; a single page to `stem`.jpg.
  std::vector<std::string> drawing(const std::string& pdf, const std::string& stem, std::size_t first,
                                   std::size_t last, const PictureKind& kind) const;
  const std::string& folder() const { return folder_; }
  const std::string& office() const { return office_; }
  void makeFolders() const;
  void dropOld() const;

  bool failed = false;  // LibreOffice did not do its work: it is not asked again
  bool busy = false;    // it is at work

 private:
  std::string folder_, office_, painter_;
};

double now();  // seconds of a clock that never goes back

// Whether the file is in the cache; it is then taken as used.
bool isKept(const std::string& file);

class WorkFolder {  // goes away with all that is in it
 public:
  explicit WorkFolder(const Studio& studio);  // throws HostError(world)
  ~WorkFolder();
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

// LibreOffice at work on the PDF of a deck, with its hidden slides and without its hidden shapes. What is
// unfinished ends with the object.
class Conversion {
 public:
  // Throws HostError(badData) when the deck cannot be read.
  Conversion(std::shared_ptr<Studio> studio, const PictureSource& source);
  ~Conversion() { studio_->busy = false; }
  Conversion(const Conversion&) = delete;
  Conversion& operator=(const Conversion&) = delete;
  bool hasEnded() const;
  void wait() const { program_.waitForEnd(limitSeconds_); }  // the message loop goes on
  // Puts the PDF to its place in the cache. False when there is none; LibreOffice then counts as failed.
  bool finish(const std::string& pdf);

 private:
  void start(const PictureSource& source);
  std::shared_ptr<Studio> studio_;
  double limitSeconds_, started_;
  std::unique_ptr<WorkFolder> work_;
  File profileLock_;
  Program program_;
};

}  // namespace qrn::deck

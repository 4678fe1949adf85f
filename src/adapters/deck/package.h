// The zip file of a deck, read part by part when asked, and what is to be changed in it.
#pragma once

#include <zip.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/disk.h"

namespace qrn::deck {

// Part names are told apart without regard to case.
struct PartNameLess {
  bool operator()(std::string_view a, std::string_view b) const;
};
using PartTexts = std::map<std::string, std::string, PartNameLess>;

struct Entry {
  std::string name;
  std::uint32_t crc = 0;
  std::uint64_t size = 0, packed = 0;
};

// The deck as it is on the disk. Part names are written as in the zip, without a slash in front, and are
// found in any case.
class Package {
 public:
  // Opens and looks at the directory only. Throws badData for what is no usable zip file.
  explicit Package(const std::string& file);
  const std::string& file() const { return file_; }
  int fd() const { return input_.fd(); }
  const std::vector<Entry>& entries() const { return entries_; }
  bool has(std::string_view part) const { return index_.count(std::string(part)) != 0; }
  std::string ownName(const std::string& part) const;  // as the zip writes it; unknown: as given
  std::string read(std::string_view part) const;       // throws badData when absent or broken
  bool hasFolder(std::string_view prefix) const;
  // Names the content: the same for files whose parts are all the same, whatever their dates or packing.
  std::string fingerprint() const;
  bool isAt(const std::string& file) const { return sameFile(input_.fd(), file); }
  // True while `file()` is still the file that was opened, not changed since.
  bool stillOnDisk() const;
  void movedTo(const std::string& file);  // after a rename

 private:
  struct Discard {
    void operator()(zip_t* zip) const { zip_discard(zip); }
  };
  void checkStart() const;
  void readDirectory();
  void addEntry(std::uint64_t index);

  std::string file_;
  File input_;
  std::unique_ptr<zip_t, Discard> zip_;
  std::vector<Entry> entries_;
  std::map<std::string, std::uint64_t, PartNameLess> index_;
  std::int64_t changedAt_ = 0;
};

// The package with changes over it: parts that are new or read differently from now on.
class Parts {
 public:
  explicit Parts(std::shared_ptr<const Package> package) : package_(std::move(package)) {}
  const Package& package() const { return *package_; }
  const std::string& file() const { return package_->file(); }
  bool has(const std::string& part) const { return changed_.count(part) != 0 || package_->has(part); }
  std::string read(const std::string& part) const;
  void put(const std::string& part, std::string text);
  const PartTexts& changed() const { return changed_; }
  // First free name `<stem>N.xml`, N from 1.
  std::string freeName(const std::string& stem) const;

 private:
  std::shared_ptr<const Package> package_;
  PartTexts changed_;
};

// Writes the package with its changes to the open file `out`: every other entry keeps its place and its
// packed bytes, new ones stand at the end. `name` is for messages. Throws HostError(world); `out` is then
// worthless.
void writePackage(const Parts& parts, int out, const std::string& name);

// 128 bits as 32 hex digits; for telling contents apart, not against ill will.
class Digest {
 public:
  void add(std::string_view bytes);
  void add(std::uint64_t number);
  std::string text() const;

 private:
  std::uint64_t first_ = 0xcbf29ce484222325ULL, second_ = 0x84222325cbf29ce4ULL;
};

}  // namespace qrn::deck

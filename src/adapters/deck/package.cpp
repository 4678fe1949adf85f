#include "adapters/deck/package.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>

#include "adapters/deck/text.h"
#include "adapters/deck/zip_source.h"
#include "base/text.h"

namespace qrn::deck {

namespace {

// One part in memory, at most. Votes of a workshop are a few megabytes; pictures are never read.
constexpr std::uint64_t kLargestPart = std::uint64_t{512} << 20;
constexpr std::uint64_t kSuspiciousPart = std::uint64_t{64} << 20, kSuspiciousRatio = 200;

bool climbsOut(std::string_view name) {
  if (name.empty() || name.front() == '/' || name.find('\\') != std::string_view::npos)
    return true;
  for (std::size_t at = 0; at <= name.size();) {
    const std::size_t slash = std::min(name.find('/', at), name.size());
    if (name.substr(at, slash - at) == "..")
      return true;
    at = slash + 1;
  }
  return false;
}

}  // namespace

bool PartNameLess::operator()(std::string_view a, std::string_view b) const {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [](char x, char y) { return lowerLetter(x) < lowerLetter(y); });
}

Package::Package(const std::string& file) : file_(file), input_(File::open(file, O_RDONLY | O_NONBLOCK)) {
  struct stat info {};
  if (::fstat(input_.fd(), &info) != 0 || !S_ISREG(info.st_mode))
    throwBad(file, "is not a file.");
  changedAt_ = std::int64_t{info.st_mtim.tv_sec} * 1000000000 + info.st_mtim.tv_nsec;
  checkStart();
  zip_error_t error;
  zip_error_init(&error);
  zip_source_t* source = ZipSource::make(input_.fd(), -1);
  zip_.reset(zip_open_from_source(source, ZIP_RDONLY, &error));
  if (!zip_) {
    const std::string reason = zip_error_strerror(&error);
    zip_error_fini(&error);
    zip_source_free(source);
    throwBad(file, "is broken or cut short (" + reason + ").");
  }
  readDirectory();
}

// Tells what is no zip file by its first bytes.
void Package::checkStart() const {
  std::string start(std::size_t{64} << 10, '\0');
  const ssize_t got = ::pread(input_.fd(), start.data(), start.size(), 0);
  if (got < 0)
    throwDisk("Cannot read", file_);
  start.resize(static_cast<std::size_t>(got));
  if (start.empty())
    throwBad(file_, "is empty.");
  if (start.rfind("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 0) == 0) {
    std::string stream;
    for (const char c : std::string_view("EncryptedPackage")) stream += {c, '\0'};
    struct stat info {};
    if (::fstat(input_.fd(), &info) == 0 && start.find(stream) == std::string::npos) {
      // The directory of the compound file may stand anywhere; it is small, the file may not be.
      const off_t from = std::max<off_t>(0, info.st_size - static_cast<off_t>(start.capacity()));
      std::string end(std::size_t{64} << 10, '\0');
      const ssize_t more = ::pread(input_.fd(), end.data(), end.size(), from);
      start.append(end, 0, more > 0 ? static_cast<std::size_t>(more) : 0);
    }
    if (start.find(stream) != std::string::npos)
      throwBad(file_, "is password-protected. Take the password off in the presentation program first.");
    throwBad(file_, "is in the old binary format. Save it as .pptx in the presentation program first.");
  }
  if (start.rfind("PK", 0) != 0)
    throwBad(file_, "is not a presentation (no .pptx file).");
}

void Package::readDirectory() {
  const zip_int64_t count = zip_get_num_entries(zip_.get(), 0);
  entries_.reserve(static_cast<std::size_t>(count));
  for (zip_int64_t i = 0; i < count; ++i) addEntry(static_cast<std::uint64_t>(i));
}

void Package::addEntry(std::uint64_t index) {
  zip_stat_t info;
  if (zip_stat_index(zip_.get(), index, ZIP_FL_ENC_RAW, &info) != 0 || (info.valid & ZIP_STAT_NAME) == 0)
    throwBad(file_, "is broken (its directory cannot be read).");
  Entry entry{info.name, info.crc, info.size, info.comp_size};
  if (climbsOut(entry.name))
    throwBad(file_, "holds a part whose name leads out of the file (" + entry.name + ").");
  if (info.encryption_method != ZIP_EM_NONE)
    throwBad(file_, "is password-protected. Take the password off first.");
  if (!index_.emplace(entry.name, index).second)
    throwBad(file_, "is broken (it holds the part " + entry.name + " twice).");
  entries_.push_back(std::move(entry));
}

std::string Package::read(std::string_view part) const {
  const auto found = index_.find(std::string(part));
  if (found == index_.end())
    throwBad(file_, "is broken (the part " + std::string(part) + " is missing).");
  const Entry& entry = entries_[found->second];
  const bool suspicious = entry.size > kSuspiciousPart && entry.size / kSuspiciousRatio > entry.packed;
  if (entry.size > kLargestPart || suspicious)
    throwBad(file_, "is not safe to open (the part " + entry.name + " would unpack to " +
                        std::to_string(entry.size >> 20) + " MB).");
  zip_file_t* stream = zip_fopen_index(zip_.get(), found->second, 0);
  if (stream == nullptr)
    throwBad(file_, "is broken (the part " + entry.name +
                        " cannot be read: " + zip_error_strerror(zip_get_error(zip_.get())) + ").");
  std::string text;
  std::array<char, 65536> block;
  zip_int64_t got = 0;
  while ((got = zip_fread(stream, block.data(), block.size())) > 0 && text.size() <= entry.size)
    text.append(block.data(), static_cast<std::size_t>(got));
  zip_fclose(stream);
  if (got < 0 || text.size() != entry.size)
    throwBad(file_, "is broken (the part " + entry.name + " is damaged).");
  return text;
}

std::string Package::ownName(const std::string& part) const {
  const auto found = index_.find(part);
  return found == index_.end() ? part : found->first;
}

bool Package::hasFolder(std::string_view prefix) const {
  const auto next = index_.lower_bound(std::string(prefix));
  return next != index_.end() && lowerCase(next->first).rfind(lowerCase(prefix), 0) == 0;
}

std::string Package::fingerprint() const {
  Digest digest;
  for (const Entry& entry : entries_) {
    digest.add(entry.name);
    digest.add(entry.size);
    digest.add(entry.crc);
  }
  return digest.text();
}

bool Package::stillOnDisk() const {
  struct stat now {};
  if (!isAt(file_) || ::stat(file_.c_str(), &now) != 0)
    return false;
  const std::int64_t changed = std::int64_t{now.st_mtim.tv_sec} * 1000000000 + now.st_mtim.tv_nsec;
  return changed == changedAt_;
}

void Package::movedTo(const std::string& file) {
  file_ = file;
}

std::string Parts::read(const std::string& part) const {
  const auto changed = changed_.find(part);
  return changed != changed_.end() ? changed->second : package_->read(part);
}

void Parts::put(const std::string& part, std::string text) {
  const auto changed = changed_.find(part);
  changed_[changed != changed_.end() ? changed->first : package_->ownName(part)] = std::move(text);
}

std::string Parts::freeName(const std::string& stem) const {
  for (int number = 1;; ++number) {
    std::string name = stem + std::to_string(number) + ".xml";
    if (!has(name))
      return name;
  }
}

void Digest::add(std::string_view bytes) {
  for (const char c : bytes) {
    first_ = (first_ ^ static_cast<unsigned char>(c)) * 0x100000001b3ULL;
    second_ = (second_ ^ static_cast<unsigned char>(c)) * 0x9E3779B97F4A7C15ULL;
    second_ ^= second_ >> 29;
  }
  add(static_cast<std::uint64_t>(bytes.size()));
}

void Digest::add(std::uint64_t number) {
  for (int i = 0; i < 8; ++i) {
    first_ = (first_ ^ (number & 0xFF)) * 0x100000001b3ULL;
    number >>= 8;
  }
  second_ = (second_ ^ first_) * 0x9E3779B97F4A7C15ULL;
}

std::string Digest::text() const {
  static constexpr std::string_view digits = "0123456789abcdef";
  std::string out;
  for (const std::uint64_t half : {first_, second_})
    for (int shift = 60; shift >= 0; shift -= 4) out.push_back(digits[(half >> shift) & 0xF]);
  return out;
}

}  // namespace qrn::deck

#include "base/disk.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace qrn {

File& File::operator=(File&& other) noexcept {
  if (this != &other) {
    close();
    fd_ = std::exchange(other.fd_, -1);
  }
  return *this;
}

File::~File() {
  close();
}

void File::close() {
  if (fd_ >= 0)
    ::close(std::exchange(fd_, -1));
}

File File::open(const std::string& path, int flags, unsigned mode) {
  File file(::open(path.c_str(), flags | O_CLOEXEC, mode));
  if (!file.isOpen())
    throwDisk("Cannot open", path);
  return file;
}

void throwDisk(const std::string& doing, const std::string& file, int error) {
  int number = 57;  // device error
  if (error == ENOENT)
    number = 53;
  else if (error == EACCES || error == EPERM || error == EROFS)
    number = 70;
  else if (error == ENOSPC || error == EDQUOT || error == EFBIG)
    number = 61;
  else if (error == ENOTDIR)
    number = 76;
  const std::string reason = number == 61 ? "the disk is full" : std::generic_category().message(error);
  throw HostError(Fault::world, number, doing + " " + file + ": " + reason);
}

void throwBad(const std::string& file, const std::string& reason) {
  throw HostError(Fault::badData, 0, file + " " + reason);
}

void writeAll(int fd, std::string_view bytes, const std::string& name) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR)
      continue;
    if (written <= 0)
      throwDisk("Cannot write", name, written == 0 ? ENOSPC : errno);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::string readWhole(const std::string& path) {
  const File file = File::open(path, O_RDONLY | O_NONBLOCK);  // a pipe without a writer would wait for ever
  struct stat info {};
  if (::fstat(file.fd(), &info) == 0 && !S_ISREG(info.st_mode))
    S_ISDIR(info.st_mode) ? throwDisk("Cannot read", path, EISDIR)
                          : throw HostError(Fault::world, 57, "Cannot read " + path + ": It is no file");
  std::string text(static_cast<std::size_t>(info.st_size), '\0');
  std::size_t have = 0;
  while (have < text.size()) {
    const ssize_t got = ::read(file.fd(), text.data() + have, text.size() - have);
    if (got < 0 && errno == EINTR)
      continue;
    if (got < 0)
      throwDisk("Cannot read", path);
    if (got == 0)
      break;
    have += static_cast<std::size_t>(got);
  }
  text.resize(have);
  return text;
}

void flushFile(int fd, const std::string& name) {
  if (::fdatasync(fd) != 0)
    throwDisk("Cannot flush", name);
}

void flushFolderOf(const std::string& file) {
  const File folder = File::open(folderOf(file), O_RDONLY | O_DIRECTORY);
  if (::fsync(folder.fd()) != 0 && errno != EINVAL && errno != ENOTSUP)  // some file systems cannot
    throwDisk("Cannot flush the folder of", file);
}

bool exists(const std::string& path) {
  struct stat info {};
  return ::lstat(path.c_str(), &info) == 0;
}

bool folderWritable(const std::string& file) {
  return ::access(folderOf(file).c_str(), W_OK | X_OK) == 0;
}

std::string behindLinks(const std::string& path) {
  constexpr int kMostLinks = 40;
  std::error_code error;
  std::filesystem::path at = path;
  for (int i = 0; i < kMostLinks && std::filesystem::is_symlink(at, error); ++i)
    at = at.parent_path() / std::filesystem::read_symlink(at, error);
  const auto real = std::filesystem::weakly_canonical(at, error);
  return error ? path : real.string();
}

bool mayReplace(const std::string& file) {
  struct stat folder {
  }, info{};
  if (::stat(folderOf(file).c_str(), &folder) != 0 || (folder.st_mode & S_ISVTX) == 0 ||
      ::lstat(file.c_str(), &info) != 0)
    return true;
  const uid_t user = ::geteuid();
  return user == 0 || folder.st_uid == user || info.st_uid == user;
}

std::string folderOf(const std::string& file) {
  const std::size_t slash = file.rfind('/');
  if (slash == std::string::npos)
    return ".";
  return slash == 0 ? "/" : file.substr(0, slash);
}

std::string nameOf(const std::string& file) {
  const std::size_t slash = file.rfind('/');
  return slash == std::string::npos ? file : file.substr(slash + 1);
}

namespace {

// CRC-32, as other tools print it.
std::uint32_t checksum(std::string_view text) {
  std::uint32_t sum = 0xFFFFFFFFU;
  for (const char c : text) {
    sum ^= static_cast<unsigned char>(c);
    for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1U) ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
  }
  return ~sum;
}

}  // namespace

std::string beside(const std::string& file, const std::string& suffix, const std::string& prefix) {
  const std::string folder = folderOf(file) + "/", name = nameOf(file);
  const long limit = ::pathconf(folder.c_str(), _PC_NAME_MAX);
  const std::size_t longest = limit > 0 ? static_cast<std::size_t>(limit) : NAME_MAX;
  if (prefix.size() + name.size() + suffix.size() <= longest)
    return folder + prefix + name + suffix;
  std::array<char, 16> mark{};
  std::snprintf(mark.data(), mark.size(), "~%08x", static_cast<unsigned>(checksum(name)));
  std::size_t cut = longest - prefix.size() - suffix.size() - std::strlen(mark.data());
  while (cut > 0 && (static_cast<unsigned char>(name[cut]) & 0xC0U) == 0x80U) --cut;  // no half character
  return folder + prefix + name.substr(0, cut) + mark.data() + suffix;
}

std::string freeBeside(const std::string& file, const std::string& suffix) {
  for (int number = 1;; ++number) {
    std::string path = beside(file, suffix + "." + std::to_string(number));
    if (!exists(path))
      return path;
  }
}

std::string placeOf(int fd) {
  std::array<char, PATH_MAX> target{};
  const ssize_t length =
      ::readlink(("/proc/self/fd/" + std::to_string(fd)).c_str(), target.data(), target.size());
  const std::string path(target.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
  return sameFile(fd, path) ? path : "";
}

bool sameFile(int fd, const std::string& path) {
  struct stat here {
  }, there{};
  return ::fstat(fd, &here) == 0 && ::stat(path.c_str(), &there) == 0 && here.st_ino == there.st_ino &&
         here.st_dev == there.st_dev;
}

// Owner and group can be kept by some users alone; losing them is no reason to fail, losing the mode would
// be.
void takeAfter(int fd, const std::string& model, unsigned more) {
  struct stat old {};
  if (::stat(model.c_str(), &old) != 0)
    return;
  if (::fchown(fd, old.st_uid, old.st_gid) != 0)
    (void)!::fchown(fd, static_cast<uid_t>(-1), old.st_gid);
  if (::fchmod(fd, (old.st_mode & 07777) | more) != 0)
    throwDisk("Cannot keep the mode of", model);
}

namespace {

// Comments, origin, access lists. What this file system or this user may not set goes.
void copyAttributes(const std::string& from, int to) {
  const auto sized = [](ssize_t length) { return length > 0 ? static_cast<std::size_t>(length) : 0; };
  std::string names(sized(::listxattr(from.c_str(), nullptr, 0)), '\0');
  names.resize(sized(::listxattr(from.c_str(), names.data(), names.size())));
  for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1) {
    const char* name = names.c_str() + at;
    std::string value(sized(::getxattr(from.c_str(), name, nullptr, 0)), '\0');
    value.resize(sized(::getxattr(from.c_str(), name, value.data(), value.size())));
    if (std::strncmp(name, "security.", 9) != 0)  // the system's own, made for each file
      (void)!::fsetxattr(to, name, value.data(), value.size(), 0);
  }
}

}  // namespace

NewFile::NewFile(const std::string& target, const Kept& kept) : target_(target) {
  const bool replaces = kept.model.empty() && !kept.mode && exists(target);
  create(kept.mode.value_or(replaces || !kept.model.empty() ? 0600 : 0666));
  if (replaces) {
    copyAttributes(target, file_.fd());
    takeAfter(file_.fd(), target, 0);
  } else if (!kept.model.empty()) {
    takeAfter(file_.fd(), kept.model);
  }
}

// What a killed run has left goes; a name that another writer holds, or another user's file, is passed over.
void NewFile::create(unsigned mode) {
  constexpr int kNames = 100;
  for (int number = 1; !file_.isOpen(); ++number) {
    path_ = beside(target_, ".quorin-new" + (number == 1 ? "" : std::to_string(number)), ".");
    if (!take(mode) && (errno != EEXIST || number == kNames))
      throwDisk("Cannot write", target_);
  }
}

// A writer that lives holds its draft locked, so an unlocked one is left over.
bool NewFile::take(unsigned mode) {
  if (const File draft(::open(path_.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC)); draft.isOpen()) {
    if (::flock(draft.fd(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
      errno = EEXIST;
      return false;
    }
    if (sameFile(draft.fd(), path_))
      ::unlink(path_.c_str());
  }
  File fresh(::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
  if (!fresh.isOpen())
    return false;
  (void)!::flock(fresh.fd(), LOCK_EX | LOCK_NB);  // a file system without locks has one writer all the same
  if (!sameFile(fresh.fd(), path_)) {             // taken for a left over one in between
    errno = EEXIST;
    return false;
  }
  file_ = std::move(fresh);
  return true;
}

NewFile::~NewFile() {
  if (!done_ && file_.isOpen())
    ::unlink(path_.c_str());
}

void NewFile::flush() {
  if (::fsync(file_.fd()) != 0)
    throwDisk("Cannot flush", target_);
}

void NewFile::rename() {
  if (::rename(path_.c_str(), target_.c_str()) != 0)
    throwDisk("Cannot replace", target_);
  done_ = true;
}

void saveText(const std::string& target, std::string_view text, const Kept& kept) {
  NewFile file(target, kept);
  writeAll(file.fd(), text, target);
  file.flush();
  file.rename();
  flushFolderOf(target);
}

}  // namespace qrn

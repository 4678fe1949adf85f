#include "adapters/deck/disk.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <system_error>

namespace qrn::deck {

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
  const File file = File::open(path, O_RDONLY);
  struct stat info {};
  if (::fstat(file.fd(), &info) == 0 && !S_ISREG(info.st_mode))
    throwDisk("Cannot read", path, EISDIR);
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

NewFile::NewFile(const std::string& target)
    : target_(target), path_(folderOf(target) + "/." + nameOf(target) + ".quorin-new") {
  ::unlink(path_.c_str());  // what a killed run may have left
  struct stat old {};
  const bool replaces = ::stat(target.c_str(), &old) == 0;
  file_ = File(::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, replaces ? 0600 : 0666));
  if (!file_.isOpen())
    throwDisk("Cannot write", target);
  if (replaces) {
    // The owner can be kept by root alone; losing it is no reason to fail, losing the mode would be.
    if (::fchown(file_.fd(), old.st_uid, old.st_gid) != 0 && errno != EPERM && errno != EINVAL)
      throwDisk("Cannot keep the owner of", target);
    if (::fchmod(file_.fd(), old.st_mode & 07777) != 0)
      throwDisk("Cannot keep the mode of", target);
  }
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

void saveText(const std::string& target, std::string_view text) {
  NewFile file(target);
  writeAll(file.fd(), text, target);
  file.flush();
  file.rename();
  flushFolderOf(target);
}

}  // namespace qrn::deck

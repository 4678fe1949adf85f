#include "adapters/system/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "host/errors.h"

namespace qrn::system {

namespace {

[[noreturn]] void fail(const std::string& what, const std::string& path) {
  const int error = errno;
  int number = 75;
  std::string why = std::strerror(error);
  if (error == ENOENT) {
    number = 53;
  } else if (error == ENOSPC || error == EDQUOT || error == EFBIG) {
    number = 61;
    why = "The disk is full";
  } else if (error == EACCES || error == EPERM || error == EROFS) {
    number = 70;
  }
  throw HostError(Fault::world, number, what + " " + path + ": " + why);
}

// A file descriptor that closes itself.
class Descriptor {
 public:
  // `name` is what a failure tells, where that is another than the path.
  Descriptor(const std::string& path, int flags, const std::string& what, const std::string& name = "")
      : fd_(open(path.c_str(), flags | O_CLOEXEC, 0666)) {
    if (fd_ < 0)
      fail(what, name.empty() ? path : name);
  }
  ~Descriptor() { ::close(fd_); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int get() const { return fd_; }

 private:
  int fd_;
};

void writeAll(int fd, std::string_view text, const std::string& path) {
  while (!text.empty()) {
    const ssize_t written = ::write(fd, text.data(), text.size());
    if (written < 0 && errno == EINTR)
      continue;
    if (written < 0)
      fail("Could not write", path);
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  if (::fsync(fd) != 0 && errno != EINVAL)  // EINVAL: a pipe or device, which has nothing to flush
    fail("Could not write", path);
}

std::string folderOf(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

void flushFolder(const std::string& folder) {
  const Descriptor descriptor(folder, O_RDONLY | O_DIRECTORY, "Could not open");
  ::fsync(descriptor.get());
}

// A free name in the folder of `target` that any file system takes, however long the target's is.
std::string freshName(const std::string& target) {
  struct stat info {};
  for (int number = 1;; ++number) {
    std::string name =
        folderOf(target) + "/.quorin-new-" + std::to_string(::getpid()) + "-" + std::to_string(number);
    if (::lstat(name.c_str(), &info) != 0)
      return name;
  }
}

// The file that a link stands for, so that writing keeps the link.
std::string linkTarget(const std::string& path) {
  std::error_code error;
  const auto real = std::filesystem::canonical(path, error);
  return error ? path : real.string();
}

bool isPlainFileOrAbsent(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) != 0 || S_ISREG(info.st_mode);
}

}  // namespace

bool DiskFiles::fileExists(const std::string& path) const {
  std::error_code error;
  return std::filesystem::exists(path, error) && !std::filesystem::is_directory(path, error);
}

bool DiskFiles::folderExists(const std::string& path) const {
  std::error_code error;
  return std::filesystem::is_directory(path, error);
}

void DiskFiles::makeFolder(const std::string& path) {
  std::error_code error;
  std::filesystem::create_directories(path, error);
  if (error) {
    errno = error.value();
    fail("Could not make the folder", path);
  }
}

std::string DiskFiles::read(const std::string& path) const {
  const Descriptor descriptor(path, O_RDONLY, "Could not read");
  std::string text;
  char buffer[1 << 16];
  for (;;) {
    const ssize_t count = ::read(descriptor.get(), buffer, sizeof buffer);
    if (count < 0 && errno == EINTR)
      continue;
    if (count < 0)
      fail("Could not read", path);
    if (count == 0)
      return text;
    text.append(buffer, static_cast<std::size_t>(count));
  }
}

void DiskFiles::write(const std::string& path, std::string_view text) {
  if (!isPlainFileOrAbsent(path)) {  // a device or pipe is written to, never replaced
    const Descriptor device(path, O_WRONLY, "Could not write");
    writeAll(device.get(), text, path);
    return;
  }
  const std::string target = linkTarget(path);
  const std::string fresh = freshName(target);
  struct stat old {};
  const bool existed = ::stat(target.c_str(), &old) == 0;
  if (existed && ::access(target.c_str(), W_OK) != 0)
    fail("Could not write", path);
  try {
    const Descriptor descriptor(fresh, O_WRONLY | O_CREAT | O_EXCL, "Could not write", path);
    if (existed)
      ::fchmod(descriptor.get(), old.st_mode & 07777);
    writeAll(descriptor.get(), text, path);
  } catch (...) {
    ::unlink(fresh.c_str());
    throw;
  }
  if (::rename(fresh.c_str(), target.c_str()) != 0) {
    const int error = errno;
    ::unlink(fresh.c_str());
    errno = error;
    fail("Could not write", path);
  }
  flushFolder(folderOf(target));
}

void DiskFiles::append(const std::string& path, std::string_view text) {
  const Descriptor descriptor(path, O_WRONLY | O_CREAT | O_APPEND, "Could not write");
  const off_t before = ::lseek(descriptor.get(), 0, SEEK_END);
  try {
    writeAll(descriptor.get(), text, path);
  } catch (...) {  // half a line would spoil the next one
    if (before < 0 || ::ftruncate(descriptor.get(), before) != 0)
      throw HostError(Fault::world, 61, "Could not write " + path + ": part of a line may stand at its end");
    throw;
  }
}

void DiskFiles::Kill(const std::string& path) {
  if (::unlink(path.c_str()) != 0 && errno != ENOENT)
    fail("Could not delete", path);
}

std::vector<std::string> DiskFiles::list(const std::string& folder) const {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace qrn::system

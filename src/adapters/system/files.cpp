#include "adapters/system/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "base/disk.h"

namespace qrn::system {

namespace {

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
  if (error)
    throwDisk("Cannot make the folder", path, error.value());
}

std::string DiskFiles::read(const std::string& path) const {
  return readWhole(path);
}

void DiskFiles::write(const std::string& path, std::string_view text) {
  if (!isPlainFileOrAbsent(path)) {  // a device or pipe is written to, never replaced
    const File device = File::open(path, O_WRONLY);
    writeAll(device.fd(), text, path);
    return;
  }
  const std::string target = behindLinks(path);  // so that writing keeps the link
  if (exists(target) && ::access(target.c_str(), W_OK) != 0)
    throwDisk("Cannot write", path);
  saveText(target, text);
}

void DiskFiles::append(const std::string& path, std::string_view text) {
  const File file = File::open(path, O_WRONLY | O_CREAT | O_APPEND);
  const off_t before = ::lseek(file.fd(), 0, SEEK_END);
  try {
    writeAll(file.fd(), text, path);
    if (before >= 0)  // else a pipe or device, which has nothing to flush
      flushFile(file.fd(), path);
  } catch (const HostError&) {  // half a line would spoil the next one
    if (before < 0 || ::ftruncate(file.fd(), before) != 0)
      throw HostError(Fault::world, 61, "Cannot write " + path + ": part of a line may stand at its end");
    throw;
  }
}

void DiskFiles::Kill(const std::string& path) {
  if (::unlink(path.c_str()) != 0 && errno != ENOENT)
    throwDisk("Cannot delete", path);
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

#include "base/failing_disk.h"

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "support/disk.h"

namespace {

using Call = qrn::test::FailingDisk::Call;

struct State {
  std::optional<Call> all;
  int calls = 0, first = 0, last = 0;
  bool failed = false;
  std::map<ino_t, std::string> flushed;  // what the last good flush put onto the disk
  std::set<ino_t> lost;
};
State* g_disk = nullptr;

bool fails(Call call) {
  if (g_disk->all == call)
    return g_disk->failed = true;
  const bool now = ++g_disk->calls >= g_disk->first && g_disk->calls < g_disk->last;
  g_disk->failed = g_disk->failed || now;
  return now;
}

ino_t inodeOf(int fd) {
  struct stat info {};
  return ::fstat(fd, &info) == 0 && S_ISREG(info.st_mode) ? info.st_ino : 0;
}

std::string contentOf(int fd) {
  return qrn::test::readFile("/proc/self/fd/" + std::to_string(fd));
}

// The number of a file that is gone may come back with a new one.
void forgetFormerFile(int fd) {
  struct stat info {};
  if (g_disk != nullptr && ::fstat(fd, &info) == 0 && info.st_size == 0)
    g_disk->lost.erase(info.st_ino);
}

// A good flush is believed: no test here cuts the real power, and waiting for the real disk takes long.
int flush(long call, int fd) {
  if (g_disk == nullptr)
    return static_cast<int>(::syscall(call, fd));
  const ino_t inode = inodeOf(fd);
  if (fails(Call::flush)) {
    if (inode != 0)
      g_disk->lost.insert(inode);
    errno = EIO;
    return -1;
  }
  if (inode != 0 && g_disk->lost.count(inode) == 0)
    g_disk->flushed[inode] = contentOf(fd);
  return 0;
}

}  // namespace

extern "C" {

ssize_t write(int fd, const void* bytes, size_t length) {
  forgetFormerFile(fd);
  if (g_disk != nullptr && inodeOf(fd) != 0 && fails(Call::write)) {
    if (length < 2) {
      errno = ENOSPC;
      return -1;
    }
    length /= 2;
    g_disk->last = std::max(g_disk->last, g_disk->calls + 2);  // and the rest does not go either
  }
  return ::syscall(SYS_write, fd, bytes, length);
}

ssize_t pwrite(int fd, const void* bytes, size_t length, off_t place) {
  if (g_disk != nullptr && inodeOf(fd) != 0 && fails(Call::write)) {
    errno = ENOSPC;
    return -1;
  }
  return ::syscall(SYS_pwrite64, fd, bytes, length, place);
}

int rename(const char* from, const char* to) noexcept {
  if (g_disk != nullptr && g_disk->all == Call::rename) {
    g_disk->failed = true;
    errno = EIO;
    return -1;
  }
  return static_cast<int>(::syscall(SYS_rename, from, to));
}

int fsync(int fd) {
  return flush(SYS_fsync, fd);
}

int fdatasync(int fd) {
  return flush(SYS_fdatasync, fd);
}
}

namespace qrn::test {

FailingDisk::FailingDisk() {
  g_disk = new State;
}

FailingDisk::~FailingDisk() {
  delete std::exchange(g_disk, nullptr);
}

void FailingDisk::fail(int first, int count) {
  g_disk->calls = 0;
  g_disk->first = first;
  g_disk->last = first + count;
}

void FailingDisk::failAll(Call call) {
  g_disk->all = call;
}

int FailingDisk::calls() const {
  return g_disk->calls;
}

bool FailingDisk::hasFailed() const {
  return g_disk->failed;
}

void FailingDisk::crash(const std::string& file) {
  struct stat info {};
  if (::stat(file.c_str(), &info) == 0 && g_disk->lost.count(info.st_ino) != 0)
    std::ofstream(file, std::ios::binary) << g_disk->flushed[info.st_ino];
}

}  // namespace qrn::test

#include "adapters/deck/lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

#include "adapters/deck/deck.h"

namespace qrn::deck {

namespace {

std::string holderOf(int fd) {
  std::array<char, 32> text{};
  const ssize_t got = ::pread(fd, text.data(), text.size(), 0);
  const std::string process(text.data(), got > 0 ? static_cast<std::size_t>(got) : 0);
  const bool isNumber = !process.empty() && process.find_first_not_of("0123456789") == std::string::npos;
  return isNumber ? " (process " + process + ")" : "";
}

bool sameFile(int fd, const std::string& path) {
  struct stat here {
  }, there{};
  return ::fstat(fd, &here) == 0 && ::stat(path.c_str(), &there) == 0 && here.st_ino == there.st_ino &&
         here.st_dev == there.st_dev;
}

}  // namespace

Lock::Lock(const std::string& deck) : path_(deck + ".lock") {
  for (;;) {
    File file(::open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666));
    if (!file.isOpen() && (errno == EACCES || errno == EROFS || errno == EPERM) && !folderWritable(deck))
      return;
    if (!file.isOpen())
      throwDisk("Cannot lock", deck);
    if (::flock(file.fd(), LOCK_EX | LOCK_NB) != 0) {
      if (errno == EWOULDBLOCK)
        throw DeckInUse(Fault::world, 70,
                        deck + " is in use by another program" + holderOf(file.fd()) +
                            ". Close it there, or open it read-only.");
      if (errno == EINTR)
        continue;
      // A file system without locks (some network folders) must not keep the workshop from running.
    }
    if (!sameFile(file.fd(), path_))
      continue;  // its last holder took it away between our open and our lock
    const std::string process = std::to_string(::getpid());
    if (::ftruncate(file.fd(), 0) == 0)
      (void)!::pwrite(file.fd(), process.data(), process.size(), 0);  // for the message only
    file_ = std::move(file);
    return;
  }
}

Lock::~Lock() {
  if (file_.isOpen())
    ::unlink(path_.c_str());
}

}  // namespace qrn::deck

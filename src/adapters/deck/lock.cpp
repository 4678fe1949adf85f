#include "adapters/deck/lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <fstream>

#include "adapters/deck/deck.h"

namespace qrn::deck {

namespace {

constexpr int kNames = 9;

std::string lockPath(const std::string& deck, int number) {
  return beside(deck, ".lock" + (number == 1 ? "" : "." + std::to_string(number)));
}

std::string holderOf(int fd) {
  std::array<char, 32> text{};
  const ssize_t got = ::pread(fd, text.data(), text.size(), 0);
  const std::string process(text.data(), got > 0 ? static_cast<std::size_t>(got) : 0);
  const bool isNumber = !process.empty() && process.find_first_not_of("0123456789") == std::string::npos;
  return isNumber ? " (process " + process + ")" : "";
}

// Not open when it is there and this user may not open it, or cannot be made.
File openLock(const std::string& path, const std::string& deck) {
  constexpr int kFlags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
  File file(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | kFlags, 0600));
  if (file.isOpen())
    takeAfter(file.fd(), deck);
  else if (errno != EEXIST && errno != EACCES && errno != EPERM && errno != EROFS)
    throwDisk("Cannot lock", deck);
  for (const int access : {O_RDWR, O_RDONLY})
    if (!file.isOpen())
      file = File(::open(path.c_str(), access | kFlags));
  return file;
}

// Whether a program on this machine has locked a file that may not even be opened: the system's list of locks
// tells, whoever holds them.
bool heldByAnother(const std::string& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0)
    return false;
  const std::string inode = ":" + std::to_string(info.st_ino) + " ";
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);)
    if (line.find(" FLOCK ") != std::string::npos && line.find(inode) != std::string::npos)
      return true;
  return false;
}

}  // namespace

Lock::Lock(const std::string& deck) {
  for (int number = 1; number <= kNames; ++number) {
    const std::string path = lockPath(deck, number);
    if (!held() && (exists(path) || folderWritable(deck)))
      take(deck, path);
    else if (exists(path) && heldByAnother(path))
      throwInUse(deck, "");
  }
}

// Takes the lock `path`, or leaves it be when it is another user's.
void Lock::take(const std::string& deck, const std::string& path) {
  for (;;) {
    File file = openLock(path, deck);
    if (!file.isOpen()) {
      if (heldByAnother(path))
        throwInUse(deck, "");
      if (::unlink(path.c_str()) == 0)
        continue;
      return;
    }
    if (::flock(file.fd(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
      throwInUse(deck, holderOf(file.fd()));
    // A file system without locks (some network folders) must not keep the workshop from running.
    if (!sameFile(file.fd(), path))
      continue;  // its last holder took it away between our open and our lock
    const std::string process = std::to_string(::getpid());
    if (::ftruncate(file.fd(), 0) == 0)
      (void)!::pwrite(file.fd(), process.data(), process.size(), 0);  // for the message only
    path_ = path;
    file_ = std::move(file);
    return;
  }
}

Lock::~Lock() {
  if (file_.isOpen() && sameFile(file_.fd(), path_))
    ::unlink(path_.c_str());
}

void Lock::follow(const std::string& deck) {
  for (int number = 1; number <= kNames; ++number)
    if (const std::string path = lockPath(deck, number); sameFile(file_.fd(), path)) {
      path_ = path;  // it was moved along, with the whole folder
      return;
    }
  Lock fresh(deck);
  std::swap(path_, fresh.path_);
  std::swap(file_, fresh.file_);
}

bool heldLockOf(const std::string& deck) {
  for (int number = 1; number <= kNames; ++number)
    if (heldByAnother(lockPath(deck, number)))
      return true;
  return false;
}

void throwInUse(const std::string& deck, const std::string& holder) {
  throw DeckInUse(
      Fault::world, 70,
      deck + " is in use by another program" + holder + ". Close it there, or open it read-only.");
}

}  // namespace qrn::deck

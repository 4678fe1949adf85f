// One writer for each deck: a lock file beside it, locked while the deck is open. The lock itself goes with
// the process, however it ends; a lock file that a killed process left behind stops nobody, also where it is
// another user's and can neither be opened nor taken away: the lock then stands under the next number.
#pragma once

#include <string>

#include "base/disk.h"

namespace qrn::deck {

class Lock {
 public:
  // Throws DeckInUse when another program holds it. In a folder that cannot be written no lock is needed,
  // since nothing can be stored there: held() is false then.
  explicit Lock(const std::string& deck);
  ~Lock();
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;
  bool held() const { return file_.isOpen(); }
  void follow(const std::string& deck);  // it stands elsewhere now. Throws DeckInUse and keeps what it has.

 private:
  void take(const std::string& deck, const std::string& path);
  std::string path_;
  File file_;
};

// Whether a program on this machine, this one too, holds a lock of the deck that stood there.
bool heldLockOf(const std::string& deck);
[[noreturn]] void throwInUse(const std::string& deck, const std::string& holder);

}  // namespace qrn::deck

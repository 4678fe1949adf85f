// What can go wrong at the line between the logic and the world, told apart by who must act.
#pragma once

#include <stdexcept>
#include <string>

namespace qrn {

enum class Fault {
  cancelled,  // the user said no
  badData,    // what was read is not what it should be
  world,      // disk, link or another program failed
  program     // this program is wrong
};

class HostError : public std::runtime_error {
 public:
  // `number` is the classic error number that handlers test (53 file not found, 62 input past end, 70
  // permission denied, 76 path not found, 91 object missing), or 0.
  HostError(Fault fault, int number, const std::string& message)
      : std::runtime_error(message), fault_(fault), number_(number) {}
  Fault fault() const { return fault_; }
  int number() const { return number_; }

 private:
  Fault fault_;
  int number_;
};

}  // namespace qrn

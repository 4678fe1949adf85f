// Running a program beside this one.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qrn::deck {

// Full path of a program in PATH, "" when it is not there.
std::string findProgram(const std::string& name);
// A program at work. It shares a group with all that it starts; the whole group ends with the object.
class Program {
 public:
  Program() = default;  // none: it has ended
  explicit Program(const std::vector<std::string>& command);
  Program(Program&& other) noexcept : child_(std::exchange(other.child_, -1)) {}
  Program& operator=(Program&& other) noexcept;
  ~Program() { end(); }
  bool hasEnded() const;  // also when it could not be started
  // Waits while the message loop goes on. False when the time is up before it has ended.
  bool waitForEnd(double limitSeconds) const;
  std::optional<int> end();  // at once; its exit code when it had ended by itself

 private:
  pid_t child_ = -1;
};

// Exit code; nothing when it could not be started, was killed, or had to be ended after `limitSeconds`. The
// message loop goes on meanwhile.
std::optional<int> runProgram(const std::vector<std::string>& command, double limitSeconds);

}  // namespace qrn::deck

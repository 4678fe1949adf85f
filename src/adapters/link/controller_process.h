// The controller as a process: where it announces itself, starting it, ending it.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "adapters/link/wire/wire.h"

namespace qrn::link {

// The announcement in this folder, or nothing.
std::optional<Announcement> announcedIn(const std::string& folder);
// "quorin-controller" in the folder of the running program.
std::string controllerBesideProgram();

// What a controller said before it ended: the last line of its log.
std::string lastWords(const std::string& logFile);

class ControllerProcess {
 public:
  ControllerProcess() = default;
  ControllerProcess(const ControllerProcess&) = delete;
  ControllerProcess& operator=(const ControllerProcess&) = delete;

  // Starts it in a session of its own, so that an interrupt typed for the program does not end it first. What
  // it prints goes to `logFile`. Returns "" or what went wrong.
  std::string start(const std::string& path, const std::vector<std::string>& arguments,
                    const std::string& token, const std::string& logFile);
  bool running();  // also takes leave of a process that has ended
  pid_t id() const { return process_; }
  void end(std::chrono::milliseconds patience);  // asks, waits, then kills
  void release() { process_ = 0; }               // lets it go on by itself

 private:
  pid_t process_ = 0;
};

}  // namespace qrn::link

#include "adapters/deck/process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <sstream>

#include "base/disk.h"
#include "host/host.h"
#include "host/wait.h"

namespace qrn::deck {

namespace {

pid_t start(const std::vector<std::string>& command) {
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t files;
  posix_spawnattr_t attributes;
  posix_spawn_file_actions_init(&files);
  posix_spawnattr_init(&attributes);
  posix_spawn_file_actions_addopen(&files, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&files, 1, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&files, 2, "/dev/null", O_WRONLY, 0);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  posix_spawnattr_setpgroup(&attributes, 0);
  pid_t child = -1;
  if (posix_spawn(&child, arguments[0], &files, &attributes, arguments.data(), environ) != 0)
    child = -1;
  posix_spawn_file_actions_destroy(&files);
  posix_spawnattr_destroy(&attributes);
  return child;
}

}  // namespace

std::string findProgram(const std::string& name) {
  const char* path = std::getenv("PATH");
  std::istringstream folders(path == nullptr ? "/usr/bin:/bin" : path);
  for (std::string folder; std::getline(folders, folder, ':');) {
    const std::string file = folder + "/" + name;
    if (!folder.empty() && ::access(file.c_str(), X_OK) == 0)
      return file;
  }
  return "";
}

Program::Program(const std::vector<std::string>& command) : child_(start(command)) {}

Program& Program::operator=(Program&& other) noexcept {
  if (this != &other) {
    end();
    child_ = std::exchange(other.child_, -1);
  }
  return *this;
}

bool Program::hasEnded() const {
  siginfo_t info{};
  return child_ < 0 || (::waitid(P_PID, static_cast<id_t>(child_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
                        info.si_pid == child_);
}

bool Program::waitForEnd(double limitSeconds) const {
  const host::Host& world = host::host();
  if (world.loop != nullptr && world.clock != nullptr)
    return host::waitUntil([this] { return hasEnded(); }, limitSeconds);
  // Without a message loop (a run without windows) nothing else has to go on.
  const File handle(child_ < 0 ? -1 : static_cast<int>(::syscall(SYS_pidfd_open, child_, 0)));
  if (!handle.isOpen())
    return hasEnded();
  pollfd ready{handle.fd(), POLLIN, 0};
  return ::poll(&ready, 1, static_cast<int>(limitSeconds * 1000)) == 1;
}

std::optional<int> Program::end() {
  const pid_t child = std::exchange(child_, -1);
  if (child < 0)
    return std::nullopt;
  ::kill(-child, SIGKILL);  // with whatever it left behind in its group
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) ? std::optional<int>(WEXITSTATUS(status)) : std::nullopt;
}

std::optional<int> runProgram(const std::vector<std::string>& command, double limitSeconds) {
  Program program(command);
  program.waitForEnd(limitSeconds);
  return program.end();
}

}  // namespace qrn::deck

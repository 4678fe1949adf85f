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

#include "adapters/deck/disk.h"
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

// True when `child` has ended within the limit; it is still to be collected.
bool waitForEnd(pid_t child, double limitSeconds) {
  const host::Host& world = host::host();
  if (world.loop != nullptr && world.clock != nullptr) {
    const auto ended = [child] {
      siginfo_t info{};
      return ::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
             info.si_pid == child;
    };
    return host::waitUntil(ended, limitSeconds);
  }
  // Without a message loop (a run without windows) nothing else has to go on.
  const File handle(static_cast<int>(::syscall(SYS_pidfd_open, child, 0)));
  if (!handle.isOpen())
    return false;
  pollfd ready{handle.fd(), POLLIN, 0};
  return ::poll(&ready, 1, static_cast<int>(limitSeconds * 1000)) == 1;
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

std::optional<int> runProgram(const std::vector<std::string>& command, double limitSeconds) {
  const pid_t child = start(command);
  if (child < 0)
    return std::nullopt;
  const bool inTime = waitForEnd(child, limitSeconds);
  ::kill(-child, SIGKILL);  // whatever it left behind in its group
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return inTime && WIFEXITED(status) ? std::optional<int>(WEXITSTATUS(status)) : std::nullopt;
}

}  // namespace qrn::deck

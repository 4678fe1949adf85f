#include "adapters/link/controller_process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <thread>

#include "adapters/link/link.h"

extern char** environ;

namespace qrn::link {

namespace {

constexpr auto glance = std::chrono::milliseconds(5);

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (std::string& text : texts) result.push_back(text.data());
  result.push_back(nullptr);
  return result;
}

std::vector<std::string> environmentWith(const std::string& token) {
  const std::string mine = std::string(tokenVariable) + "=";
  std::vector<std::string> texts;
  for (char** each = environ; *each != nullptr; ++each)
    if (std::strncmp(*each, mine.c_str(), mine.size()) != 0)
      texts.emplace_back(*each);
  texts.push_back(mine + token);
  return texts;
}

// A folder that this user alone may enter.
bool isPrivateFolder(const std::string& folder) {
  struct stat about {};
  return lstat(folder.c_str(), &about) == 0 && S_ISDIR(about.st_mode) && about.st_uid == getuid() &&
         (about.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

}  // namespace

std::string defaultAnnounceFolder() {
  const auto below = [](const char* variable, const char* name) {
    const char* folder = std::getenv(variable);
    return folder != nullptr && *folder == '/' ? folder + std::string(name) : "";
  };
  // A name that somebody else has taken gives way to the next.
  for (const std::string& folder : {below("XDG_RUNTIME_DIR", "/quorin"),
                                    "/tmp/quorin-" + std::to_string(getuid()), below("HOME", "/.quorin")}) {
    if (folder.empty())
      continue;
    mkdir(folder.c_str(), S_IRWXU);
    if (isPrivateFolder(folder))
      return folder;
  }
  return "";
}

std::optional<Announcement> announcedIn(const std::string& folder) {
  std::ifstream file(announceFile(folder), std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  return readAnnouncement(text);
}

std::string controllerBesideProgram() {
  char path[4096] = "";
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
  const std::string program(path, length > 0 ? static_cast<std::size_t>(length) : 0);
  return program.substr(0, program.rfind('/') + 1) + "quorin-controller";
}

std::string lastWords(const std::string& logFile) {
  std::ifstream log(logFile);
  std::string last;
  for (std::string line; std::getline(log, line);)
    if (!line.empty())
      last = line;
  return last.empty() ? "it said nothing." : last;
}

std::string ControllerProcess::start(const std::string& path, const std::vector<std::string>& arguments,
                                     const std::string& token, const std::string& logFile) {
  std::vector<std::string> words{path};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<std::string> settings = environmentWith(token);

  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, logFile.c_str(),
                                   O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, S_IRUSR | S_IWUSR);
  posix_spawn_file_actions_adddup2(&files, STDOUT_FILENO, STDERR_FILENO);
  posix_spawnattr_t manner;
  posix_spawnattr_init(&manner);
  sigset_t none, all;
  sigemptyset(&none);
  sigfillset(&all);
  posix_spawnattr_setsigmask(&manner, &none);
  posix_spawnattr_setsigdefault(&manner, &all);
  posix_spawnattr_setflags(&manner, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

  const int error = posix_spawn(&process_, path.c_str(), &files, &manner, pointers(words).data(),
                                pointers(settings).data());
  posix_spawn_file_actions_destroy(&files);
  posix_spawnattr_destroy(&manner);
  if (error == 0)
    return "";
  process_ = 0;
  return "Cannot start " + path + ": " + std::strerror(error) + ".";
}

bool ControllerProcess::running() {
  if (process_ != 0 && waitpid(process_, nullptr, WNOHANG) != 0)
    process_ = 0;
  return process_ != 0;
}

void ControllerProcess::end(std::chrono::milliseconds patience) {
  if (!running())
    return;
  kill(process_, SIGTERM);
  for (auto waited = std::chrono::milliseconds(0); waited < patience && running(); waited += glance)
    std::this_thread::sleep_for(glance);
  if (!running())
    return;
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
  process_ = 0;
}

}  // namespace qrn::link

#include "adapters/system/machine.h"

#include <signal.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <thread>

#include "base/disk.h"
#include "base/text.h"

namespace qrn::system {

namespace {

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::string userFolder(const char* variableName, const char* belowHome) {
  const std::string set = variable(variableName);
  return set.empty() ? variable("HOME") + belowHome : set;
}

// The first folder of the machine's configuration that has settings of ours; where none has, the first of
// all.
std::string machineFolder() {
  std::string folders = variable("XDG_CONFIG_DIRS"), first;
  if (folders.empty())
    folders = "/etc/xdg";
  for (const std::string_view field : splitFields(folders, ':')) {
    const std::string folder(field);
    if (!folder.starts_with('/'))
      continue;
    if (exists(folder + "/quorin/qrn.ini"))
      return folder;
    first = first.empty() ? folder : first;
  }
  return first;
}

bool isOurFolder(const std::string& folder) {
  struct stat info {};
  return ::lstat(folder.c_str(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == ::getuid();
}

// This user's folder for temporary files; a name that somebody else has taken gives way to a new one.
std::string makeUserFolder() {
  std::error_code error;
  const std::filesystem::path all = std::filesystem::temp_directory_path(error);
  std::string folder = (all / ("quorin-" + std::to_string(::getuid()))).string();
  if (::mkdir(folder.c_str(), 0700) != 0 && !isOurFolder(folder)) {
    folder += "-XXXXXX";
    ::mkdtemp(folder.data());
  }
  return folder;
}

const std::string& userTemporaryFolder() {
  static const std::string folder = makeUserFolder();
  return folder;
}

// Takes away all but the logs, and the folder when there are none.
void clearRunFolder(const std::string& path) {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(path, error))
    if (entry.path().extension() != ".log")
      std::filesystem::remove_all(entry.path(), error);
  ::rmdir(path.c_str());
}

// Clears what runs that were killed have left behind. Their folders bear the numbers of their processes.
void clearAfterKilledRuns(const std::string& userFolder) {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(userFolder, error)) {
    const std::string name = entry.path().filename().string();
    if (name.empty() || name.size() > 9 || name.find_first_not_of("0123456789") != std::string::npos)
      continue;
    if (::kill(static_cast<pid_t>(std::stol(name)), 0) != 0 && errno == ESRCH)
      clearRunFolder(entry.path().string());
  }
}

// The temporary folder of this run. Runs at the same time use the same file names, so each has a folder of
// its own; when the run ends only its logs stay.
class RunFolder {
 public:
  RunFolder() {
    const std::string& folder = userTemporaryFolder();
    clearAfterKilledRuns(folder);
    path_ = folder + "/" + std::to_string(::getpid());
    clearRunFolder(path_);  // of a killed run that had the same number
    ::mkdir(path_.c_str(), 0700);
  }
  ~RunFolder() { clearRunFolder(path_); }
  RunFolder(const RunFolder&) = delete;
  RunFolder& operator=(const RunFolder&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

const std::string& temporaryFolder() {
  static const RunFolder folder;
  return folder.path();
}

}  // namespace

host::DateTime MachineClock::now() const {
  const auto instant = std::chrono::system_clock::now();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(instant);
  std::tm local{};
  ::localtime_r(&seconds, &local);
  const auto milliseconds =
      std::chrono::duration_cast<std::chrono::milliseconds>(instant.time_since_epoch()).count() % 1000;
  return {local.tm_year + 1900,
          local.tm_mon + 1,
          local.tm_mday,
          local.tm_hour,
          local.tm_min,
          local.tm_sec,
          static_cast<int>(milliseconds)};
}

std::int64_t MachineClock::microseconds() const {
  return std::chrono::duration_cast<std::chrono::microseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

std::string MachineEnvironment::Environ(std::string_view name) const {
  const std::string key(name);
  if (key == "temp" || key == "TEMP")
    return temporaryFolder();
  const std::string set = variable(key.c_str());
  if (!set.empty())
    return set;
  if (key == "APPDATA")
    return userFolder("XDG_CONFIG_HOME", "/.config");
  if (key == "ALLUSERSPROFILE")
    return machineFolder();
  return "";
}

std::string MachineEnvironment::logFolder() const {
  return userTemporaryFolder();
}

bool MachineEnvironment::processRuns(const std::string& name) const {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
    std::error_code hidden;  // a process of somebody else does not tell its file
    const auto program = std::filesystem::read_symlink(entry.path() / "exe", hidden).filename().string();
    if (!hidden && ::strcasecmp(program.c_str(), name.c_str()) == 0)
      return true;
  }
  return false;
}

void PlainLoop::sleep(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace qrn::system

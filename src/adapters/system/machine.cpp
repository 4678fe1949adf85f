#include "adapters/system/machine.h"

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <thread>

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

bool isOurFolder(const std::string& folder) {
  struct stat info {};
  return ::lstat(folder.c_str(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == ::getuid();
}

// One folder for this user's runs; a name that somebody else has taken gives way to a new one.
std::string temporaryFolder() {
  static std::string made;
  if (!made.empty() && isOurFolder(made))
    return made;
  std::error_code error;
  const std::filesystem::path all = std::filesystem::temp_directory_path(error);
  made = (all / ("quorin-" + std::to_string(::getuid()))).string();
  if (::mkdir(made.c_str(), 0700) != 0 && !isOurFolder(made)) {
    std::string other = made + "-XXXXXX";
    if (::mkdtemp(other.data()) != nullptr)
      made = other;
  }
  return made;
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
  const std::string set = variable(key.c_str());
  if (!set.empty())
    return set;
  if (key == "temp" || key == "TEMP")
    return temporaryFolder();
  if (key == "APPDATA")
    return userFolder("XDG_CONFIG_HOME", "/.config");
  if (key == "ALLUSERSPROFILE")
    return "/etc/xdg";
  return "";
}

void PlainLoop::yield() {
  const auto pumps = pumps_;  // a pump may add another
  for (const auto& pump : pumps) pump();
}

void PlainLoop::sleep(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace qrn::system

// The machine behind the host line: files that are whole or as they were, folders, environment, the plain
// loop.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <thread>

#include "adapters/system/files.h"
#include "adapters/system/machine.h"
#include "adapters/system/standard_streams.h"
#include "support/disk_case.h"

namespace qrn::system {
namespace {

using test::Words;

// Files on the disk, told as conversations. All names stand in one folder; DIR in a value is that folder.
class SystemTest : public test::DiskCase {
 protected:
  SystemTest() : DiskCase(home, "") {
    for (const char* variable : {"temp", "TEMP", "TMPDIR", "ALLUSERSPROFILE", "APPDATA", "XDG_CONFIG_HOME",
                                 "XDG_CONFIG_DIRS", "HOME"})
      if (const char* value = std::getenv(variable))
        before[variable] = value;
      else
        before[variable] = std::nullopt;
    fileCommands();
    processCommands();
  }
  ~SystemTest() override {
    for (const auto& [name, value] : before) value ? ::setenv(name, value->c_str(), 1) : ::unsetenv(name);
  }
  std::string at(const std::string& name) const { return folder + "/" + name; }

  std::string shown(std::string told) const override { return replaceAll(told, folder, "DIR"); }
  // "x*9" is nine x, so that texts may be long
  static std::string long_(const std::string& text) {
    const std::size_t times = text.find('*');
    return times == std::string::npos ? text : std::string(std::stoul(text.substr(times + 1)), text[0]);
  }
  void fileCommands() {
    on("write", [this](const Words& words) { files.write(path(words, 0), long_(words.rest(1))); });
    on("append", [this](const Words& words) { files.append(path(words, 0), long_(words.rest(1))); });
    on("read", [this](const Words& words) { tell("'" + test::escaped(files.read(path(words, 0))) + "'"); });
    on("kill", [this](const Words& words) { files.Kill(path(words, 0)); });
    on("folder", [this](const Words& words) { files.makeFolder(path(words, 0)); });
    on("is", [this](const Words& words) {
      tell(files.fileExists(path(words, 0))     ? "a file"
           : files.folderExists(path(words, 0)) ? "a folder"
                                                : "nothing");
    });
    on("list", [this](const Words& words) {
      std::string names;
      for (const std::string& name : files.list(words.empty() ? folder : path(words, 0))) names += name + " ";
      tell(names.empty() ? "empty" : names);
    });
    on("longname", [this](const Words&) {
      files.write(at(".quorin-new-" + std::to_string(::getpid()) + "-1"), "of another user");
      files.write(at(std::string(255, 'n')), "text");
      tell(files.read(at(std::string(255, 'n'))), " in ", files.list(folder).size(), " files");
    });
    on("symlink", [this](const Words& words) { std::filesystem::create_symlink(words[0], path(words, 1)); });
    on("mode", [this](const Words& words) {
      const std::string file = words[0] == "." ? folder : path(words, 0);
      if (words.size() > 1)
        ::chmod(file.c_str(), static_cast<mode_t>(std::stoi(words[1], nullptr, 8)));
      struct stat info {};
      ::lstat(file.c_str(), &info);
      tell(std::oct, (info.st_mode & 07777U), (S_ISLNK(info.st_mode) ? " link" : ""));
    });
  }
  void processCommands() {
    on("runs",
       [this](const Words& words) { tell(MachineEnvironment().processRuns(words[0]) ? "yes" : "no"); });
    // variable NAME [VALUE]: set, or gone
    on("variable", [this](const Words& words) {
      const std::string value = replaceAll(words.word(1), "DIR/", folder + "/");
      words.size() > 1 ? ::setenv(words[0].c_str(), value.c_str(), 1) : ::unsetenv(words[0].c_str());
    });
    on("temporary", [this](const Words&) { ::setenv("TMPDIR", folder.c_str(), 1); });
    on("environ", [this](const Words& words) {
      std::string value = MachineEnvironment().Environ(words[0]);
      for (const std::string& own :
           {"quorin-" + std::to_string(::getuid()), "/" + std::to_string(::getpid())})
        if (const std::size_t place = value.find(own); place != std::string::npos)
          value.replace(place, own.size(), own[0] == '/' ? "/RUN" : "USER");
      tell("'" + value + "'");
    });
    // What is in the user's own temporary folder; a name without a slash is a folder there, "own" is this
    // run's number.
    on("left", [this](const Words& words) {
      for (const std::string& name : words)
        std::filesystem::create_directories(
            userFolder() + (name.starts_with("own/") ? std::to_string(::getpid()) + name.substr(3) : name));
    });
    on("leftfile", [this](const Words& words) { files.write(userFolder() + words[0], words.rest(1)); });
    on("user", [this](const Words&) {
      std::string names =
          MachineEnvironment().logFolder() + "/" == userFolder() ? "logs here:" : "logs elsewhere:";
      for (const auto& entry : std::filesystem::recursive_directory_iterator(userFolder())) {
        std::string name = entry.path().string().substr(userFolder().size());
        if (const std::string own = std::to_string(::getpid()); name.starts_with(own))
          name.replace(0, own.size(), "own");
        found_.insert(name);
      }
      for (const std::string& name : std::exchange(found_, {})) names += " " + name;
      tell(names);
    });
  }
  std::string userFolder() const { return folder + "/quorin-" + std::to_string(::getuid()) + "/"; }
  DiskFiles files;
  const test::Folder home;
  const std::string folder = home.path();
  std::set<std::string> found_;
  std::map<const char*, std::optional<std::string>> before;
};

const bool kRegistered = test::registerCases<SystemTest>("SystemCase", QUORIN_CASES);

TEST_F(SystemTest, AReaderSeesTheOldFileOrTheNewOneWhole) {
  const std::string first(200000, 'a'), second(300000, 'b');
  files.write(at("deck"), first);
  std::atomic<bool> done = false;
  std::thread writer([&] {
    for (int i = 0; i < 20; ++i) files.write(at("deck"), i % 2 == 0 ? second : first);
    done = true;
  });
  while (!done) {
    const std::string seen = files.read(at("deck"));
    if (seen != first && seen != second) {
      ADD_FAILURE() << "a mixture of " << seen.size() << " bytes";
      break;
    }
  }
  writer.join();
}

// In a process of its own, which this ends. 0: as it should be.
[[noreturn]] void writeWithoutStreams(const std::string& path) {
  for (int fd = 0; fd <= 2; ++fd) ::close(fd);
  secureStandardStreams();
  const int file = ::creat(path.c_str(), 0600);
  const rlimit none{0, 0};
  ::setrlimit(RLIMIT_FSIZE, &none);
  std::array<int, 2> ends{};
  if (file <= STDERR_FILENO || ::write(STDOUT_FILENO, "x", 1) >= 0 || ::pipe(ends.data()) != 0 ||
      ::close(ends[0]) != 0)
    std::_Exit(1);
  if (::write(file, "x", 1) >= 0 || errno != EFBIG)
    std::_Exit(2);
  std::_Exit(::write(ends[1], "x", 1) < 0 && errno == EPIPE ? 0 : 3);
}

TEST_F(SystemTest, ClosedStreamsNeverBecomeAnotherFileAndFailedWritesAreErrors) {
  EXPECT_EXIT(writeWithoutStreams(at("file")), ::testing::ExitedWithCode(0), "");
}

TEST_F(SystemTest, TheLoopDrainsItsPumpsInOrder) {
  PlainLoop loop;
  std::string order;
  loop.addPump([&] {
    order += "a";
    if (order == "a")
      loop.addPump([&] { order += "c"; });
  });
  loop.addPump([&] { order += "b"; });
  loop.yield();
  EXPECT_EQ(order, "ab");
  loop.yield();
  EXPECT_EQ(order, "ababc");
}

}  // namespace
}  // namespace qrn::system

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
#include <optional>
#include <string>
#include <thread>

#include "adapters/system/files.h"
#include "adapters/system/machine.h"
#include "adapters/system/standard_streams.h"
#include "host/errors.h"

namespace qrn::system {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// No file may grow beyond `bytes` during its lifetime, as on a full disk.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit small{bytes, before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
  }
  ~FullDisk() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit before_{};
  void (*handler_)(int);
};

// Sets an environment variable, or unsets it (null), for its lifetime.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name))
      before_ = old;
    set(value);
  }
  ~Variable() { set(before_ ? before_->c_str() : nullptr); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  void set(const char* value) const {
    if (value)
      ::setenv(name_, value, 1);
    else
      ::unsetenv(name_);
  }

 private:
  const char* name_;
  std::optional<std::string> before_;
};

class SystemTest : public ::testing::Test {
 protected:
  SystemTest() {
    std::string name = (std::filesystem::temp_directory_path() / "system-test-XXXXXX").string();
    folder = ::mkdtemp(name.data());
  }
  ~SystemTest() override { std::filesystem::remove_all(folder); }
  std::string at(const std::string& name) const { return folder + "/" + name; }

  template <class Body>
  static std::pair<int, std::string> errorOf(Body&& body) {
    try {
      body();
    } catch (const HostError& error) {
      return {error.number(), error.what()};
    }
    return {0, ""};
  }

  DiskFiles files;
  std::string folder;
};

TEST_F(SystemTest, AWriteThatFailsLeavesTheOldFileAlone) {
  files.write(at("deck"), "old");
  std::pair<int, std::string> error;
  {
    const FullDisk disk(4096);
    error = errorOf([&] { files.write(at("deck"), std::string(100000, 'n')); });
  }
  EXPECT_EQ(error.first, 61);
  EXPECT_THAT(error.second, HasSubstr("The disk is full"));
  EXPECT_EQ(files.read(at("deck")), "old");
  EXPECT_THAT(files.list(folder), ElementsAre("deck"));
}

TEST_F(SystemTest, AnAppendThatFailsLeavesTheLinesBefore) {
  files.append(at("log"), "first\r\n");
  std::pair<int, std::string> error;
  {
    const FullDisk disk(4096);
    error = errorOf([&] { files.append(at("log"), std::string(100000, 'n') + "\r\n"); });
  }
  EXPECT_EQ(error.first, 61);
  files.append(at("log"), "second\r\n");
  EXPECT_EQ(files.read(at("log")), "first\r\nsecond\r\n");
}

TEST_F(SystemTest, ADeviceWithoutSpaceReportsAFullDisk) {
  EXPECT_EQ(errorOf([&] { files.write("/dev/full", "x"); }).first, 61);
  EXPECT_TRUE(files.fileExists("/dev/full")) << "a device is never replaced";
}

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

TEST_F(SystemTest, AWriteKeepsLinkAndPermissions) {
  files.write(at("real"), "old");
  ::chmod(at("real").c_str(), 0640);
  std::filesystem::create_symlink("real", at("link"));
  files.write(at("link"), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(at("link")));
  EXPECT_EQ(files.read(at("real")), "new");
  struct stat info {};
  ::stat(at("real").c_str(), &info);
  EXPECT_EQ(info.st_mode & 07777U, 0640U);
}

TEST_F(SystemTest, FilesAndFoldersAreToldApart) {
  EXPECT_EQ(errorOf([&] { files.read(at("absent")); }).first, 53);
  EXPECT_EQ(errorOf([&] { files.write(at("absent/file"), "x"); }).first, 53);
  files.makeFolder(at("a/b"));
  files.makeFolder(at("a/b"));
  EXPECT_TRUE(files.folderExists(at("a/b")));
  EXPECT_FALSE(files.fileExists(at("a/b")));
  files.write(at("a/z"), "");
  files.write(at("a/c"), "");
  EXPECT_THAT(files.list(at("a")), ElementsAre("b", "c", "z"));
  files.Kill(at("a/z"));
  files.Kill(at("a/z"));
  EXPECT_FALSE(files.fileExists(at("a/z")));
  EXPECT_THAT(files.list(at("absent")), ElementsAre());
}

TEST_F(SystemTest, ANameAsLongAsTheFileSystemTakesIsWrittenBesideLeftovers) {
  files.write(at(".quorin-new-" + std::to_string(::getpid()) + "-1"), "of another user");
  files.write(at(std::string(255, 'n')), "text");
  EXPECT_EQ(files.read(at(std::string(255, 'n'))), "text");
  EXPECT_EQ(files.list(folder).size(), 2U);
}

// 0 when a user other than root is told that the file may not be written.
int writeAsNobody(DiskFiles& files, const std::string& file) {
  constexpr unsigned kNobody = 65534;
  if (::geteuid() == 0 && (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0))
    return 2;
  try {
    files.write(file, "new");
  } catch (const HostError& error) {
    return error.number() == 70 ? 0 : 1;
  }
  return 3;
}

TEST_F(SystemTest, AFileThatMayNotBeWrittenStays) {
  files.write(at("locked"), "old");
  ::chmod(at("locked").c_str(), 0440);
  ::chmod(folder.c_str(), 0777);
  EXPECT_EXIT(std::_Exit(writeAsNobody(files, at("locked"))), ::testing::ExitedWithCode(0), "");
  EXPECT_EQ(files.read(at("locked")), "old");
}

TEST_F(SystemTest, ClassicFoldersHavePlacesHere) {
  const MachineEnvironment environment;
  const Variable lower("temp", nullptr), upper("TEMP", nullptr), all("ALLUSERSPROFILE", nullptr);
  const Variable own("APPDATA", nullptr), temporary("TMPDIR", folder.c_str());
  const Variable config("XDG_CONFIG_HOME", "/config"), home("HOME", "/home/someone");
  // What a killed run has left goes, but its logs stay; what is no run's folder is left alone. No process has
  // a number as high as that.
  const std::string user = folder + "/quorin-" + std::to_string(::getuid()) + "/";
  const std::string earlier = std::to_string(::getpid()) + "/controller";
  for (const std::string& made :
       {std::string("99999999/controller"), std::string("999999999/quorin"), earlier, std::string("other")})
    std::filesystem::create_directories(user + made);
  files.write(user + "99999999/Err.log", "why");
  EXPECT_THAT(environment.Environ("temp"), HasSubstr(folder + "/quorin-"));
  EXPECT_EQ(environment.Environ("TEMP"), environment.Environ("temp"));
  EXPECT_TRUE(files.folderExists(environment.Environ("temp")));
  EXPECT_EQ(environment.logFolder() + "/", user);
  EXPECT_TRUE(files.fileExists(user + "99999999/Err.log"));
  EXPECT_FALSE(files.folderExists(user + "99999999/controller"));
  EXPECT_FALSE(files.folderExists(user + "999999999"));
  EXPECT_FALSE(files.folderExists(user + earlier));
  EXPECT_TRUE(files.folderExists(user + "other"));
  EXPECT_EQ(environment.Environ("ALLUSERSPROFILE"), "/etc/xdg");
  EXPECT_EQ(environment.Environ("NO_SUCH_NAME"), "");
  EXPECT_EQ(environment.Environ("APPDATA"), "/config");
  config.set(nullptr);
  EXPECT_EQ(environment.Environ("APPDATA"), "/home/someone/.config");
  own.set("/own");
  EXPECT_EQ(environment.Environ("APPDATA"), "/own");
}

// In a process of its own, which this ends. 0: as it should be.
[[noreturn]] void writeWithoutStreams(const std::string& path) {
  for (int fd = 0; fd <= 2; ++fd) ::close(fd);
  secureStandardStreams();
  const int file = ::creat(path.c_str(), 0600);
  const rlimit none{0, 0};
  ::setrlimit(RLIMIT_FSIZE, &none);
  std::array<int, 2> ends{};
  if (file <= STDERR_FILENO || ::write(STDOUT_FILENO, "x", 1) != 1 || ::pipe(ends.data()) != 0 ||
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

TEST_F(SystemTest, TellsWhichProgramsRun) {
  EXPECT_TRUE(processRuns("SYSTEM_TEST"));
  EXPECT_FALSE(processRuns("system_tes"));
}

TEST_F(SystemTest, RandomnessCanBeRepeated) {
  MachineRandom random;
  random.Randomize(7);
  const double first = random.Rnd(), second = random.Rnd();
  EXPECT_NE(first, second);
  EXPECT_GE(first, 0);
  EXPECT_LT(first, 1);
  random.Randomize(7);
  EXPECT_EQ(random.Rnd(), first);
}

}  // namespace
}  // namespace qrn::system

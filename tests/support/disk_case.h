// Files, folders and processes of the machine in case files: all stand in one folder, "." is the folder
// itself.
#pragma once

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>
#include <map>
#include <string>

#include "base/text.h"
#include "support/cases.h"
#include "support/disk.h"

namespace qrn::test {

class DiskCase : public CaseTest {
 protected:
  // Without a name a file is `usual`.
  DiskCase(const Folder& home, std::string usual) : home_(home), usual_(std::move(usual)) {
    fileCommands();
    keepCommands();
    standingCommands();
    childCommands();
  }
  std::string path(const Words& words, std::size_t n) const {
    const std::string name = words.word(n);
    return name.starts_with('/') ? name
           : name == "."         ? home_.path()
                                 : home_.file(name.empty() ? usual_ : name);
  }

 private:
  void fileCommands() {
    on("folder", [this](const Words& words) {
      const std::string names = joined(namesIn(words.empty() ? home_.path() : path(words, 0)), " ");
      tell(names.empty() ? "empty" : names);
    });
    on("rename", [this](const Words& words) { std::filesystem::rename(path(words, 0), path(words, 1)); });
    on("copy", [this](const Words& words) { std::filesystem::copy(path(words, 0), path(words, 1)); });
    on("remove", [this](const Words& words) { std::filesystem::remove_all(path(words, 0)); });
    on("mkdir", [this](const Words& words) { std::filesystem::create_directory(path(words, 0)); });
    on("pipe", [this](const Words& words) { ::mkfifo(path(words, 0).c_str(), 0600); });
    on("write", [this](const Words& words) { writeFile(path(words, 0), words.rest(1)); });
    // more FILE COUNT TEXT: so often behind what it holds; cut FILE BYTES: to so many, or by so many
    on("more", [this](const Words& words) {
      std::string bytes = readFile(path(words, 0));
      for (int i = words.number(1); i > 0; --i) bytes += words.rest(2);
      writeFile(path(words, 0), bytes);
    });
    on("cut", [this](const Words& words) {
      const std::string file = path(words, 0);
      const int bytes = words.number(1);
      std::filesystem::resize_file(
          file, (bytes < 0 ? std::filesystem::file_size(file) : 0) + static_cast<std::uintmax_t>(bytes));
    });
    on("hardlink",
       [this](const Words& words) { std::filesystem::create_hard_link(path(words, 0), path(words, 1)); });
    on("symlink",
       [this](const Words& words) { std::filesystem::create_symlink(path(words, 0), path(words, 1)); });
    on("content", [this](const Words& words) { tell(escaped(readFile(path(words, 0)))); });
    on("holds", [this](const Words& words) {
      tell(readFile(path(words, 0)).find(words.rest(1)) == std::string::npos ? "no" : "yes");
    });
    // flip FILE TEXT [COUNT]: a bit of so many bytes from there on
    on("flip", [this](const Words& words) {
      std::string bytes = readFile(path(words, 0));
      const std::size_t at = bytes.find(words[1]), count = words.size() > 2 ? std::stoul(words[2]) : 1;
      for (std::size_t i = 0; i < count; ++i) bytes.at(at + i) = static_cast<char>(bytes.at(at + i) ^ 1);
      writeFile(path(words, 0), bytes);
    });
  }
  // keep FILE; same FILE [KEPT]: as the kept one was; putback FILE [KEPT]
  void keepCommands() {
    on("keep", [this](const Words& words) { kept_[words.word(0)] = readFile(path(words, 0)); });
    on("same", [this](const Words& words) {
      tell(readFile(path(words, 0)) == kept_[words.word(words.size() > 1 ? 1 : 0)] ? "" : "changed");
    });
    on("putback", [this](const Words& words) {
      writeFile(path(words, 0), kept_[words.word(words.size() > 1 ? 1 : 0)]);
    });
  }
  void standingCommands() {
    on("root", [](const Words&) {
      if (::geteuid() != 0)
        GTEST_SKIP() << "only root can play another user";
    });
    on("mode", [this](const Words& words) {
      EXPECT_EQ(::chmod(path(words, 0).c_str(), static_cast<mode_t>(std::stoi(words[1], nullptr, 8))), 0);
    });
    on("owner", [this](const Words& words) {
      EXPECT_EQ(::chown(path(words, 0).c_str(), static_cast<uid_t>(words.number(1)),
                        static_cast<gid_t>(words.number(2))),
                0);
    });
    on("standing", [this](const Words& words) {
      for (std::size_t i = 0; i < words.size(); ++i) {
        struct stat info {};
        if (::stat(path(words, i).c_str(), &info) != 0)
          tell(words[i] + " is not there");
        else
          tell(words[i], " ", std::oct, (info.st_mode & 07777U), std::dec, " ", info.st_uid, ":",
               info.st_gid);
      }
    });
    on("attribute", [this](const Words& words) {
      const std::string file = path(words, 0), name = words[1];
      if (words.size() > 2 &&
          ::setxattr(file.c_str(), name.c_str(), words[2].data(), words[2].size(), 0) != 0)
        GTEST_SKIP() << "no extended attributes on this file system";
      std::string got(100, '\0');
      const ssize_t size = ::getxattr(file.c_str(), name.c_str(), got.data(), got.size());
      tell(words.size() > 2 ? ""
           : size < 0       ? "none"
                            : "'" + escaped(got.substr(0, static_cast<std::size_t>(size))) + "'");
    });
    on("lock", [this](const Words& words) {
      lock_ = ::open(path(words, 0).c_str(), O_RDWR | O_CREAT, 0600);
      EXPECT_EQ(::flock(lock_, LOCK_EX), 0);
    });
    on("unlock", [this](const Words&) { ::close(lock_); });
  }
  // What happens in a process of its own tells its lines on its own.
  void childCommands() {
    const auto child = [this](int end, const std::function<void()>& prepare) {
      EXPECT_EQ(inChild([&] {
                  prepare();
                  runBlock();
                  if (end == 99 && !HasFailure())
                    ::raise(SIGKILL);
                  leave();
                  return HasFailure() ? 1 : 0;
                }),
                end);
    };
    on("killed", [child](const Words&) { child(99, [] {}); });
    // nobody [GROUP]; small BYTES: files may grow so far
    on("nobody", [child](const Words& words) {
      const auto group = static_cast<gid_t>(words.number(0));
      child(0, [&] { becomeNobody(words.empty() ? nullptr : &group); });
    });
    on("small", [child](const Words& words) { child(0, [&] { limitFiles(std::stoul(words[0])); }); });
  }
  virtual void leave() {}  // of what the child has open

  const Folder& home_;
  const std::string usual_;
  std::map<std::string, std::string> kept_;
  int lock_ = -1;
};

}  // namespace qrn::test

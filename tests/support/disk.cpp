#include "support/disk.h"

#include <grp.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace qrn::test {

Folder::Folder() : path_((std::filesystem::temp_directory_path() / "quorin-test-XXXXXX").string()) {
  if (::mkdtemp(path_.data()) == nullptr)
    throw std::runtime_error("no temporary folder");
}

Folder::~Folder() {
  std::error_code ignored;  // a program that is ending may take its own files away meanwhile
  std::filesystem::remove_all(path_, ignored);
}

std::vector<std::string> Folder::names() const {
  return namesIn(path_);
}

std::vector<std::string> namesIn(const std::string& folder) {
  std::vector<std::string> all;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    all.push_back(entry.path().filename().string());
  std::sort(all.begin(), all.end());
  return all;
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

void writeFile(const std::string& path, std::string_view text) {
  std::ofstream(path, std::ios::binary) << text;
}

int inChild(const std::function<int()>& body) {
  const pid_t child = ::fork();
  if (child == 0) {
    int result = 98;
    try {
      result = body();
    } catch (const std::exception& error) {
      std::fprintf(stderr, "in the child: %s\n", error.what());
    }
    ::_exit(result);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 99;
}

void becomeNobody(const unsigned* group) {
  constexpr unsigned kNobody = 65534;
  if (group != nullptr)
    ::setgroups(1, group);
  if (::geteuid() == 0 && (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0))
    throw std::runtime_error("cannot give up root");
}

void limitFiles(unsigned long bytes) {
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{bytes, bytes};
  ::setrlimit(RLIMIT_FSIZE, &limit);
}

}  // namespace qrn::test

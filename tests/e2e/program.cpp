#include "e2e/program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <sstream>
#include <thread>

namespace qrn::test {

namespace {

struct Child {
  pid_t pid = -1;
  int out = -1, err = -1;
};

Child start(const std::vector<std::string>& words, const std::function<void()>& prepare = {}) {
  std::array<int, 2> out{}, err{};
  if (::pipe2(out.data(), O_CLOEXEC) != 0 || ::pipe2(err.data(), O_CLOEXEC) != 0)
    throw std::runtime_error("no pipe");
  const pid_t pid = ::fork();
  if (pid == 0) {
    ::setpgid(0, 0);
    ::dup2(out[1], STDOUT_FILENO);
    ::dup2(err[1], STDERR_FILENO);
    std::vector<std::string> copy{QUORIN_MATRIX};
    copy.insert(copy.end(), words.begin(), words.end());
    std::vector<char*> arguments;
    for (std::string& word : copy) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    if (prepare)
      prepare();
    ::execv(QUORIN_MATRIX, arguments.data());
    ::_exit(127);
  }
  ::close(out[1]);
  ::close(err[1]);
  return {pid, out[0], err[0]};
}

// Reads both ends until they close or the time is up.
void drain(const Child& child, std::string& out, std::string& err, int milliseconds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  std::array<pollfd, 2> ends{{{child.out, POLLIN, 0}, {child.err, POLLIN, 0}}};
  while (ends[0].fd >= 0 || ends[1].fd >= 0) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    if (left.count() <= 0 || ::poll(ends.data(), ends.size(), static_cast<int>(left.count())) < 0)
      return;
    for (std::size_t i = 0; i < ends.size(); ++i) {
      if (ends[i].revents == 0)
        continue;
      std::array<char, 65536> buffer{};
      const ssize_t count = ::read(ends[i].fd, buffer.data(), buffer.size());
      if (count <= 0)
        ends[i].fd = -1;
      else
        (i == 0 ? out : err).append(buffer.data(), static_cast<std::size_t>(count));
    }
  }
}

}  // namespace

Outcome matrix(const std::vector<std::string>& words, const std::function<void()>& prepare) {
  const Child child = start(words, prepare);
  Outcome outcome;
  drain(child, outcome.out, outcome.err, 120000);
  ::close(child.out);
  ::close(child.err);
  int status = 0;
  ::kill(child.pid, 0);
  ::waitpid(child.pid, &status, 0);
  outcome.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return outcome;
}

std::vector<std::string> killedVote(const std::vector<std::string>& words, int milliseconds) {
  const Child child = start(words);
  std::string out, err;
  drain(child, out, err, milliseconds);
  ::kill(child.pid, SIGKILL);
  int status = 0;
  ::waitpid(child.pid, &status, 0);
  drain(child, out, err, 2000);  // what was in the pipe when it died
  ::close(child.out);
  ::close(child.err);
  out.resize(out.rfind('\n') == std::string::npos ? 0 : out.rfind('\n') + 1);
  return lines(out);
}

std::string TempFolder::sampleDeck(const std::string& name) const {
  const std::string copy = file(name);
  std::filesystem::copy_file(QUORIN_SAMPLE, copy, std::filesystem::copy_options::overwrite_existing);
  std::filesystem::permissions(copy, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
  return copy;
}

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> result;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty() && line.back() == '\r')
      line.pop_back();
    result.push_back(line);
  }
  return result;
}

}  // namespace qrn::test

// Tests told as text: what is done, and what comes of it, in case files beside the tests.
//
//   == a press counts once the program has taken it    one test each, named like this
//   # remark
//   phone 1 press 1 4                                  a command and its words; "..." holds blanks and
//   escapes
//     1: yours\nvote=1\npress=4                        what it tells, indented; ... stands for any text
//   each WHAT in one two {                             the lines up to } for each word, put where $WHAT
//   stands
//     phone $WHAT leave
//   }
//
// A suite is a class with a table of commands; every *.case of its folder is found when the program starts.
// With QUORIN_WRITE_CASES=1 what was told is written into the files, for a person to read through.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace qrn::test {

struct CaseStep {
  int line = 0;
  std::string text;
  std::vector<std::string> expected;  // lines
  std::vector<CaseStep> block;
};

struct CaseText {
  std::string file, name;
  int line = 0;
  std::vector<CaseStep> steps;
};

std::vector<CaseText> readCases(const std::string& path);  // a file, or a folder with its *.case
std::string testNameOf(const std::string& name);           // letters and digits

// `\r`, `\n`, `\t`, `\\`, `\"` and `\xNN` stand for what cannot be seen.
std::string escaped(std::string_view text);
std::string unescaped(std::string_view text);

// The words behind a command.
class Words : public std::vector<std::string> {
 public:
  explicit Words(const std::string& line);
  std::string word(std::size_t n) const { return n < size() ? (*this)[n] : ""; }
  int number(std::size_t n) const { return n < size() ? std::stoi((*this)[n]) : 0; }
  bool has(std::string_view one) const { return std::find(begin(), end(), one) != end(); }
  std::string rest(std::size_t from) const;  // from that word on, quotes and all, without escapes
  std::string as(std::size_t from) const {   // as it stands
    return from < starts_.size() ? line_.substr(starts_[from]) : "";
  }

 private:
  std::string line_;
  std::vector<std::size_t> starts_;
};

// What a command does: a lambda that holds two pointers at most. std::function makes ten functions of each,
// and there are hundreds.
class Command {
 public:
  template <class Act>
  Command(Act act) requires(sizeof(Act) <= 2 * sizeof(void*) && std::is_trivially_copyable_v<Act>)
      : call_([](const void* held, const Words& words) { (*static_cast<const Act*>(held))(words); }) {
    new (held_) Act(act);
  }
  void operator()(const Words& words) const { call_(held_, words); }

 private:
  alignas(void*) unsigned char held_[2 * sizeof(void*)];
  void (*call_)(const void*, const Words&);
};

class CaseTest : public ::testing::Test {
 public:
  void play(const CaseText& text) { case_ = &text; }
  void TestBody() override { run(case_->steps); }

 protected:
  void on(const char* command, Command act) { acts_.insert_or_assign(command, act); }
  template <class... Parts>
  void tell(const Parts&... parts) {  // a line of these, or lines
    std::ostringstream text;
    (text << ... << parts);
    told_ += text.str();
    told_ += text.str().empty() || told_.ends_with('\n') ? "" : "\n";
  }
  std::string take() { return std::exchange(told_, ""); }             // what the command at hand has told
  virtual std::string shown(std::string told) const { return told; }  // as case files hold it
  void runLine(const std::string& line);
  void runBlock() { run(*block_); }  // of the command at hand
  std::vector<std::string> blockLines() const {
    std::vector<std::string> lines;
    for (const CaseStep& step : *block_) lines.push_back(step.text);
    return lines;
  }
  // The block of the command at hand for another time, or the command that its words end with.
  std::function<void()> later(const Words& words, std::size_t from) {
    const std::string line = words.as(from);
    return [this, block = *block_, line] { line.empty() ? run(block) : runLine(line); };
  }

 private:
  void run(const std::vector<CaseStep>& steps);
  void forEach(const Words& words, const std::function<void()>& act);
  std::string perform(const CaseStep& step, const std::string& line);
  void performFor(const CaseStep& step, const std::string& line);
  std::string withValues(std::string line) const;

  const CaseText* case_ = nullptr;
  std::map<std::string, Command> acts_;
  std::map<std::string, std::string> values_;
  const std::vector<CaseStep>* block_ = nullptr;
  std::string told_;
};

bool addCases(const char* suite, const std::string& path, CaseTest* (*make)());

// Makes a test of every case. Fixture is a CaseTest.
template <class Fixture>
bool registerCases(const char* suite, const std::string& path) {
  struct Made : Fixture {};
  return addCases(suite, path, []() -> CaseTest* { return new Made; });
}

}  // namespace qrn::test

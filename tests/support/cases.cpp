#include "support/cases.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <list>
#include <sstream>

#include "base/errors.h"

namespace qrn::test {

namespace {

using Lines = std::vector<std::string>;

Lines linesOf(std::istream&& stream) {
  Lines lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::size_t indentOf(const std::string& line) {
  return std::min(line.find_first_not_of(' '), line.size());
}

class Reader {
 public:
  explicit Reader(const std::string& file) : file_(file), lines_(linesOf(std::ifstream(file))) {}
  void readInto(std::vector<CaseText>& cases) {
    while (at_ < lines_.size()) {
      const std::string& head = lines_[at_++];
      if (head.rfind("== ", 0) == 0)
        cases.push_back({file_, head.substr(3), static_cast<int>(at_), steps(0)});
    }
  }

 private:
  // Commands stand at `depth`, what they tell deeper, and a block two deeper up to its end.
  std::vector<CaseStep> steps(std::size_t depth) {
    std::vector<CaseStep> read;
    for (; at_ < lines_.size() && lines_[at_].rfind("== ", 0) != 0; ++at_) {
      const std::string& line = lines_[at_];
      const std::size_t indent = indentOf(line);
      if (indent > depth && !read.empty() && indent < line.size()) {
        read.back().expected.push_back(line.substr(depth + 2));
        continue;
      }
      std::string text = line.substr(indent);
      if (text.empty() || text[0] == '#')
        continue;
      if (text == "}")
        return read;
      const bool block = text.size() > 2 && text.substr(text.size() - 2) == " {";
      if (block)
        text.resize(text.size() - 2);
      read.push_back({static_cast<int>(++at_), text, {}, {}});
      if (block)
        read.back().block = steps(depth + 2);
      else
        --at_;
    }
    return read;
  }
  const std::string file_;
  const Lines lines_;
  std::size_t at_ = 0;
};

bool matches(std::string_view wanted, std::string_view text) {
  const std::size_t any = wanted.find("...");
  if (any == std::string_view::npos || text.substr(0, any) != wanted.substr(0, any))
    return wanted == text;
  for (std::size_t at = any; at <= text.size(); ++at)
    if (matches(wanted.substr(any + 3), text.substr(at)))
      return true;
  return false;
}

bool allMatch(const Lines& wanted, const Lines& told) {
  return wanted.size() == told.size() &&
         std::equal(wanted.begin(), wanted.end(), told.begin(),
                    [](const std::string& a, const std::string& b) { return matches(a, b); });
}

// Lines keep the numbers that they were read with.
void writeInto(const std::string& file, const CaseStep& step, const Lines& told) {
  static std::map<std::string, std::pair<Lines, std::map<std::size_t, std::pair<std::size_t, Lines>>>> files;
  auto& [lines, changes] = files[file];
  if (lines.empty())
    lines = linesOf(std::ifstream(file));
  changes[static_cast<std::size_t>(step.line)] = {step.expected.size(), told};
  std::ofstream out(file);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    out << lines[i] << '\n';
    const auto change = changes.find(i + 1);
    if (change == changes.end())
      continue;
    for (const std::string& one : change->second.second)
      out << std::string(indentOf(lines[i]) + 2, ' ') << one << '\n';
    i += change->second.first;
  }
}

}  // namespace

std::vector<CaseText> readCases(const std::string& path) {
  Lines files{path};
  if (std::filesystem::is_directory(path)) {
    files.clear();
    for (const auto& entry : std::filesystem::directory_iterator(path))
      if (entry.path().extension() == ".case")
        files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
  }
  std::vector<CaseText> all;
  for (const std::string& file : files) Reader(file).readInto(all);
  return all;
}

std::string testNameOf(const std::string& name) {
  std::string made;
  for (bool begins = true; const char c : name) {
    const bool letter = std::isalnum(static_cast<unsigned char>(c)) != 0;
    if (letter)
      made += begins ? static_cast<char>(std::toupper(c)) : c;
    begins = !letter && c != '\'';
  }
  return made;
}

std::string escaped(std::string_view text) {
  static constexpr std::string_view kHidden = "\r\n\t\\", kNames = "rnt\\", kDigits = "0123456789ABCDEF";
  std::string shown;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (const std::size_t hidden = kHidden.find(c); hidden != std::string_view::npos)
      shown += {'\\', kNames[hidden]};
    else if (code < 0x20)
      shown += {'\\', 'x', kDigits[code / 16], kDigits[code % 16]};
    else
      shown += c;
  }
  return shown;
}

std::string unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i] == '\\' && i + 1 < text.size() ? text[++i] : '\0';
    if (c == 'x') {
      plain += static_cast<char>(std::stoi(std::string(text.substr(i + 1, 2)), nullptr, 16));
      i += 2;
    } else {
      plain += c == '\0' ? text[i] : c == 'r' ? '\r' : c == 'n' ? '\n' : c == 't' ? '\t' : c;
    }
  }
  return plain;
}

Words::Words(const std::string& line) : line_(line) {
  for (std::size_t at = 0; (at = line.find_first_not_of(' ', at)) != std::string::npos;) {
    starts_.push_back(at);
    std::string word;
    for (bool quoted = false; at < line.size() && (quoted || line[at] != ' '); ++at) {
      if (line[at] == '"')
        quoted = !quoted;
      else
        word += line[at];
      if (line[at] == '\\' && at + 1 < line.size())
        word += line[++at];
    }
    push_back(unescaped(word));
  }
}

std::string Words::rest(std::size_t from) const {
  return unescaped(as(from));
}

void CaseTest::run(const std::vector<CaseStep>& steps) {
  for (const CaseStep& step : steps) {
    if (IsSkipped())
      return;
    const std::string line = withValues(step.text);
    Lines wanted;
    for (const std::string& text : step.expected) wanted.push_back(withValues(text));
    const Lines told = linesOf(std::istringstream(perform(step, line)));
    if (allMatch(wanted, told))
      continue;
    if (std::getenv("QUORIN_WRITE_CASES") != nullptr)
      writeInto(case_->file, step, told);
    std::string difference = line;
    for (const std::string& one : told) difference += "\n  told:     " + one;
    for (const std::string& one : wanted) difference += "\n  expected: " + one;
    ADD_FAILURE_AT(case_->file.c_str(), step.line) << difference;
  }
}

void CaseTest::runLine(const std::string& line) {
  const CaseStep step{case_->line, line, {}, {}};
  tell(perform(step, line));
}

// What the command tells; a command may run others in its midst.
std::string CaseTest::perform(const CaseStep& step, const std::string& line) {
  if (line.starts_with("~ "))
    return perform(step, line.substr(2)), "";
  const std::string name = line.substr(0, line.find(' '));
  const Words words(line.substr(name.size()));
  const std::string before = take();
  block_ = &step.block;
  try {
    if (name == "each")
      forEach(words, [&] { run(step.block); });
    else if (name == "for")
      performFor(step, line);
    else if (const auto act = acts_.find(name); act != acts_.end())
      act->second(words);
    else
      tell("there is no command " + name);
  } catch (const HostError& error) {
    tell("error ", error.number(), ": ", escaped(error.what()));
  } catch (const std::exception& error) {
    tell("failed: " + escaped(error.what()));
  }
  return shown(std::exchange(told_, before));
}

void CaseTest::performFor(const CaseStep& step, const std::string& line) {
  const std::size_t colon = line.find(": ");
  const Words words(line.substr(4, colon - 4));
  forEach(words, [&] {
    const std::string value = values_["$" + words[0]];
    for (const std::string& told :
         linesOf(std::istringstream(perform(step, withValues(line.substr(colon + 2))))))
      tell(value + ": " + told);
  });
}

// The words are "NAME in one two".
void CaseTest::forEach(const Words& words, const std::function<void()>& act) {
  for (std::size_t i = 2; i < words.size(); ++i) {
    values_["$" + words[0]] = escaped(words[i]);
    act();
  }
  values_.erase("$" + words[0]);
}

std::string CaseTest::withValues(std::string line) const {
  for (const auto& [name, value] : values_)
    for (std::size_t at = 0; (at = line.find(name, at)) != std::string::npos; at += value.size())
      line.replace(at, name.size(), value);
  return line;
}

bool addCases(const char* suite, const std::string& path, CaseTest* (*make)()) {
  static std::list<std::vector<CaseText>> every;
  for (const CaseText& one : every.emplace_back(readCases(path)))
    ::testing::RegisterTest(suite, testNameOf(one.name).c_str(), nullptr, nullptr, one.file.c_str(), one.line,
                            [&one, make] {
                              CaseTest* made = make();
                              made->play(one);
                              return made;
                            });
  return true;
}

}  // namespace qrn::test

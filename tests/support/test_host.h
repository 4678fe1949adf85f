// The world as tests script it: a clock that moves only when someone waits, dialogs with their answers in
// order, files in memory that can be made to fail, a controller that says what the test tells it to.
//
//   class RunnerTest : public ::testing::Test { qrn::test::TestHost world; };
//   world.expectMsgBox("Close vote", Answer::yes);            // an unexpected question fails the test
//   world.at(0.5, [&] { world.link.says("[1],3;5"); });       // happens inside a wait, half a second from
//   now
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/errors.h"
#include "host/actions.h"
#include "host/controller.h"
#include "host/dialogs.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/system.h"
#include "host/wait.h"
#include "host/windows.h"
#include "support/memory_presentation.h"

namespace qrn::test {

// Tells what the mouse is let to do and where forms are put over the show, if there is one.
class TellingWindows : public host::Windows {
 public:
  using Tell = std::function<void(const std::string&)>;
  explicit TellingWindows(Tell tell, host::WindowRect show = {}) : tell_(std::move(tell)), show_(show) {}
  std::int64_t editWindow() const override { return 0; }
  std::int64_t showWindow() const override { return show_.empty() ? 0 : 1; }
  host::WindowRect rectangle(std::int64_t) const override { return show_; }
  host::WindowRect desktop() const override { return {}; }
  std::vector<std::int64_t> topWindows() const override { return {}; }
  void setTopmost(std::int64_t, bool) override {}
  void enableWindow(std::int64_t, bool) override {}
  void bringToFront(std::int64_t) override {}
  void placeForm(const std::string& form, const host::WindowRect& at) override {
    tell_(form + " at " + std::to_string(at.top) + " to " + std::to_string(at.bottom));
  }
  void freeCursor() override { tell_("mouse free"); }
  void trapCursor(const host::WindowRect&) override {}
  void showCursor(bool visible) override { tell_(visible ? "mouse shown" : "mouse hidden"); }

 private:
  Tell tell_;
  host::WindowRect show_;
};

class FakeClock : public host::Clock {
 public:
  host::DateTime now() const override;
  std::int64_t microseconds() const override { return micros; }
  std::int64_t micros = 0;
  host::DateTime start{2026, 3, 14, 9, 0, 0, 0};
};

class SeededRandom : public host::Random {
 public:
  void Randomize(std::uint64_t seed) override { state_ = seed * 2 + 1; }
  double Rnd() override {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<double>(state_ >> 11) / 9007199254740992.0;
  }

 private:
  std::uint64_t state_ = 1;
};

class MemoryFiles : public host::Files, public FullDisk {
 public:
  bool fileExists(const std::string& path) const override { return files.count(path) != 0; }
  bool folderExists(const std::string& path) const override { return folders.count(path) != 0; }
  void makeFolder(const std::string& path) override {
    if (folderFault != 0 && path.starts_with("/tmp/"))
      throw HostError(Fault::world, folderFault, path);
    folders[path] = true;
  }
  std::string read(const std::string& path) const override {
    const auto it = files.find(path);
    if (it == files.end())
      throw HostError(Fault::world, 53, "File not found: " + path);
    return it->second;
  }
  void write(const std::string& path, std::string_view text) override {
    failWhenTold(": " + path);
    files[path] = std::string(text);
  }
  void append(const std::string& path, std::string_view text) override {
    failWhenTold(": " + path);
    files[path] += std::string(text);
  }
  void Kill(const std::string& path) override { files.erase(path); }
  std::vector<std::string> list(const std::string& folder) const override;

  std::map<std::string, std::string> files;
  std::map<std::string, bool> folders;
  int folderFault = 0;  // of making temporary ones
};

class MapEnvironment : public host::Environment {
 public:
  std::string Environ(std::string_view name) const override {
    const auto it = values.find(std::string(name));
    return it == values.end() ? "" : it->second;
  }
  bool processRuns(const std::string&) const override { return false; }
  std::map<std::string, std::string> values{
      {"temp", "/tmp/t"}, {"TEMP", "/tmp/t"}, {"APPDATA", "/appdata"}, {"ALLUSERSPROFILE", "/allusers"}};
};

// Every character is 0.6 of the size wide, a line 1.2 of the size high, a capital 0.7.
class FixedTextMeasure : public host::TextMeasure {
 public:
  double TextWidth(std::string_view text, const std::string& font, double size, bool bold,
                   bool italic) const override;
  double LineHeight(const std::string&, double size) const override { return size * 1.2 * 20; }
  double Ascent(const std::string&, double size, bool, bool) const override { return size * 0.9 * 20; }
  double CapHeight(const std::string&, double size, bool, bool) const override { return size * 0.7 * 20; }
  bool fontInstalled(const std::string& font) const override { return font != "Missing Font"; }
};

class SilentSound : public host::Sound {
 public:
  void play(const std::string& file) override { played.push_back(file); }
  std::vector<std::string> played;
};

class ScriptedLink : public host::ControllerLink {
 public:
  bool makeLink(bool startNew) override {
    made += startNew ? "new;" : "shared;";
    linkUp = linkUp || (startNew ? canStart : canShare);
    return linkUp;
  }
  bool linked() const override { return linkUp; }
  bool controllerReady() override { return ready; }
  void sendToController(std::string_view text) override {
    sent.emplace_back(text);
    if (onSend)
      onSend(sent.back());
  }
  void describeVote(const std::string& scale) override { described = scale; }
  void says(const std::string& data) {
    if (FromQrnCtrl)
      FromQrnCtrl(data);
  }
  bool canShare = true, canStart = true, linkUp = false, ready = true;
  std::string made, described;
  std::vector<std::string> sent;
  std::function<void(const std::string&)> onSend;
};

class ScriptedDialogs : public host::Dialogs {
 public:
  struct Expected {
    std::string kind, part;
    std::optional<host::Answer> answer;  // none: Enter
    std::optional<std::string> text;
  };
  host::Answer MsgBox(const std::string& text, const std::string& title, host::Buttons buttons,
                      host::Icon icon, std::optional<host::Answer> enter) override;
  std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                      const std::string& preset) override;
  std::optional<std::string> FileDialog(const host::FileQuestion& question) override;
  // The expected part is the name of a row that the menu must offer; its answer is that row, or nothing.
  std::optional<std::string> Menu(const std::vector<host::MenuRow>& rows, bool atMouse) override;
  void Info(const std::string& line) override { infos.push_back(line); }

  std::deque<Expected> expected;
  bool answersAll = false;  // a question that nothing was expected for gets the answer of Enter, or none
  std::vector<host::MenuRow> menu;  // the last one shown
  std::vector<std::string> asked;   // text of every question, in order
  std::vector<std::string> infos;

 private:
  Expected next(const std::string& kind, const std::string& text);
};

// Installs itself as the host for its lifetime; a wait that goes on for ten simulated minutes with nothing
// left to happen fails the test by throwing.
class TestHost : public host::Loop {
 public:
  explicit TestHost(int slideCount = 3);
  ~TestHost() override;
  void yield() override;
  void sleep(int milliseconds) override { clock.micros += std::int64_t{1000} * milliseconds; }

  void at(double secondsFromNow, std::function<void()> event);
  void expectMsgBox(const std::string& part, host::Answer answer = host::Answer::ok) {
    dialogs.expected.push_back({"msg", part, answer, {}});
  }
  // An answer by its name; Enter for any other.
  void expectAnswer(const std::string& part, const std::string& answer) {
    static const std::map<std::string, host::Answer> answers{{"yes", host::Answer::yes},
                                                             {"no", host::Answer::no},
                                                             {"ok", host::Answer::ok},
                                                             {"cancel", host::Answer::cancel}};
    const auto named = answers.find(answer);
    named != answers.end() ? expectMsgBox(part, named->second) : expectEnter(part);
  }
  // The person strikes Enter, whatever that answers.
  void expectEnter(const std::string& part) { dialogs.expected.push_back({"msg", part, {}, {}}); }
  void expectInputBox(const std::string& part, std::optional<std::string> text) {
    dialogs.expected.push_back({"input", part, host::Answer::ok, std::move(text)});
  }
  void expectFileDialog(const std::string& part, std::optional<std::string> text) {
    dialogs.expected.push_back({"file", part, host::Answer::ok, std::move(text)});
  }
  void expectMenu(const std::string& row, bool chosen = true) {
    dialogs.expected.push_back({"menu", row, {}, chosen ? std::optional(row) : std::nullopt});
  }

  FakeClock clock;
  SeededRandom random;
  MemoryFiles files;
  MapEnvironment environment;
  FixedTextMeasure textMeasure;
  SilentSound sound;
  ScriptedLink link;
  ScriptedDialogs dialogs;
  MemoryPresentation presentation;
  MemoryProgram program;
  host::FormRegistry forms;

 private:
  struct Event {
    std::int64_t due;
    std::function<void()> what;
  };
  std::vector<Event> events_;
  std::int64_t lastEvent_ = 0;
  host::Host before_;
};

}  // namespace qrn::test

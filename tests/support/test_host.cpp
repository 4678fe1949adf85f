#include "support/test_host.h"

#include <algorithm>

namespace qrn::test {

host::DateTime FakeClock::now() const {
  host::DateTime t = start;
  const std::int64_t ms = micros / 1000;
  const std::int64_t seconds = t.hour * 3600 + t.minute * 60 + t.second + ms / 1000;
  t.hour = static_cast<int>(seconds / 3600 % 24);
  t.minute = static_cast<int>(seconds / 60 % 60);
  t.second = static_cast<int>(seconds % 60);
  t.millisecond = static_cast<int>(ms % 1000);
  return t;
}

std::vector<std::string> MemoryFiles::list(const std::string& folder) const {
  std::vector<std::string> names;
  const std::string prefix = folder + "/";
  for (const auto& [path, text] : files)
    if (path.rfind(prefix, 0) == 0 && path.find('/', prefix.size()) == std::string::npos)
      names.push_back(path.substr(prefix.size()));
  return names;
}

double FixedTextMeasure::TextWidth(std::string_view text, const std::string&, double size, bool, bool) const {
  std::size_t widest = 0, line = 0;
  for (const char c : text) {
    if (c == '\n')
      line = 0;
    else if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80U && c != '\r')
      widest = std::max(widest, ++line);
  }
  return static_cast<double>(widest) * size * 0.6 * 20;
}

ScriptedDialogs::Expected ScriptedDialogs::next(const std::string& kind, const std::string& text) {
  asked.push_back(text);
  if (expected.empty() && answersAll)
    return {};
  if (expected.empty()) {
    ADD_FAILURE() << "Unexpected question (" << kind << "): " << text;
    throw HostError(Fault::program, 5, "unexpected question: " + text);
  }
  Expected answer = expected.front();
  expected.pop_front();
  EXPECT_EQ(answer.kind, kind) << text;
  EXPECT_NE(text.find(answer.part), std::string::npos) << "asked: " << text << "\nexpected: " << answer.part;
  return answer;
}

host::Answer ScriptedDialogs::MsgBox(const std::string& text, const std::string& title, host::Buttons buttons,
                                     host::Icon, std::optional<host::Answer> enter) {
  const Expected expectedHere = next("msg", title + ": " + text);
  return expectedHere.answer.value_or(enter.value_or(host::safeAnswer(buttons)));
}

std::optional<std::string> ScriptedDialogs::InputBox(const std::string& prompt, const std::string& title,
                                                     const std::string&) {
  return next("input", title + ": " + prompt).text;
}

std::optional<std::string> ScriptedDialogs::FileDialog(const host::FileQuestion& question) {
  return next("file", question.title + ": " + question.name + " " + question.filter).text;
}

std::optional<std::string> ScriptedDialogs::Menu(const std::vector<host::MenuRow>& rows, bool) {
  menu = rows;
  std::string offered;
  for (const host::MenuRow& row : rows)
    if (row.enabled)
      offered += "[" + row.name + "]";
  return next("menu", offered).text;
}

TestHost::TestHost(int slideCount) : presentation(slideCount), before_(host::host()) {
  program.presentation = &presentation;
  host::Host& h = host::host();
  h.presentationProgram = &program;
  h.controller = &link;
  h.dialogs = &dialogs;
  h.loop = this;
  h.clock = &clock;
  h.random = &random;
  h.files = &files;
  h.environment = &environment;
  h.textMeasure = &textMeasure;
  h.sound = &sound;
  h.forms = &forms;
}

TestHost::~TestHost() {
  for (const auto& left : dialogs.expected) ADD_FAILURE() << "A question was never asked: " << left.part;
  for (const std::string& name : forms.loadedNames()) forms.unload(name);
  forms.releaseUnloaded();
  host::host() = before_;
}

void TestHost::at(double secondsFromNow, std::function<void()> event) {
  events_.push_back({clock.micros + static_cast<std::int64_t>(secondsFromNow * 1e6), std::move(event)});
}

void TestHost::yield() {
  const auto due = std::min_element(events_.begin(), events_.end(),
                                    [](const Event& a, const Event& b) { return a.due < b.due; });
  if (due != events_.end() && due->due <= clock.micros) {
    const auto what = std::move(due->what);
    events_.erase(due);
    lastEvent_ = clock.micros;
    what();
  } else if (events_.empty() && clock.micros - lastEvent_ > std::int64_t{600} * 1000000) {
    throw HostError(Fault::program, 28, "A wait never ended");
  }
}

}  // namespace qrn::test

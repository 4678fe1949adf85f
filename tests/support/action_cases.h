// The action table of a form in case files: what each key does, what the menus offer, what the help says.
//
//   keys Alt+L,b     what has changed, one line a thing
//   do NAME          a row of a menu or a button
//   plan WORD ...    what the next dialog is answered: CONTROL=VALUE, the name of a button, keys
//   yes TEXT         the next question, which holds this text, is answered yes
//   menu NAME [TEXT] its rows, or those with that text: "x" marked, "-" not enabled, "|" a line above
//   help
//   walk             every key of the table, each on a fresh form; * is the key's own letter or digit
//   deaf             the same, but only what has changed something
#pragma once

#include <cctype>
#include <map>
#include <string>
#include <vector>

#include "host/help.h"
#include "host/panel.h"
#include "host/wait.h"
#include "support/cases.h"
#include "support/test_host.h"

namespace qrn::test {

class ActionCases : public CaseTest {
 protected:
  using State = std::map<std::string, std::string>;

  ActionCases() {
    on("keys", [this](const Words& words) { tellChange([&] { host::strikeKeys(*form(), words.rest(0)); }); });
    on("do", [this](const Words& words) {
      tellChange([&] { EXPECT_TRUE(form()->actions().perform(words.rest(0))) << words.rest(0); });
    });
    on("plan", [this](const Words& words) { plan_ = words; });
    on("yes", [this](const Words& words) { testHost().expectMsgBox(words.rest(0), host::Answer::yes); });
    on("menu", [this](const Words& words) { tellMenu(words[0], words.rest(1)); });
    on("help", [this](const Words&) {
      for (const host::KeyHelp& row : form()->actions().help()) tell(row.keys + ": " + row.caption);
    });
    on("walk", [this](const Words&) { walk(true); });
    on("deaf", [this](const Words&) { walk(false); });
  }

  virtual host::Form* form() = 0;  // null once it has gone
  virtual void renew() = 0;        // the form as it comes up
  virtual State state() = 0;       // what keys can change, as words; asked while the form stands
  virtual TestHost& testHost() = 0;
  virtual std::string picture() { return ""; }  // of a form that is `watching`, whose changes are painted

  host::FormRegistry::ViewMaker watching() {
    struct Watch : host::FormView {
      explicit Watch(ActionCases& told) : told_(told) {}
      void refresh() override { told_.painted_ = true; }
      void bringToFront() override { told_.tell("in front"); }
      ActionCases& told_;
    };
    painted_ = false;
    return [this](host::Form&) { return std::make_unique<Watch>(*this); };
  }

  static std::string rowOf(const host::Panel& list) {  // the one at hand
    return list.current() < 0 ? "" : list.rows()[static_cast<std::size_t>(list.current())].cells[0];
  }
  void tellChange(const std::function<void()>& act) {
    for (const std::string& line : change(act)) tell(line);
  }

 private:
  std::vector<std::string> change(const std::function<void()>& act) {
    ScriptedDialogs& dialogs = testHost().dialogs;
    dialogs.answersAll = true;
    dialogs.asked.clear();
    std::vector<std::string> lines;
    testHost().at(kReading, [&] { answerDialog(lines); });
    const State before = state();
    const std::string was = picture();
    if (!was.empty())
      painted_ = false;
    act();
    host::waitUntil([] { return false; }, 2 * kReading);
    for (const std::string& question : dialogs.asked) lines.push_back("asked " + cut(escaped(question)));
    if (form() == nullptr) {
      lines.emplace_back("gone");
      return lines;
    }
    for (const auto& [what, now] : state())
      if (before.at(what) != now)
        lines.push_back(what + ": " + now);
    if (picture() != was && !painted_)
      lines.emplace_back("not painted");
    return lines;
  }

  static std::string cut(const std::string& text) {
    return text.size() <= kLongest ? text : text.substr(0, kLongest) + "...";
  }

  // A dialog that came up is told; then it gets what was planned for it, else Esc.
  void answerDialog(std::vector<std::string>& lines) {
    for (const std::string& name : testHost().forms.loadedNames()) {
      auto* dialog = dynamic_cast<host::ControlForm*>(testHost().forms.find(name));
      if (dialog == nullptr || !dialog->visible)
        continue;
      lines.push_back("dialog " + dialog->title);
      for (const std::string& word : std::exchange(plan_, {"Esc"})) {
        const std::size_t equals = word.find('=');
        const host::Control* control = dialog->find(word.substr(0, equals));
        if (control == nullptr)
          host::strikeKeys(*dialog, word);
        else if (equals == word.npos)
          control->pressed();
        else if (const std::string problem = host::give(*control, word.substr(equals + 1)); !problem.empty())
          lines.push_back(problem);
      }
      return;
    }
  }

  // The key's own letter or digit, where it stands as a word.
  static std::string withoutKey(std::string text, const std::string& key) {
    const char own = key.back();
    if (key.size() >= 2 && key[key.size() - 2] != '+')
      return text;
    for (std::size_t i = 1; i < text.size(); ++i)
      if (text[i] == own && text[i - 1] == ' ' && (i + 1 == text.size() || !std::isalnum(text[i + 1])))
        text[i] = '*';
    return text;
  }

  void tellMenu(const std::string& name, const std::string& part) {
    for (const host::MenuRow& row : form()->actions().menu(name)) {
      const std::string caption = (row.group.empty() ? "" : row.group + " > ") + row.caption;
      if (caption.find(part) != std::string::npos)
        tell(std::string(row.separated ? "| " : "") + (row.checked ? "x " : "") + (row.enabled ? "" : "- ") +
             caption + (row.key.empty() ? "" : "   " + row.key));
    }
  }

  // Neighbouring keys of a row that change the same stand in one line.
  void walk(bool all) {
    renew();
    const host::ActionTable table = form()->actions();
    for (const host::Action& row : table.all()) {
      std::string keys, last;
      const auto flush = [&] {
        if (!keys.empty() && (all || !last.empty()))
          tell(keys + " " + row.name + (last.empty() ? ": nothing" : last));
        keys.clear();
      };
      for (const host::KeyStroke& stroke : row.keys) {
        renew();
        const std::string key = host::keyName(stroke);
        std::string changed;
        for (const std::string& line : change([&] { host::strikeKeys(*form(), key); }))
          changed += "; " + withoutKey(line, key);
        if (changed != last)
          flush();
        keys += (keys.empty() ? "" : ",") + key;
        last = changed;
      }
      flush();
    }
  }

  std::vector<std::string> plan_{"Esc"};
  bool painted_ = true;

  static constexpr double kReading = 0.002;  // seconds until a dialog that came up is answered
  static constexpr std::size_t kLongest = 100;
};

}  // namespace qrn::test

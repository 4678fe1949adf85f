// Questions to the person at the machine. One narrow interface; the desktop translates, tests script the
// answers.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace qrn::host {

struct MenuRow;

enum class Buttons { ok, okCancel, yesNo, yesNoCancel };
enum class Icon { none, information, question, exclamation, critical };
enum class Answer { ok, cancel, yes, no };

// The answer that changes least. Esc and the close button always give it.
constexpr Answer safeAnswer(Buttons buttons) {
  switch (buttons) {
    case Buttons::okCancel:
    case Buttons::yesNoCancel:
      return Answer::cancel;
    case Buttons::yesNo:
      return Answer::no;
    case Buttons::ok:
      break;
  }
  return Answer::ok;
}

struct FileQuestion {
  bool save = false;
  std::string folder;
  std::string name;
  std::string filter;  // "description|pattern", the description may itself hold the pattern
  std::string title;
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // `enter` is the answer that Enter takes; a question that does not name it gets the safe one. What
  // deletes or overwrites is never named.
  virtual Answer MsgBox(const std::string& text, const std::string& title, Buttons buttons = Buttons::ok,
                        Icon icon = Icon::none, std::optional<Answer> enter = std::nullopt) = 0;
  virtual std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                              const std::string& preset = "") = 0;
  virtual std::optional<std::string> FileDialog(const FileQuestion& question) = 0;
  // A pop-up menu: the name of the row that was chosen, nothing when none was. Where nobody can choose, none
  // is shown.
  virtual std::optional<std::string> Menu(const std::vector<MenuRow>& rows, bool atMouse) {
    (void)rows;
    (void)atMouse;
    return std::nullopt;
  }
  // Tells the facilitator what a step that takes time is at; the room sees no word of it. "": it is over.
  virtual void Info(const std::string& line) = 0;
};

inline constexpr const char* kTitle = "quorin matrix";

}  // namespace qrn::host

// Questions to the person at the machine as windows. Each waits inside host::waitUntil, so votes and timers
// go on while a question stands.
#pragma once

#include <functional>
#include <memory>

#include "host/dialogs.h"

class QWidget;

namespace qrn::qt {

class WaitLine;

class QtDialogs : public host::Dialogs {
 public:
  // `parent` gives the window that a question stands over at that moment; it may give null.
  explicit QtDialogs(std::function<QWidget*()> parent = {});
  ~QtDialogs() override;
  host::Answer MsgBox(const std::string& text, const std::string& title, host::Buttons buttons,
                      host::Icon icon, std::optional<host::Answer> enter) override;
  std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                      const std::string& preset) override;
  std::optional<std::string> FileDialog(const host::FileQuestion& question) override;
  std::optional<std::string> Menu(const std::vector<host::MenuRow>& rows, bool atMouse) override;
  void Info(const std::string& line) override;
  // Who is told the lines of Info: the facilitator, not the room.
  void setStatusLine(std::function<void(const std::string& line)> say) { say_ = std::move(say); }
  // Why a file may not be written, "" when it may: a file chosen for saving is asked for again until it may.
  void setWhyNotOverwritten(std::function<std::string(const std::string& file)> why) {
    whyNot_ = std::move(why);
  }

 private:
  QWidget* parent() const;
  std::optional<std::string> chooseFile(const host::FileQuestion& question);
  std::function<QWidget*()> parent_;
  std::function<void(const std::string&)> say_;
  std::function<std::string(const std::string&)> whyNot_;
  std::unique_ptr<WaitLine> waitLine_;
};

}  // namespace qrn::qt

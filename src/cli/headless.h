// The neighbours of a run without a window: a program that has the deck open at one slide with a show
// "running", and dialogs that tell their text on the terminal and take the answer that loses nothing.
#pragma once

#include <string>

#include "host/dialogs.h"
#include "host/presentation.h"

namespace qrn::cli {

class HeadlessProgram : public host::PresentationProgram {
 public:
  HeadlessProgram(host::Presentation& presentation, int slide) : presentation_(presentation) {
    view_.at = slide;
  }
  bool Running() const override { return true; }
  host::Presentation* ActivePresentation() override { return &presentation_; }
  int SlideShowWindowsCount() const override { return 1; }
  host::View* SlideShowView() override { return &view_; }
  host::View* ActiveWindowView() override { return &view_; }
  std::string AddInPath() const override { return presentation_.path(); }
  void SendKeysToShow(std::string_view) override {}

 private:
  struct OneSlide : host::View {
    int SlideIndex() const override { return at; }
    void GotoSlide(int index) override { at = index; }
    int at = 1;
  };
  host::Presentation& presentation_;
  OneSlide view_;
};

// Messages go to standard error. A question gets the safe answer, which keeps everything as it stands.
class TerminalDialogs : public host::Dialogs {
 public:
  host::Answer MsgBox(const std::string& text, const std::string& title, host::Buttons buttons,
                      host::Icon icon, std::optional<host::Answer> enter) override;
  std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                      const std::string& preset) override;
  std::optional<std::string> FileDialog(const host::FileQuestion& question) override;
  void Info(const std::string& line) override;

  int told = 0;  // messages shown so far
};

}  // namespace qrn::cli

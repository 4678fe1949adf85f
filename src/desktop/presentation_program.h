// The presentation program as the logic sees it: the open deck, the deck window and the slide show.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "host/presentation.h"

namespace qrn::desktop {

class QtPresentationProgram : public host::PresentationProgram {
 public:
  struct Sources {
    std::function<host::Presentation*()> deck;
    std::function<host::View*()> show;        // null while no show runs
    std::function<host::View*()> editWindow;  // null when it is closed
  };
  QtPresentationProgram(Sources sources, std::string installFolder)
      : sources_(std::move(sources)), installFolder_(std::move(installFolder)) {}

  bool Running() const override { return sources_.editWindow() != nullptr; }
  host::Presentation* ActivePresentation() override { return sources_.deck(); }
  int SlideShowWindowsCount() const override { return sources_.show() ? 1 : 0; }
  host::View* SlideShowView() override { return sources_.show(); }
  host::View* ActiveWindowView() override { return sources_.editWindow(); }
  std::string AddInPath() const override { return installFolder_; }
  // The keys wait, as typed keys do, until the exercise that sends them has ended.
  void SendKeysToShow(std::string_view keys) override { keys_ += keys; }

  bool keysWait() const { return !keys_.empty(); }
  std::string takeKeys() { return std::exchange(keys_, {}); }

 private:
  Sources sources_;
  std::string installFolder_;
  std::string keys_;
};

}  // namespace qrn::desktop

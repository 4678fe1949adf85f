// The plain surface behind the voting forms, and the background they all share.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "host/forms.h"
#include "host/surface.h"
#include "host/wait.h"

namespace qrn {

// A picture file, or a colour running from top to bottom into another, or one colour.
struct Background {
  std::string file;
  std::int32_t start = 0, end = 0;  // colours, red lowest
  bool gradient = false;
  void paintOn(host::Surface& surface) const;
};

struct blankForm : host::Form {
  blankForm();
  void Form_Load() override;
  bool Form_QueryUnload(bool byUser) override { return !byUser; }  // it watches the show

  // Makes the background anew from the settings of `glo`: the vote slide without its shapes, else the picture
  // file, the gradient or the colour. The picture of a slide is drawn once in a run.
  void DoBackground();

  Background background;
  host::Surface surface;  // filled with the background
  // Looks after the slide show in a run that belongs to one; `showEnded` is called once when it has gone.
  host::Timer tmrCheck4ppt;
  std::function<void()> showEnded;

 private:
  bool exportSlide();
  void tmrCheck4ppt_Timer();

  int exportedSlideID_ = 0;
};

// Background of the loaded blankForm; without one what the settings say, short of the slide's picture.
Background currentBackground();

// Defines "blankForm" in the registry of the host.
void registerBlankForm();

}  // namespace qrn

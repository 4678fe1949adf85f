// Who has not voted yet.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/wait.h"

namespace qrn {

struct uctlKpadsNotVoted {
  uctlKpadsNotVoted();

  void BeginChecking(bool on);  // true starts the check timer anew
  void ShowKeypadsNotVoted();   // one check; also the timer's tick
  void forceRefresh();

  double LabelWidth = 0;  // twips, of the caption as measured
  std::string title = "Waiting for...";
  std::string Caption;
  bool Visible = false;
  int waitedFor = 0;
  std::vector<std::string> labels;      // of those waited for, as many as are to be named
  std::function<void()> showRequested;  // few enough are missing: the host shows this control
  std::function<void()> changed;        // caption and size are new

 private:
  host::Timer tmr_checkKeypadsNotVotedPopUp;
  bool refreshForced_ = false;
};

}  // namespace qrn

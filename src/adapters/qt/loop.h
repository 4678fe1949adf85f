// The message loop: one yield drains the pumps (link texts and the like), then delivers keys, clicks and
// paints.
#pragma once

#include "host/wait.h"

namespace qrn::qt {

class QtLoop : public host::PumpedLoop {
 public:
  void yield() override;
  void sleep(int milliseconds) override;
};

}  // namespace qrn::qt

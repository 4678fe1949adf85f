// The message loop: one yield drains the pumps (link texts and the like), then delivers keys, clicks and
// paints.
#pragma once

#include <functional>
#include <vector>

#include "host/wait.h"

namespace qrn::qt {

class QtLoop : public host::Loop {
 public:
  void yield() override;
  void sleep(int milliseconds) override;
  // Called once in every yield, in the order of adding, on the main thread.
  void addPump(std::function<void()> pump) { pumps_.push_back(std::move(pump)); }

 private:
  std::vector<std::function<void()>> pumps_;
};

}  // namespace qrn::qt

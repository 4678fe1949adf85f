// The message loop: one yield drains the pumps (link texts and the like), then delivers keys, clicks and
// paints.
#pragma once

#include <atomic>

#include "host/wait.h"

namespace qrn::qt {

class QtLoop : public host::PumpedLoop {
 public:
  void yield() override;
  void sleep(int milliseconds) override;
  void rest(std::optional<std::int64_t> microseconds) override;
  // From any thread: something waits for a pump. Ends the rest at hand, or the next one at once.
  void wake();

 private:
  std::atomic<bool> woken_ = false;
};

}  // namespace qrn::qt

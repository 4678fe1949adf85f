// Waiting: the one place that sleeps, and the timers that tick inside it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qrn::host {

// The message loop of the running program. `yield` delivers what has arrived (keys, clicks, link texts) and
// returns; `sleep` lets time pass without delivering anything; `rest` blocks until something arrives, at most
// for so long (nothing: for ever), and may deliver it.
class Loop {
 public:
  virtual ~Loop() = default;
  virtual void yield() = 0;
  virtual void sleep(int milliseconds) = 0;
  virtual void rest(std::optional<std::int64_t> /*microseconds*/) { sleep(1); }
};

// A loop with pumps: what is to be called once in every yield, in the order of adding, on the main thread.
class PumpedLoop : public Loop {
 public:
  void addPump(std::function<void()> pump) { pumps_.push_back(std::move(pump)); }

 protected:
  void runPumps() {
    const std::vector<std::function<void()>> round =
        pumps_;  // one that is added meanwhile waits for the next yield
    for (const auto& pump : round) pump();
  }

 private:
  std::vector<std::function<void()>> pumps_;
};

// A timer in the classic manner: off until enabled, ticks after each interval until disabled. It registers
// itself for its lifetime and ticks only inside DoEvents().
class Timer {
 public:
  Timer(int intervalMs, std::function<void()> tick);
  ~Timer();
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;
  void setEnabled(bool enabled);
  bool enabled() const { return enabled_; }
  void setInterval(int milliseconds);  // 0 keeps the timer silent
  int interval() const { return interval_; }

 private:
  friend void DoEvents();
  friend std::optional<std::int64_t> untilNextTick();
  int interval_;
  std::function<void()> tick_;
  bool enabled_ = false;
  std::int64_t due_ = 0;
};

// One yield to the message loop: delivers events, then ticks the timers that are due.
void DoEvents();

// Microseconds until the first enabled timer is due, 0 when one is overdue; nothing while none is enabled.
std::optional<std::int64_t> untilNextTick();

// Sleeps 1 ms and yields until `condition` holds. With a limit it gives up after that many seconds and
// returns false; without one it returns true. Callers check their state again afterwards.
bool waitUntil(const std::function<bool()>& condition, double limitSeconds = 0);

}  // namespace qrn::host

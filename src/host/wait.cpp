#include "host/wait.h"

#include <algorithm>
#include <vector>

#include "host/host.h"
#include "host/system.h"

namespace qrn::host {

namespace {

std::vector<Timer*>& timers() {
  static std::vector<Timer*> all;
  return all;
}

std::int64_t nowMicroseconds() {
  return host().clock->microseconds();
}

}  // namespace

Timer::Timer(int intervalMs, std::function<void()> tick) : interval_(intervalMs), tick_(std::move(tick)) {
  timers().push_back(this);
}

Timer::~Timer() {
  std::erase(timers(), this);
}

void Timer::setEnabled(bool on) {
  if (on && !enabled_)
    due_ = nowMicroseconds() + std::int64_t{1000} * interval_;
  enabled_ = on;
}

void Timer::setInterval(int milliseconds) {
  interval_ = milliseconds;
  if (enabled_)
    due_ = nowMicroseconds() + std::int64_t{1000} * interval_;
}

void DoEvents() {
  host().loop->yield();
  const std::int64_t now = nowMicroseconds();
  const std::vector<Timer*> round = timers();  // a tick may add or remove timers
  for (Timer* timer : round) {
    if (std::find(timers().begin(), timers().end(), timer) == timers().end())
      continue;
    if (!timer->enabled_ || timer->interval_ <= 0 || timer->due_ > now)
      continue;
    timer->due_ = now + std::int64_t{1000} * timer->interval_;
    timer->tick_();
  }
}

std::optional<std::int64_t> untilNextTick() {
  std::optional<std::int64_t> first;
  for (const Timer* timer : timers())
    if (timer->enabled_ && timer->interval_ > 0 && (!first || timer->due_ < *first))
      first = timer->due_;
  return first ? std::optional(std::max<std::int64_t>(0, *first - nowMicroseconds())) : std::nullopt;
}

bool waitUntil(const std::function<bool()>& condition, double limitSeconds) {
  const std::int64_t start = nowMicroseconds();
  while (!condition()) {
    if (limitSeconds > 0 && static_cast<double>(nowMicroseconds() - start) > limitSeconds * 1e6)
      return false;
    host().loop->sleep(1);
    DoEvents();
  }
  return true;
}

}  // namespace qrn::host

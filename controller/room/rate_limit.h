// How often one phone may speak.
#pragma once

#include <algorithm>
#include <cstdint>

namespace qrn::controller {

class RateLimit {
 public:
  // A burst of `burst` frames, refilled by `perSecond`.
  RateLimit(double burst, double perSecond) : burst_(burst), perSecond_(perSecond), left_(burst) {}
  bool allows(std::int64_t nowMs) {
    if (lastMs_ != 0)
      left_ = std::min(burst_, left_ + perSecond_ * static_cast<double>(nowMs - lastMs_) / 1000.0);
    lastMs_ = nowMs;
    if (left_ < 1) {
      ++refused_;
      return false;
    }
    left_ -= 1;
    return true;
  }
  long refused() const { return refused_; }

 private:
  double burst_;
  double perSecond_;
  double left_;
  std::int64_t lastMs_ = 0;
  long refused_ = 0;
};

}  // namespace qrn::controller

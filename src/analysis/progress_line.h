// The status line of a long step: the outermost one shows its text and takes it away, the ones inside keep
// still.
#pragma once

#include <string>

#include "host/dialogs.h"
#include "host/host.h"

namespace qrn {

class ProgressLine {
 public:
  explicit ProgressLine(const std::string& text) {
    if (depth_++ == 0)
      show(text);
  }
  ~ProgressLine() {
    if (--depth_ == 0)
      show("");
  }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

 private:
  static void show(const std::string& text) {
    if (host::host().dialogs != nullptr)
      host::host().dialogs->Info(text);
  }
  static inline int depth_ = 0;
};

}  // namespace qrn

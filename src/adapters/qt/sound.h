#pragma once

#include "host/system.h"

namespace qrn::qt {

// Sounds the machine's alert for a sound file that is there. A file that is missing, or a machine without a
// sound system, stays silent: a vote never waits for its sound.
class QtSound : public host::Sound {
 public:
  void play(const std::string& file) override;
};

}  // namespace qrn::qt

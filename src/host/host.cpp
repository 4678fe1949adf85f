#include "host/host.h"

namespace qrn::host {

Host& host() {
  static Host theHost;
  return theHost;
}

void endRun() {
  if (Run* run = host().run)
    run->endProgram();
}

}  // namespace qrn::host

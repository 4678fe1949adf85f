#include "host/host.h"

namespace qrn::host {

Host& host() {
  static Host theHost;
  return theHost;
}

}  // namespace qrn::host

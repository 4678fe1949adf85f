#pragma once

#include <vector>

#include "controller/room/addresses.h"

namespace qrn::controller {

// The network cards of this machine with their IPv4 addresses, as they are now.
std::vector<NetworkCard> networkCards();

// A socket that can be read when a card, an address or a route has changed; -1 when the system gives none.
int networkWatch();

}  // namespace qrn::controller

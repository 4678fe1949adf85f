// What the system tells of network cards.
#pragma once

#include <istream>
#include <map>
#include <string>
#include <vector>

#include "controller/room/addresses.h"

namespace qrn::controller {

// A card without its addresses and route; `flags` are those of the interface (IFF_...), `folder` is its own
// below /sys/class/net, with "/" at its end.
NetworkCard cardOf(const std::string& name, unsigned flags, const std::string& folder);

// Metrics of the default routes, by card, the smallest of each; from the table of /proc/net/route.
std::map<std::string, long> defaultRoutes(std::istream& table);

// The network cards of this machine with their IPv4 addresses, as they are now.
std::vector<NetworkCard> networkCards();

}  // namespace qrn::controller

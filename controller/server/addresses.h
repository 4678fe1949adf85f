// Under which addresses this machine can be reached by the phones of the room.
#pragma once

#include <string>
#include <vector>

namespace qrn::controller {

// IPv4 addresses of the network cards that are up, the likeliest first: the one that the default route uses,
// then private networks, then others; without loopback and without the bridges of containers and machines.
std::vector<std::string> lanAddresses();

}  // namespace qrn::controller

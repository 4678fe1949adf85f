// Under which addresses the phones of the room can reach this machine.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/controller.h"

namespace qrn::controller {

// A network card, real or made by a program, as the system tells it.
struct NetworkCard {
  enum class Kind { ethernet, wifi, bridge, tunnel };
  std::string name;
  Kind kind = Kind::ethernet;
  bool up = true, running = true;  // running: with a carrier, a cable or a Wi-Fi that it has joined
  bool loopback = false, pointToPoint = false;
  bool hardware = false;               // a device stands behind it
  std::vector<std::string> addresses;  // IPv4
  std::optional<long> routeMetric;     // of its default route, nothing without one
};

// The likeliest first: real cards before others, private networks before public ones, then whoever has the
// default route, then Wi-Fi before cable. Cards that are down or have no carrier, loopback and addresses that
// a card gave itself are left out.
std::vector<host::JoinAddress> joinCandidates(const std::vector<NetworkCard>& cards);

inline constexpr const char* everyAddress = "0.0.0.0";  // to listen on

// The addresses to choose from while the server listens on `bind`: `given` first when it is not "", then the
// candidates that are listened on.
std::vector<host::JoinAddress> joinAddresses(const std::string& bind, const std::string& given,
                                             const std::vector<NetworkCard>& cards);
// The one at which phones are to join: the chosen one while it is there, else the first one when it is
// likely; "" when phones cannot reach this machine.
std::string joinHost(const std::vector<host::JoinAddress>& addresses, const std::string& chosen);

}  // namespace qrn::controller

#include "controller/room/addresses.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <string_view>
#include <tuple>

namespace qrn::controller {

namespace {

using Kind = NetworkCard::Kind;

// What programs call the cards that they make for tunnels, containers and machines inside this machine, and
// the system those for mobile networks.
constexpr std::string_view kUnlikelyNames[] = {"tun",   "tap",    "wg",      "ppp",    "ipsec", "tailscale",
                                               "zt",    "utun",   "wwan",    "docker", "veth",  "br-",
                                               "virbr", "vnet",   "vmnet",   "vbox",   "lxc",   "lxdbr",
                                               "cni",   "podman", "flannel", "cali",   "dummy", "ifb"};

bool begins(std::string_view text, std::string_view head) {
  return text.substr(0, head.size()) == head;
}

bool hasUnlikelyName(std::string_view name) {
  return std::any_of(std::begin(kUnlikelyNames), std::end(kUnlikelyNames),
                     [&](std::string_view head) { return begins(name, head); });
}

bool isLikely(const NetworkCard& card) {
  if (card.pointToPoint || card.kind == Kind::tunnel)
    return false;
  // A bridge may stand before a real card, which then has neither address nor route of its own.
  if (card.kind == Kind::bridge)
    return card.routeMetric.has_value();
  return !hasUnlikelyName(card.name);
}

// The four numbers of a dotted address; zeros when it is none.
std::array<int, 4> partsOf(std::string_view address) {
  std::array<int, 4> parts{};
  for (int& part : parts) {
    const char* end = std::from_chars(address.data(), address.data() + address.size(), part).ptr;
    address.remove_prefix(static_cast<std::size_t>(end - address.data()));
    address.remove_prefix(address.empty() ? 0 : 1);
  }
  return parts;
}

bool isPrivate(std::string_view address) {
  const auto [a, b, c, d] = partsOf(address);
  return a == 10 || (a == 192 && b == 168) || (a == 172 && b >= 16 && b < 32);
}

bool usable(const NetworkCard& card, std::string_view address) {
  return card.up && card.running && !card.loopback && !begins(address, "169.254.");
}

struct Ranked {
  host::JoinAddress address;
  std::tuple<bool, bool, bool, long, bool> rank;  // the smaller the better
};

}  // namespace

std::vector<host::JoinAddress> joinCandidates(const std::vector<NetworkCard>& cards) {
  std::vector<Ranked> ranked;
  for (const NetworkCard& card : cards)
    for (const std::string& address : card.addresses)
      if (usable(card, address)) {
        const bool likely = isLikely(card);
        ranked.push_back(
            {{address, card.name, likely},
             {!likely, !card.hardware, !isPrivate(address),
              card.routeMetric.value_or(std::numeric_limits<long>::max()), card.kind != Kind::wifi}});
      }
  std::stable_sort(ranked.begin(), ranked.end(),
                   [](const Ranked& a, const Ranked& b) { return a.rank < b.rank; });
  std::vector<host::JoinAddress> candidates;
  for (Ranked& each : ranked) candidates.push_back(std::move(each.address));
  return candidates;
}

std::vector<host::JoinAddress> joinAddresses(const std::string& bind, const std::string& given,
                                             const std::vector<NetworkCard>& cards) {
  std::vector<host::JoinAddress> addresses = joinCandidates(cards);
  std::erase_if(addresses, [&](const host::JoinAddress& each) {
    return each.host == given || (bind != everyAddress && each.host != bind);
  });
  for (host::JoinAddress& each : addresses)
    each.likely = each.likely || each.host == bind;  // asked for by name
  if (!given.empty())
    addresses.insert(addresses.begin(), {given, "", true});
  return addresses;
}

std::string joinHost(const std::vector<host::JoinAddress>& addresses, const std::string& chosen) {
  for (const host::JoinAddress& each : addresses)
    if (each.host == chosen)
      return chosen;
  return addresses.empty() || !addresses.front().likely ? "" : addresses.front().host;
}

}  // namespace qrn::controller

#include "controller/server/addresses.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <initializer_list>

namespace qrn::controller {

namespace {

std::string text(const in_addr& address) {
  char buffer[INET_ADDRSTRLEN] = "";
  inet_ntop(AF_INET, &address, buffer, sizeof buffer);
  return buffer;
}

// The address that the system would send from; connecting a datagram socket sends nothing.
std::string defaultRouteAddress() {
  const int probe = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (probe < 0)
    return "";
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(9);
  inet_pton(AF_INET, "192.0.2.1", &address.sin_addr);  // a network kept for examples
  socklen_t length = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  const bool known = connect(probe, generic, length) == 0 && getsockname(probe, generic, &length) == 0;
  close(probe);
  return known ? text(address.sin_addr) : "";
}

bool isVirtual(const char* name) {
  for (const char* head : {"docker", "veth", "br-", "virbr", "vmnet", "vboxnet", "lxc", "cni", "podman"})
    if (std::strncmp(name, head, std::strlen(head)) == 0)
      return true;
  return false;
}

bool isPrivate(const std::string& address) {
  if (address.rfind("192.168.", 0) == 0 || address.rfind("10.", 0) == 0)
    return true;
  in_addr parsed{};
  inet_pton(AF_INET, address.c_str(), &parsed);
  return (ntohl(parsed.s_addr) & 0xFFF00000U) == 0xAC100000U;  // 172.16.0.0/12
}

}  // namespace

std::vector<std::string> lanAddresses() {
  std::vector<std::string> found;
  ifaddrs* cards = nullptr;
  if (getifaddrs(&cards) != 0)
    return found;
  for (const ifaddrs* card = cards; card != nullptr; card = card->ifa_next) {
    if (card->ifa_addr == nullptr || card->ifa_addr->sa_family != AF_INET ||
        (card->ifa_flags & IFF_UP) == 0U || (card->ifa_flags & IFF_LOOPBACK) != 0U ||
        isVirtual(card->ifa_name))
      continue;
    const std::string address = text(reinterpret_cast<const sockaddr_in*>(card->ifa_addr)->sin_addr);
    if (address.rfind("169.254.", 0) != 0)
      found.push_back(address);
  }
  freeifaddrs(cards);
  const std::string route = defaultRouteAddress();
  const auto rank = [&](const std::string& address) {
    return address == route ? 0 : isPrivate(address) ? 1 : 2;
  };
  std::stable_sort(found.begin(), found.end(),
                   [&](const std::string& a, const std::string& b) { return rank(a) < rank(b); });
  return found;
}

}  // namespace qrn::controller

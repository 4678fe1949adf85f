#include "controller/room/system_cards.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <netinet/in.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

namespace qrn::controller {

namespace {

NetworkCard::Kind kindOf(const std::string& folder) {
  const auto has = [&](const char* name) { return std::filesystem::exists(folder + name); };
  int type = ARPHRD_ETHER;
  std::ifstream(folder + "type") >> type;
  if (has("bridge"))
    return NetworkCard::Kind::bridge;
  if (has("wireless") || has("phy80211"))
    return NetworkCard::Kind::wifi;
  if (has("tun_flags") || type != ARPHRD_ETHER)
    return NetworkCard::Kind::tunnel;
  return NetworkCard::Kind::ethernet;
}

std::string dotted(const sockaddr& address) {
  char buffer[INET_ADDRSTRLEN] = "";
  inet_ntop(AF_INET, &reinterpret_cast<const sockaddr_in&>(address).sin_addr, buffer, sizeof buffer);
  return buffer;
}

}  // namespace

NetworkCard cardOf(const std::string& name, unsigned flags, const std::string& folder) {
  NetworkCard card;
  card.name = name;
  card.kind = kindOf(folder);
  card.up = (flags & IFF_UP) != 0U;
  card.running = (flags & IFF_RUNNING) != 0U;
  card.loopback = (flags & IFF_LOOPBACK) != 0U;
  card.pointToPoint = (flags & IFF_POINTOPOINT) != 0U;
  card.hardware = std::filesystem::exists(folder + "device");
  return card;
}

std::map<std::string, long> defaultRoutes(std::istream& table) {
  std::map<std::string, long> routes;
  std::string line;
  std::getline(table, line);  // the heads of the columns
  while (std::getline(table, line)) {
    std::istringstream words(line);
    std::string card, target, gateway, flags, references, uses, mask;
    long metric = 0;
    if (words >> card >> target >> gateway >> flags >> references >> uses >> metric >> mask &&
        target == "00000000" && mask == "00000000") {
      const auto [at, first] = routes.emplace(card, metric);
      at->second = std::min(at->second, metric);
    }
  }
  return routes;
}

std::vector<NetworkCard> networkCards() {
  ifaddrs* list = nullptr;
  const bool told = getifaddrs(&list) == 0;
  const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> kept(told ? list : nullptr, &freeifaddrs);
  std::ifstream table("/proc/net/route");
  const std::map<std::string, long> routes = defaultRoutes(table);
  std::vector<NetworkCard> cards;
  for (const ifaddrs* each = kept.get(); each != nullptr; each = each->ifa_next) {
    if (each->ifa_addr == nullptr || each->ifa_addr->sa_family != AF_INET)
      continue;
    const std::string name = each->ifa_name;
    cards.push_back(cardOf(name, each->ifa_flags, "/sys/class/net/" + name + "/"));
    cards.back().addresses = {dotted(*each->ifa_addr)};
    if (const auto route = routes.find(name); route != routes.end())
      cards.back().routeMetric = route->second;
  }
  return cards;
}

}  // namespace qrn::controller

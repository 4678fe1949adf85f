#include "controller/server/network_cards.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

namespace qrn::controller {

namespace {

std::string dotted(const sockaddr& address) {
  char buffer[INET_ADDRSTRLEN] = "";
  inet_ntop(AF_INET, &reinterpret_cast<const sockaddr_in&>(address).sin_addr, buffer, sizeof buffer);
  return buffer;
}

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

NetworkCard cardOf(const ifaddrs& told) {
  const std::string folder = std::string("/sys/class/net/") + told.ifa_name + "/";
  NetworkCard card;
  card.name = told.ifa_name;
  card.kind = kindOf(folder);
  card.up = (told.ifa_flags & IFF_UP) != 0U;
  card.running = (told.ifa_flags & IFF_RUNNING) != 0U;
  card.loopback = (told.ifa_flags & IFF_LOOPBACK) != 0U;
  card.pointToPoint = (told.ifa_flags & IFF_POINTOPOINT) != 0U;
  card.hardware = std::filesystem::exists(folder + "device");
  return card;
}

// Metrics of the default routes, by card; the smallest of each.
std::map<std::string, long> defaultRoutes() {
  std::map<std::string, long> routes;
  std::ifstream table("/proc/net/route");
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

}  // namespace

std::vector<NetworkCard> networkCards() {
  std::vector<NetworkCard> cards;
  ifaddrs* all = nullptr;
  if (getifaddrs(&all) != 0)
    return cards;
  const std::map<std::string, long> routes = defaultRoutes();
  for (const ifaddrs* each = all; each != nullptr; each = each->ifa_next) {
    if (each->ifa_addr == nullptr || each->ifa_addr->sa_family != AF_INET)
      continue;
    NetworkCard card = cardOf(*each);
    card.addresses = {dotted(*each->ifa_addr)};
    if (const auto route = routes.find(card.name); route != routes.end())
      card.routeMetric = route->second;
    cards.push_back(std::move(card));
  }
  freeifaddrs(all);
  return cards;
}

int networkWatch() {
  const int watch = socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE);
  sockaddr_nl address{};
  address.nl_family = AF_NETLINK;
  address.nl_groups = RTMGRP_LINK | RTMGRP_IPV4_IFADDR | RTMGRP_IPV4_ROUTE;
  if (watch >= 0 && bind(watch, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0)
    return watch;
  if (watch >= 0)
    close(watch);
  return -1;
}

}  // namespace qrn::controller

#include "controller/server/network_cards.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <fstream>
#include <map>
#include <string>

#include "controller/room/system_cards.h"

namespace qrn::controller {

namespace {

std::string dotted(const sockaddr& address) {
  char buffer[INET_ADDRSTRLEN] = "";
  inet_ntop(AF_INET, &reinterpret_cast<const sockaddr_in&>(address).sin_addr, buffer, sizeof buffer);
  return buffer;
}

}  // namespace

std::vector<NetworkCard> networkCards() {
  std::vector<NetworkCard> cards;
  ifaddrs* all = nullptr;
  if (getifaddrs(&all) != 0)
    return cards;
  std::ifstream table("/proc/net/route");
  const std::map<std::string, long> routes = defaultRoutes(table);
  for (const ifaddrs* each = all; each != nullptr; each = each->ifa_next) {
    if (each->ifa_addr == nullptr || each->ifa_addr->sa_family != AF_INET)
      continue;
    NetworkCard card =
        cardOf(each->ifa_name, each->ifa_flags, std::string("/sys/class/net/") + each->ifa_name + "/");
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

#include "controller/room/system_cards.h"

#include <net/if.h>
#include <net/if_arp.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
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

}  // namespace qrn::controller

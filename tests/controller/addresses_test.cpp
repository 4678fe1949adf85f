#include "controller/room/addresses.h"

#include <gtest/gtest.h>

namespace qrn::controller {
namespace {

using Kind = NetworkCard::Kind;

NetworkCard card(const char* name, Kind kind, const char* address, std::optional<long> metric = {}) {
  NetworkCard made;
  made.name = name;
  made.kind = kind;
  made.hardware = kind == Kind::wifi || std::string(name).find("en") == 0;
  made.addresses = {address};
  made.routeMetric = metric;
  return made;
}
NetworkCard without(NetworkCard made, bool NetworkCard::*flag) {
  made.*flag = false;
  return made;
}
NetworkCard with(NetworkCard made, bool NetworkCard::*flag) {
  made.*flag = true;
  return made;
}

TEST(Addresses, TheRoomsNetworkComesFirstAndWhatPhonesHardlyReachLast) {
  const NetworkCard wifi = card("wlp2s0", Kind::wifi, "192.168.1.20", 600),
                    lo = with(card("lo", Kind::ethernet, "10.255.255.1"), &NetworkCard::loopback),
                    cable = card("enp3s0", Kind::ethernet, "10.1.2.3", 100),
                    vpn = card("wg0", Kind::tunnel, "10.8.0.3", 50),
                    tap = card("tap0", Kind::ethernet, "10.9.0.3", 40),
                    docker = card("docker0", Kind::bridge, "172.17.0.1"),
                    veth = card("veth12ab", Kind::ethernet, "172.17.0.9"),
                    modem = card("wwan0", Kind::ethernet, "10.64.0.7", 700);
  struct Case {
    const char* what;
    std::vector<NetworkCard> cards;
    std::vector<host::JoinAddress> wanted;
  };
  const std::vector<Case> cases{
      {"nothing but the machine itself", {lo}, {}},
      {"one Wi-Fi", {lo, wifi}, {{"192.168.1.20", "wlp2s0", true}}},
      {"a VPN that takes the default route",
       {lo, vpn, wifi},
       {{"192.168.1.20", "wlp2s0", true}, {"10.8.0.3", "wg0", false}}},
      {"a VPN on a card that looks like Ethernet",
       {tap, wifi},
       {{"192.168.1.20", "wlp2s0", true}, {"10.9.0.3", "tap0", false}}},
      {"a card that ends at another one",
       {with(card("sl0", Kind::ethernet, "10.7.0.1"), &NetworkCard::pointToPoint)},
       {{"10.7.0.1", "sl0", false}}},
      {"only a VPN, a modem and containers",
       {docker, veth, vpn, modem},
       {{"10.8.0.3", "wg0", false},
        {"10.64.0.7", "wwan0", false},
        {"172.17.0.1", "docker0", false},
        {"172.17.0.9", "veth12ab", false}}},
      {"the cable has the better route",
       {wifi, cable},
       {{"10.1.2.3", "enp3s0", true}, {"192.168.1.20", "wlp2s0", true}}},
      {"no route at all: a hotspot of this machine before a cable",
       {card("enp3s0", Kind::ethernet, "192.168.7.1"), card("wlp2s0", Kind::wifi, "10.42.0.1")},
       {{"10.42.0.1", "wlp2s0", true}, {"192.168.7.1", "enp3s0", true}}},
      {"private before public, real before made up",
       {card("bond0", Kind::ethernet, "192.168.9.9", 1), card("enp1s0", Kind::ethernet, "172.32.0.1", 1),
        card("enp2s0", Kind::ethernet, "172.31.255.1")},
       {{"172.31.255.1", "enp2s0", true}, {"172.32.0.1", "enp1s0", true}, {"192.168.9.9", "bond0", true}}},
      {"a bridge before a real card has the route",
       {card("br-lan", Kind::bridge, "192.168.1.5", 0), docker},
       {{"192.168.1.5", "br-lan", true}, {"172.17.0.1", "docker0", false}}},
      {"the card of a container",
       {card("eth0", Kind::ethernet, "172.18.0.2", 0)},
       {{"172.18.0.2", "eth0", true}}},
      {"down, without a carrier, without an address from the network",
       {without(wifi, &NetworkCard::up), without(cable, &NetworkCard::running),
        card("enp4s0", Kind::ethernet, "169.254.3.4")},
       {}}};
  for (const Case& c : cases) EXPECT_EQ(joinCandidates(c.cards), c.wanted) << c.what;
}

TEST(Addresses, AGivenOneAndTheChoiceGoBeforeTheLikeliest) {
  const std::vector<NetworkCard> cards{card("wlp2s0", Kind::wifi, "192.168.1.20", 600),
                                       card("wg0", Kind::tunnel, "10.8.0.3", 50)};
  const std::vector<NetworkCard> tunnel{cards[1]};
  struct Case {
    const char *bind, *given, *chosen;
    const std::vector<NetworkCard>& cards;
    const char* wanted;
  };
  const Case cases[] = {
      {everyAddress, "", "", cards, "192.168.1.20"},
      {everyAddress, "", "10.8.0.3", cards, "10.8.0.3"},
      {everyAddress, "", "10.8.0.3", tunnel, "10.8.0.3"},
      {everyAddress, "", "", tunnel, ""},
      {everyAddress, "", "192.168.1.99", cards, "192.168.1.20"},
      {everyAddress, "vote.local", "", tunnel, "vote.local"},
      {everyAddress, "vote.local", "192.168.1.20", cards, "192.168.1.20"},
      {"192.168.1.20", "", "10.8.0.3", cards, "192.168.1.20"},
      {"10.8.0.3", "", "", cards, "10.8.0.3"},
      {"127.0.0.1", "", "", cards, ""},
  };
  for (const Case& c : cases)
    EXPECT_EQ(joinHost(joinAddresses(c.bind, c.given, c.cards), c.chosen), c.wanted)
        << c.bind << " given " << c.given << " chosen " << c.chosen;
  EXPECT_EQ(joinAddresses(everyAddress, "10.8.0.3", cards).size(), 2U) << "none stands twice";
}

}  // namespace
}  // namespace qrn::controller

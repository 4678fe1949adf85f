#include "controller/room/addresses.h"

#include <net/if.h>

#include <sstream>

#include "controller/room/system_cards.h"
#include "support/cases.h"
#include "support/disk.h"

namespace qrn::controller {
namespace {

using test::Words;

class AddressTest : public test::CaseTest {
 protected:
  AddressTest() {
    // card NAME KIND ADDRESS [metric=N] [loopback] [point-to-point] [down] [no-carrier]
    on("card", [this](const Words& words) { cards.push_back(cardOf(words)); });
    // system FLAG ... / FILE ...: what the system tells of a card with these flags and files ("type=N" its
    // type)
    on("system", [this](const Words& words) {
      static const std::map<std::string, unsigned> known{
          {"up", IFF_UP}, {"running", IFF_RUNNING}, {"loopback", IFF_LOOPBACK}, {"point", IFF_POINTOPOINT}};
      const test::Folder folder;
      unsigned flags = 0;
      for (const std::string& word : words)
        if (const auto flag = known.find(word); flag != known.end())
          flags |= flag->second;
        else if (word.starts_with("type="))
          test::writeFile(folder.file("type"), word.substr(5));
        else if (word != "/")
          test::writeFile(folder.file(word), "");
      static const char* const kinds[] = {"ethernet", "wifi", "bridge", "tunnel"};
      const NetworkCard card = controller::cardOf("card", flags, folder.path() + "/");
      tell(card.name + " " + kinds[static_cast<int>(card.kind)] + (card.up ? " up" : "") +
           (card.running ? " running" : "") + (card.loopback ? " loopback" : "") +
           (card.pointToPoint ? " point" : "") + (card.hardware ? " hardware" : ""));
    });
    on("routes", [this](const Words& words) {
      std::istringstream table(words.rest(0));
      for (const auto& [card, metric] : defaultRoutes(table)) tell(card + " " + std::to_string(metric));
    });
    on("loopback", [this](const Words&) {
      for (const NetworkCard& card : networkCards())
        if (card.loopback)
          tell(card.name + " " + card.addresses.at(0));
    });
    on("no-cards", [this](const Words&) { cards.clear(); });
    on("candidates", [this](const Words&) {
      for (const host::JoinAddress& one : joinCandidates(cards)) tell(told(one));
    });
    // host BIND GIVEN CHOSEN: the addresses => the one to join at
    on("host", [this](const Words& words) {
      const auto addresses = joinAddresses(words[0], words[1], cards);
      std::string all;
      for (const host::JoinAddress& one : addresses) all += (all.empty() ? "" : "; ") + told(one);
      tell(all + " => " + joinHost(addresses, words[2]));
    });
  }
  static NetworkCard cardOf(const Words& words) {
    using Kind = NetworkCard::Kind;
    static const std::map<std::string, Kind> kinds{{"ethernet", Kind::ethernet},
                                                   {"wifi", Kind::wifi},
                                                   {"bridge", Kind::bridge},
                                                   {"tunnel", Kind::tunnel}};
    NetworkCard card;
    card.name = words[0];
    card.kind = kinds.at(words[1]);
    card.hardware = card.kind == Kind::wifi || card.name.starts_with("en");
    card.addresses = {words[2]};
    for (const std::string& word : words) {
      card.loopback |= word == "loopback";
      card.pointToPoint |= word == "point-to-point";
      card.up &= word != "down";
      card.running &= word != "no-carrier";
      if (word.starts_with("metric="))
        card.routeMetric = std::stol(word.substr(7));
    }
    return card;
  }
  static std::string told(const host::JoinAddress& one) {
    return one.host + (one.card.empty() ? "" : " on ") + one.card + (one.likely ? "" : ", hardly");
  }
  std::vector<NetworkCard> cards;
};

const bool kRegistered = test::registerCases<AddressTest>("Addresses", QUORIN_CASES "/addresses.case");

}  // namespace
}  // namespace qrn::controller

// A room without sockets, told in case files: what the program says and hears, what each phone is told.
#include "controller/room/room.h"

#include <algorithm>

#include "controller/room_options.h"

namespace qrn::controller {
namespace {

using test::Words;

// "T7" in a text stands for a token of 32 letters.
const std::string kZeros(31, '0');
std::string withTokens(std::string text) {
  for (std::size_t at = 0; (at = text.find('T', at)) != std::string::npos; ++at)
    if (at + 1 < text.size() && text[at + 1] >= '0' && text[at + 1] <= '9')
      text.replace(at, 2, kZeros + text[at + 1]);
  return text;
}

class RoomTest : public test::CaseTest {
 protected:
  RoomTest() {
    furnish({});
    on("furnish", [this](const Words& words) { furnish(test::roomOptions(words)); });
    on("program", [this](const Words& words) {
      frames = 0;
      tell("> " + room->programArrived(words.word(0)));
      fetch();
    });
    // rehearse [SETTING ...]: what the rehearsal keypads do, in a vote of its own, and after how many
    // milliseconds
    on("rehearse", [this](const Words& words) {
      if (!words.empty())
        vote(words);
      std::string all;
      for (const std::int64_t start = now.ms; const auto due = room->nextDue();) {
        now.ms = *due;
        room->rehearse();
        all += std::to_string(*due - start) + ": " + latest + " ";
      }
      take();
      tell(all);
    });
    on("gone", [this](const Words&) { room->programGone(); });
    on("say", [this](const Words& words) { room->fromProgram(words.rest(0)); });
    // vote SETTING ...: the settings, then what opens it; all that has come is acknowledged
    on("vote", [this](const Words& words) { vote(words); });
    on("ack", [this](const Words&) { acknowledge(); });
    on("deaf", [this](const Words&) { listening = false; });
    on("hear", [this](const Words&) { listening = true, fetch(); });
    on("phone", [this](const Words& words) {
      const PhoneId phone = static_cast<PhoneId>(words.number(0));
      if (words.word(1) == "gone")
        room->phoneGone(phone);
      else if (words.word(1) == "hurries")
        room->phoneTooFast(phone);
      else if (!room->phoneText(phone, withTokens(words.rest(1))))
        tell("not ours");
    });
    // seat PHONE TOKEN FORMER: it joins; the number that it is given
    on("seat", [this](const Words& words) {
      room->phoneText(static_cast<PhoneId>(words.number(0)), withTokens("join " + words.rest(1)));
      const std::string all = take(), word = "keypad=";
      const std::size_t at = all.find(word);
      tell(at == all.npos ? all.substr(all.find(' ') + 1)
                          : all.substr(at + word.size(), all.find('\\', at) - at - word.size()));
    });
    // presses VOTE PRESS ...: those of phone 1 that the program gets
    on("presses", [this](const Words& words) { presses(words); });
    on("later",
       [this](const Words& words) { now.ms += words.number(0), now.seconds += words.number(0) / 1000; });
    on("state", [this](const Words&) { tell(room->roster().stateText()); });
    on("known", [this](const Words& words) { room->roster().readState(withTokens(words.rest(0)), now); });
    on("range", [this](const Words& words) {
      const auto range = readRange(words.word(0));
      tell(range ? std::to_string(range->first) + " to " + std::to_string(range->second) : "no");
    });
    on("base", [this](const Words& words) { tell(readBase(words.word(0)) ? "yes" : "no"); });
  }
  void furnish(RoomOptions options) {
    RoomPorts ports;
    ports.programWaiting = [this] { fetch(); };
    ports.toPhone = [this](PhoneId phone, const SharedText& frame) {
      std::string shown = test::escaped(*frame);
      for (std::size_t at; (at = shown.find(kZeros)) != std::string::npos;)
        shown.replace(at, kZeros.size(), "T");
      tell(phone, ": ", shown);
    };
    ports.log = [this](const std::string& line) { tell("log: " + line); };
    ports.keypadGiven = [this](long keypad, const std::string&) { tell("keypad ", keypad, " given"); };
    ports.phonesChanged = [this] { tell(room->phoneCount(), " phones"); };
    ports.newToken = [this] { return withTokens("T" + std::to_string(tokens++)); };
    ports.now = [this] { return now; };
    room = std::make_unique<Room>(std::move(options), std::move(ports));
  }
  void vote(const std::vector<std::string>& settings) {
    for (const std::string& setting : settings) room->fromProgram(setting);
    for (const char* command : {"Clear", "StartVote"}) room->fromProgram(command);
    acknowledge();
  }
  void acknowledge() { room->fromProgram("Received=" + std::to_string(frames)); }
  void fetch() {
    while (auto frame = listening ? room->nextForProgram() : std::nullopt) {
      ++frames;
      tell("> " + test::escaped(*frame));
      latest = *frame;
    }
  }
  void presses(const Words& words) {
    std::string taken = "taken:";
    for (std::size_t i = 1; i < words.size(); ++i) {
      room->phoneText(1, "press " + words[0] + " " + words[i]);
      if (latest == "[" + words[0] + "],1;" + words[i])
        taken += " " + words[i];
    }
    take();
    tell(taken);
  }

  std::unique_ptr<Room> room;
  std::string latest;  // that the program got
  bool listening = true;
  std::size_t frames = 0;  // since the link was made
  Moment now{1'000'000, 1000};
  int tokens = 0;
};

const bool kRegistered = test::registerCases<RoomTest>("Room", QUORIN_CASES "/room.case");

}  // namespace
}  // namespace qrn::controller

// The room: one program, the phones, the rehearsal keypads, and the vote between them. Knows no socket.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "controller/room/outbox.h"
#include "controller/room/phone_text.h"
#include "controller/room/program_text.h"
#include "controller/room/rehearsal.h"
#include "controller/room/roster.h"
#include "controller/room/vote_state.h"

namespace qrn::controller {

using PhoneId = std::uint64_t;
using SharedText = std::shared_ptr<const std::string>;

struct RoomOptions {
  long lowest = 1;  // keypad numbers of the room
  long highest = 650;
  long rehearse = 0;  // keypads lowest .. lowest + rehearse - 1 vote by themselves, the others are for phones
  std::uint64_t seed = 1;
  bool hurry = false;
  int closePercent = 0;     // 0: votes close by the facilitator alone
  std::vector<Base> bases;  // empty: one base that holds the keypads there are
  std::map<long, std::string> names;
};

struct RoomPorts {
  std::function<void()> programWaiting;  // nextForProgram() has something
  std::function<void(PhoneId, const SharedText&)> toPhone;
  std::function<void(const std::string&)> log;
  std::function<void(long keypad, const std::string& token)> keypadGiven;
  std::function<void()> phonesChanged;  // another number of phones has joined
  std::function<std::string()> newToken;
  std::function<Moment()> now;
};

class Room {
 public:
  Room(RoomOptions options, RoomPorts ports);

  // A program has linked up; `instance` tells a program that comes back from another one. Presses kept for
  // the former go out again; the latter knows nothing of an open vote, which is closed. Returns the hello.
  std::string programArrived(const std::string& instance);
  void programGone();
  bool programLinked() const { return linked_; }
  void fromProgram(std::string_view text);
  void tellProgram(std::string text) { reply(std::move(text)); }  // nothing while no program is linked
  std::optional<std::string> nextForProgram() { return outbox_.next(); }

  // False when the frame is none of ours: whoever sent it is not our page.
  bool phoneText(PhoneId phone, std::string_view frame);
  void phoneTooFast(PhoneId phone);
  void phoneGone(PhoneId phone);
  std::size_t phoneCount() const { return keypadOf_.size(); }  // joined

  std::optional<std::int64_t> nextDue() const { return rehearsal_.nextDue(); }
  void rehearse();

  Roster& roster() { return roster_; }
  long rehearsing() const { return options_.rehearse; }
  bool takesPhones() const { return options_.highest >= options_.lowest + options_.rehearse; }

 private:
  struct Pressed {
    std::string latest;
    std::string counted;  // in the program's hands
  };
  bool keypadsOpen() const { return open_ && !keyboard_; }
  void openVote();
  void closeVote(WaitReason reason);
  void setKeyboard(bool on);
  void received(std::string_view count);
  void takePress(long keypad, const std::string& vote);
  bool join(PhoneId phone, const PhoneFrame& frame);
  void press(PhoneId phone, long keypad, const PhoneFrame& frame);
  void tellStanding(PhoneId phone, long keypad);
  std::string waitFor(long keypad) const;
  void toKeypad(long keypad, const std::string& frame);
  void toAll(const std::string& frame);
  void send(PhoneId phone, const std::string& frame);
  void reply(std::string text);
  KeyBlock keyBlock() const;
  KeyBlock tellRoom();  // the key block, whose new keypads count as told from now on
  std::vector<std::pair<long, std::string>> nameList() const;
  std::vector<long> keypadsPresent() const;

  RoomOptions options_;
  RoomPorts ports_;
  const std::string run_;
  Roster roster_;
  Rehearsal rehearsal_;
  Outbox outbox_;
  VoteSettings next_;  // as the program has it so far
  VoteSettings vote_;  // of the open vote
  long voteNumber_ = 0;
  bool open_ = false;
  bool keyboard_ = false;
  bool linked_ = false;
  std::string instance_;
  std::set<long> told_;  // keypads that this program knows of
  WaitReason waitReason_ = WaitReason::idle;
  std::map<long, Pressed> pressed_;
  std::map<PhoneId, long> keypadOf_;
  std::multimap<long, PhoneId> phonesOf_;
};

}  // namespace qrn::controller

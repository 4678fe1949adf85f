#include "controller/room/room.h"

#include <algorithm>

#include "adapters/link/wire/wire.h"
#include "host/names.h"

namespace qrn::controller {

namespace {

constexpr long popupKeypads = 10;  // waited-for keypads from which the program shows their numbers

std::vector<std::pair<long, long>> phoneRanges(const RoomOptions& options) {
  const long first = options.lowest + options.rehearse;
  std::vector<std::pair<long, long>> ranges;
  for (const Base& base : options.bases)
    if (base.used && base.last + base.offset >= first)
      ranges.emplace_back(std::max(first, base.first + base.offset), base.last + base.offset);
  if (options.bases.empty())
    ranges.emplace_back(first, options.highest);
  return ranges;
}

}  // namespace

Room::Room(RoomOptions options, RoomPorts ports)
    : options_(std::move(options)),
      ports_(std::move(ports)),
      run_(ports_.newToken()),
      roster_(phoneRanges(options_)),
      rehearsal_(options_.lowest, options_.rehearse, options_.seed, options_.hurry) {}

std::string Room::programArrived(const std::string& instance) {
  linked_ = true;
  if (instance != instance_ && open_) {
    ports_.log("another program has linked up; vote " + std::to_string(voteNumber_) + " is closed");
    closeVote(WaitReason::interrupted);
  }
  if (instance != instance_) {
    next_ = {};
    told_.clear();
  }
  instance_ = instance;
  outbox_.relink();
  return std::string(link::helloWord) + std::to_string(open_ ? voteNumber_ : 0);
}

void Room::programGone() {
  linked_ = false;
}

void Room::fromProgram(std::string_view text) {
  if (link::startsWith(text, link::receivedWord))
    return received(text.substr(link::receivedWord.size()));
  switch (commandOf(text)) {
    case Command::setting:
      applySetting(text, next_);
      break;
    case Command::clear:
      outbox_.setVote(voteNumber_);
      pressed_.clear();
      break;
    case Command::startVote:
      openVote();
      break;
    case Command::endVote:
      closeVote(WaitReason::ended);
      break;
    case Command::keyboardOn:
    case Command::keyboardOff:
      setKeyboard(commandOf(text) == Command::keyboardOn);
      break;
    case Command::baseInfo:
      reply(keyBlockText(tellRoom()));
      break;
    case Command::getNames:
      reply(nameListText(nameList()));
      break;
    case Command::votesStored:
      for (const auto& [keypad, pressed] : pressed_)
        if (!open_ && !pressed.counted.empty())
          toKeypad(keypad, storedFrame());
      break;
    case Command::noted:
      ports_.log("noted: " + std::string(text.substr(0, 200)));
      break;
    case Command::unknown:
      ports_.log("unknown command ignored: " + std::string(text.substr(0, 200)));
      break;
  }
}

void Room::openVote() {
  ++voteNumber_;
  open_ = true;
  vote_ = next_;
  pressed_.clear();
  outbox_.setVote(voteNumber_);
  reply(std::string(link::openedWord) + std::to_string(voteNumber_));
  if (keyboard_)
    return;
  toAll(voteFrame(voteNumber_, vote_));
  rehearsal_.startVote(voteNumber_, vote_, ports_.now().ms);
}

void Room::closeVote(WaitReason reason) {
  outbox_.setVote(voteNumber_);
  rehearsal_.endVote();
  if (!open_)
    return;
  open_ = false;
  waitReason_ = reason;
  for (const auto& [phone, keypad] : keypadOf_) send(phone, waitFor(keypad));
}

void Room::setKeyboard(bool on) {
  keyboard_ = on;
  if (on)
    rehearsal_.endVote();
  if (!open_)
    return;
  for (const auto& [phone, keypad] : keypadOf_) tellStanding(phone, keypad);
}

// Only now is a press counted: the program's side has it.
void Room::received(std::string_view count) {
  const auto frames = link::wholeNumber(count);
  if (!frames)
    return;
  for (const Press& press : outbox_.acknowledge(static_cast<std::uint64_t>(*frames))) {
    Pressed& pressed = pressed_[press.keypad];
    pressed.counted = press.vote;
    roster_.voted(press.keypad);
    if (pressed.latest == press.vote)
      toKeypad(press.keypad, yoursFrame(voteNumber_, press.vote, true, linked_));
  }
  ports_.programWaiting();
}

bool Room::phoneText(PhoneId phone, std::string_view text) {
  const auto frame = readPhoneFrame(text);
  if (!frame)
    return false;
  const auto joined = keypadOf_.find(phone);
  if (frame->kind == PhoneFrame::Kind::join)
    return joined == keypadOf_.end() && join(phone, *frame);
  if (joined == keypadOf_.end())
    return false;
  press(phone, joined->second, *frame);
  return true;
}

bool Room::join(PhoneId phone, const PhoneFrame& frame) {
  if (!takesPhones()) {
    send(phone, rehearsalFrame(options_.rehearse));
    return true;
  }
  const std::string token = frame.token.empty() ? ports_.newToken() : frame.token;
  const auto joined = roster_.join(token, frame.keypad, ports_.now());
  if (!joined) {
    send(phone, fullFrame());
    return true;
  }
  const long keypad = joined->keypad;
  if (joined->fresh) {
    ports_.keypadGiven(keypad, token);
    told_.erase(keypad);  // a number handed out again is somebody else
  }
  keypadOf_[phone] = keypad;
  phonesOf_.emplace(keypad, phone);
  ports_.phonesChanged();
  send(phone, welcomeFrame(keypad, token, run_));
  tellStanding(phone, keypad);
  if (linked_ && told_.count(keypad) == 0)  // without a link the program learns of it when it asks
    reply(joinedText(tellRoom()));
  return true;
}

void Room::press(PhoneId phone, long keypad, const PhoneFrame& frame) {
  if (!keypadsOpen() || frame.vote != voteNumber_)
    return send(phone, refusedFrame("closed"));
  const auto vote = acceptedPress(vote_, frame.text);
  if (!vote)
    return send(phone, refusedFrame("not possible"));
  takePress(keypad, *vote);
  if (!linked_)
    toKeypad(keypad, yoursFrame(voteNumber_, *vote, false, false));
}

void Room::takePress(long keypad, const std::string& vote) {
  pressed_[keypad].latest = vote;
  outbox_.press({keypad, vote});
  if (linked_)
    ports_.programWaiting();
}

void Room::phoneTooFast(PhoneId phone) {
  send(phone, refusedFrame("too fast"));
}

void Room::phoneGone(PhoneId phone) {
  const auto it = keypadOf_.find(phone);
  if (it == keypadOf_.end())
    return;
  roster_.left(it->second, ports_.now());
  const auto [first, last] = phonesOf_.equal_range(it->second);
  phonesOf_.erase(std::find_if(first, last, [&](const auto& each) { return each.second == phone; }));
  keypadOf_.erase(it);
  ports_.phonesChanged();
}

void Room::rehearse() {
  for (const Press& press : rehearsal_.due(ports_.now().ms)) takePress(press.keypad, press.vote);
}

void Room::tellStanding(PhoneId phone, long keypad) {
  if (!keypadsOpen())
    return send(phone, waitFor(keypad));
  send(phone, voteFrame(voteNumber_, vote_));
  const auto it = pressed_.find(keypad);
  if (it != pressed_.end() && !it->second.latest.empty())
    send(phone, yoursFrame(voteNumber_, it->second.latest, it->second.latest == it->second.counted, linked_));
}

std::string Room::waitFor(long keypad) const {
  if (open_ && keyboard_)
    return waitFrame(WaitReason::keyboard, Result::none, "");
  const auto it = pressed_.find(keypad);
  if (it == pressed_.end())
    return waitFrame(waitReason_, Result::none, "");
  const Result result = it->second.latest == it->second.counted ? Result::counted : Result::late;
  return waitFrame(waitReason_, result, it->second.counted);
}

void Room::toKeypad(long keypad, const std::string& frame) {
  const auto [first, last] = phonesOf_.equal_range(keypad);
  for (auto it = first; it != last; ++it) send(it->second, frame);
}

void Room::toAll(const std::string& frame) {
  const auto shared = std::make_shared<const std::string>(frame);
  for (const auto& [phone, keypad] : keypadOf_) ports_.toPhone(phone, shared);
}

void Room::send(PhoneId phone, const std::string& frame) {
  ports_.toPhone(phone, std::make_shared<const std::string>(frame));
}

void Room::reply(std::string text) {
  if (!linked_)
    return;
  outbox_.reply(std::move(text));
  ports_.programWaiting();
}

// Only bases with keypads are told: the program takes the keypads of the room from the first of them.
KeyBlock Room::keyBlock() const {
  const std::vector<long> present = keypadsPresent();
  KeyBlock block;
  block.baseType = keyboard_ ? kKeyboardBase : options_.rehearse > 0 ? "REHEARSAL" : "PHONES";
  block.lowest = options_.lowest;
  block.highest = options_.highest;
  block.popupOn = takesPhones() ? popupKeypads : 0;
  block.howManyToShow = block.popupOn;
  block.closePercent = options_.closePercent;
  block.keypads = static_cast<long>(present.size());
  block.present = present;
  block.useOffsets = !options_.bases.empty();
  block.bases = options_.bases;
  if (block.bases.empty() && !present.empty())
    block.bases.push_back({0, 0, present.front(), present.back(), true});
  return block;
}

KeyBlock Room::tellRoom() {
  KeyBlock block = keyBlock();
  std::copy_if(block.present.begin(), block.present.end(), std::back_inserter(block.joined),
               [this](long keypad) { return told_.insert(keypad).second; });
  return block;
}

std::vector<std::pair<long, std::string>> Room::nameList() const {
  std::vector<std::pair<long, std::string>> names;
  for (const long keypad : keypadsPresent()) {
    const auto it = options_.names.find(keypad);
    names.emplace_back(keypad, it == options_.names.end() ? "Keypad " + std::to_string(keypad) : it->second);
  }
  return names;
}

std::vector<long> Room::keypadsPresent() const {
  std::vector<long> present;
  for (long i = 0; i < options_.rehearse; ++i) present.push_back(options_.lowest + i);
  const std::vector<long> phones = roster_.present();
  present.insert(present.end(), phones.begin(), phones.end());
  return present;
}

}  // namespace qrn::controller

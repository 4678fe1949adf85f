#include "controller/room/outbox.h"

namespace qrn::controller {

namespace {

void append(std::vector<Press>& to, const std::vector<Press>& more) {
  to.insert(to.end(), more.begin(), more.end());
}

}  // namespace

void Outbox::press(Press press) {
  for (Frame& frame : waiting_)
    std::erase_if(frame.presses, [&](const Press& old) { return old.keypad == press.keypad; });
  const bool room = !waiting_.empty() && waiting_.back().text.empty() &&
                    waiting_.back().presses.size() < maxPressesPerFrame;
  if (!room)
    waiting_.emplace_back();
  waiting_.back().presses.push_back(std::move(press));
}

std::optional<std::string> Outbox::next() {
  while (!waiting_.empty() && waiting_.front().text.empty() && waiting_.front().presses.empty())
    waiting_.pop_front();
  if (waiting_.empty() || underWay_.size() >= window)
    return std::nullopt;
  underWay_.splice(underWay_.end(), waiting_, waiting_.begin());
  const Frame& frame = underWay_.back();
  return frame.text.empty() ? pressText(vote_, frame.presses) : frame.text;
}

std::vector<Press> Outbox::acknowledge(std::uint64_t frames) {
  std::vector<Press> presses;
  while (acknowledged_ < frames && !underWay_.empty()) {
    append(presses, underWay_.front().presses);
    underWay_.pop_front();
    ++acknowledged_;
  }
  return presses;
}

void Outbox::relink() {
  std::vector<Press> presses;
  for (const Frame& frame : underWay_) append(presses, frame.presses);
  for (const Frame& frame : waiting_) append(presses, frame.presses);
  underWay_.clear();
  waiting_.clear();
  acknowledged_ = 0;
  for (Press& each : presses) press(std::move(each));
}

void Outbox::setVote(long vote) {
  for (std::list<Frame>* frames : {&underWay_, &waiting_})
    for (Frame& frame : *frames) frame.presses.clear();
  vote_ = vote;
}

}  // namespace qrn::controller

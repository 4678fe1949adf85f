// What waits to go to the program: replies and presses, in order, each press kept until the program's side
// has said that it has the block.
#pragma once

#include <cstdint>
#include <list>
#include <optional>
#include <string>
#include <vector>

#include "controller/room/program_text.h"

namespace qrn::controller {

class Outbox {
 public:
  void reply(std::string text) { waiting_.push_back({std::move(text), {}}); }
  // A press that still waits is replaced by a later one of the same keypad.
  void press(Press press);
  // The next frame to send; from here on it is under way. Nothing while `window` frames are under way, so
  // that a program that does not listen costs no more than one waiting press for each keypad.
  std::optional<std::string> next();
  // The program's side has dealt with the first `frames` frames since the link was made. Returns the presses
  // in those frames that were not reported before.
  std::vector<Press> acknowledge(std::uint64_t frames);
  // The link is gone: presses under way wait again, ahead of the others; replies are forgotten.
  void relink();
  // A vote begins or ends: the presses that the program has not acknowledged are dropped.
  void setVote(long vote);

  static constexpr std::size_t maxPressesPerFrame = 200;
  static constexpr std::size_t window = 256;

 private:
  struct Frame {
    std::string text;  // of a reply; empty in a frame of presses
    std::vector<Press> presses;
  };
  long vote_ = 0;
  std::list<Frame> waiting_;
  std::list<Frame> underWay_;
  std::uint64_t acknowledged_ = 0;  // frames of this link that have left underWay_
};

}  // namespace qrn::controller

// One scale vote on one question: opens the keypads, counts presses as they come, closes on a key or by rule
// and saves what every keypad voted.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "charts/vote_screen/vote_screen.h"

namespace qrn {

// Runs one vote on `form`, restarts included, and saves it. The question is on the form already
// (DisplayVote), the item is glo.currentItem and the assessment glo.currentAssessment. True when the vote
// came to its end; false when it was left without saving (voteAbandoned) or failed. The presentation tag
// qrnVoteTerminated holds the outcome, unless the form leaves its result up and writes the tag itself. A
// program that ends by itself in mid-vote keeps the votes received so far as a record; the item counts as not
// voted.
bool DoCountUpGraphVote(VoteForm& form);

// Entry of a press. Dropped: no vote is open, or the keypad is beyond the arrays.
void oComms_VoteRx(std::int32_t keypad, const std::string& vote);

// Counts the votes of all keypads, shows the count, closes the vote when every active keypad has voted and
// the controller asked for that.
void ShowVotesCast(int options);

// Fills the arrays with random votes and ends the vote. `kind` 4 takes them from the balance vote's allowed
// list.
void GenerateRandomVotes(std::int32_t kind);

// Keyboard standing in for keypads: one simulated press of the next keypad. False when it was dropped.
bool SimulatePress(int value);

// The marker file by which other programs learn of keyboard voting.
void WriteKBOARDFile();
void DeleteKBOARDFile();

// Text of lbl_averageScore for `item` (index into risks) on `assessment` (1 to 9), from the statistics of the
// item and the abstains counted last.
std::string statisticsText(int item, int assessment);

// The form on which a vote is running, null between votes.
VoteForm* runningVoteForm();

// While it lives, glo.liveVotes may be used for other votes: presses are held back, and taken at its end.
class PressHold {
 public:
  PressHold();
  ~PressHold();
  PressHold(const PressHold&) = delete;
  PressHold& operator=(const PressHold&) = delete;

 private:
  std::vector<std::string> votes_;
  bool open_;
};

// Presses go here first while a form of that kind is open: "sifterVoteForm" and "liveRiskListCollection" take
// them.
struct TakesPresses {
  virtual ~TakesPresses() = default;
  virtual void VoteRx(std::int32_t keypad, const std::string& vote) = 0;
};

}  // namespace qrn

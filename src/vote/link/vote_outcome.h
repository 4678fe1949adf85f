// How a vote ends, and the presentation tag qrnVoteTerminated that tells the programs around. Should the tag
// not be writable, the outcome still holds for this run, so a full disk never leaves the facilitator's keys
// dead.
#pragma once

namespace qrn {

enum class VoteOutcome {
  none,        // the vote has not ended
  held,        // held to its end, or left without another wish: go on
  again,       // vote once more
  leaveThis,   // this vote is left, and the walk with it
  leaveAll,    // all votes are left, back to the editor
  jump,        // the walk goes on at another vote
  seriesExit,  // the series ends
  seriesLast,  // on to the last vote of the series
  seriesJump   // on to a vote of the series that was picked
};

void writeOutcome(VoteOutcome outcome);
void writeOutcomeIfNone(VoteOutcome outcome);
void deleteOutcome();
// What stands in the tag, by whomever it was written: double quotes and case do not count, and a text that
// has no meaning of its own is `held`.
VoteOutcome outcome();

}  // namespace qrn

// The arrays that hold one element per keypad: keypad k lives at index k-1, one spare element stands at the
// top.
#pragma once

namespace qrn {

// Sizes the arrays to `keypadsNotVotedHi` (650 where the controller has not said), keeping contents. While a
// vote is open no keypad that has voted is cut off. Without `keepClearedFlags` the running tally is
// forgotten, so the next count looks at every keypad.
void ResizeVoteArrays(bool keepClearedFlags = false);

// Every keypad "not voted", the tally and the scan flag cleared.
void ResetVotes();

}  // namespace qrn

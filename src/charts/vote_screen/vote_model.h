// The picture of one vote as a surface: a function of the question, how it is laid out and how the vote
// stands.
//
// Elements by name, with the option as index where there is one of each: graphPanel, lbl_assessment, step,
// lbl_Risk, optionKey, lbl_Criteria, barTrack, bar, barMark, barCount, barKey, average (0 the number, 1 its
// word), averageMark, notice, track (0 whole, 1 filled), uctl_votesCast (0 what takes clicks, 1 count,
// 2 words), uctl_kpadsNotVoted, joinCode (0 card, 1 code, 2 address), lbl_status, lbl_averageScore (0 its
// ground, 1 its words).
#pragma once

#include <string>

#include "charts/vote_screen/vote_layout.h"
#include "host/surface.h"

namespace qrn {

host::Surface voteModel(const VoteQuestion& question, const VoteLayout& layout, const VoteNow& now);
// With a layout of its own.
host::Surface voteModel(const VoteQuestion& question, const VoteNow& now);

}  // namespace qrn

// The order in which an exercise is voted.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "vote/xy_vote_runtime.h"

namespace qrn {

// Assessments selected for voting, 1-based, by their place in the running order.
std::vector<int> assessmentOrder();

// Each assessment through all items. An assessment of the sifter kind is one step with the key kSifterStep.
std::vector<VoteStep> stepsByItem();
// Each item through all assessments: the pair on the graph's axes first. An item voted on all of them is not
// taken.
std::vector<VoteStep> stepsByAssessment();
inline constexpr int kSifterStep = -1;

// A process begins with these steps: what they will ask is not voted, and no item is new to it.
void beginProcess(const std::vector<VoteStep>& steps);

// Where an interrupted process goes on, after readlog: at the first step that is marked as not voted, however
// list and running order have changed since; the number of steps when nothing is left. Every voted step is
// passed over from then on.
std::size_t resumeStep(std::vector<VoteStep>& steps);

// How far the process that readlog has restored has come, in votes.
struct VoteProgress {
  int voted = 0, due = 0;
};
VoteProgress voteProgress();

// Whether the walk votes there; else it passes the step over, or says that it has too few options.
bool canBeVoted(const VoteStep& step);
// A sentence when the exercise as it stands has no vote at all, else "".
std::string whyNothingToVote();

// Index into risks of the item with that key, -1 without one.
int itemOfKey(int sortKey);

// The rounds to vote: the next rounds where they are set (each counts once), else the default rounds.
void loadVotePlan();

// Sort keys of the list as it stands, and the list put back into that order.
std::vector<int> listKeys();
void restoreListOrder(const std::vector<int>& keys);

}  // namespace qrn

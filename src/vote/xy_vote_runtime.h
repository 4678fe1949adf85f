// The full-screen form on which an exercise is voted: walks items and assessments, runs one vote for each
// step.
//
// How a run is driven: load the form "xyVoteRuntime" through the registry, call startProcess(). It returns
// when the run has ended. Keys go to Form_KeyDown from inside the waits; `state` tells what the keys act on.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "charts/vote_screen.h"
#include "vote/keypads_not_voted.h"

namespace qrn {

// One step of the walk: an item (index into risks) on an assessment (1 to 9).
struct VoteStep {
  int item = 0, assessment = 1;
  bool operator==(const VoteStep&) const = default;
};

struct xyVoteRuntime : VoteForm {
  xyVoteRuntime();

  void startProcess();
  void byItem();        // each assessment through all items
  void byAssessment();  // each item through all assessments
  void RunVote();
  void doVote(int step);
  void FinishOfVoteLoop();
  void Check4ResultsTable();
  void BlankThisForm();
  void cmd_cancel_Click();
  void uctl_votesCast_Click() { Form_KeyDown(host::key::space, 0); }

  void Form_KeyDown(int keyCode, int shift) override;
  bool Form_QueryUnload(bool byUser) override;
  void Form_Resize() override;
  void ResetForNewVote() override;
  bool writesOutcome() const override { return true; }

  // Assessments selected for voting, 1-based, in voting order.
  static std::vector<int> assessmentOrder();

  uctlKpadsNotVoted uctl_kpadsNotVoted;
  bool cursorShown = false;  // key A
  bool buttonsVisible = true;
  std::int64_t lastKeyAt = -1;  // microseconds
  int lastKey = 0;
};

// The dialog of the Esc key.
struct xyVoteQuitOptions : host::Form {
  enum Option { goTo, goBackOne, restartThisVote, continueVoting, goToGraph, quitAllVotes, quitThisVote };
  xyVoteQuitOptions();

  void Form_Load() override;
  void Form_KeyDown(int keyCode, int shift) override;
  void choose(Option option);  // sets UserResult and closes
  // Captions of the options, in the order of `Option`.
  static const std::array<const char*, 7>& captions();

  std::vector<std::string> List1, List2;            // "Item list", "Assessments": targets of "Go to..."
  std::vector<int> itemTargets, assessmentTargets;  // index into risks; assessment 1 to 9, line by line
  int List1Index = 0, List2Index = 0;
  Option chosen = continueVoting;
  int UserResult = 0;  // 1 restart, 2 leave this vote, 3 leave all votes, otherwise go on voting
};

// Defines "xyVoteRuntime" and "xyVoteQuitOptions" in the registry of the host.
void registerVoteForms();

}  // namespace qrn

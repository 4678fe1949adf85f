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

#include "charts/vote_screen/vote_screen.h"
#include "host/actions.h"
#include "host/controls.h"
#include "store/statistics.h"
#include "vote/keypads_not_voted.h"
#include "vote/link/vote_outcome.h"

namespace qrn {

// One step of the walk. Graphs may put the list into another order meanwhile, so a step names its item by
// key.
struct VoteStep {
  int sortKey = 0;
  int assessment = 1;  // 1 to 9
  int step = 1;        // 1-based place of the assessment in the walk
  bool taken = true;   // false: passed over, but "Go to..." may ask for it
};

struct xyVoteRuntime : VoteForm, HasVoteBoxes {
  xyVoteRuntime();
  VoteFormBoxes boxes() const override { return {txt_RiskNum, txt_AssNum}; }

  void startProcess();
  void byItem();        // each assessment through all items
  void byAssessment();  // each item through all assessments
  void RunVote();
  void doVote();
  void FinishOfVoteLoop();
  void Check4ResultsTable();
  void BlankThisForm();
  void showButtons() { buttonsVisible = true; }
  void hideButtons() { buttonsVisible = false; }
  void cmd_cancel_Click();
  void uctl_votesCast_Click() { Form_KeyDown(host::key::space, 0); }

  void Form_Load() override { LayOutAgain(); }
  void Form_MouseDown(int button, double x, double y) override;
  void Form_KeyDown(int keyCode, int shift) override;
  host::ActionTable actions() override;
  bool Form_QueryUnload(bool byUser) override;
  void Form_Unload() override;
  void Form_Resize() override;
  void ResetForNewVote() override;
  void voteHeld() override;
  bool writesOutcome() const override { return true; }

  uctlKpadsNotVoted uctl_kpadsNotVoted;
  bool cursorShown = false;  // key A
  bool buttonsVisible = true;

 private:
  void walk(std::vector<VoteStep> steps, std::size_t start);
  bool tellFinished();
  bool takeStep(const VoteStep& step);  // false: passed over
  void afterStep(const std::vector<VoteStep>& steps, std::size_t at);
  std::size_t jumpTarget(const std::vector<VoteStep>& steps, std::size_t at) const;
  bool runEnds() const;

  std::vector<host::Action> openActions();
  std::vector<host::Action> keypadActions();  // of an open vote too
  std::vector<host::Action> resultActions();
  void afterKey();
  bool resultShown() const;
  void toggleResult();
  void endVoteKey();
  void keyboardKey(int keyCode);
  bool keyboardTurnedOn();
  void toggleKeypadPanel();
  void showKeypadPanel(bool on);
  void forgetActiveKeypads();
  void keepVotingKeypads();
  void askHowToLeave();
  void leave(VoteOutcome how);
  void endResult(VoteOutcome how);
  bool takesKeys() const;  // a vote is open or its result up
  void showGraphMeanwhile();
  void playEndOfVoteSound() const;

  enum class Jump { none, back, target };
  Jump jump_ = Jump::none;
  bool voteHeld_ = false;       // the step has been voted and saved
  std::vector<int> listOrder_;  // sort keys in the order of the walk
  host::KeyGuard keyGuard_;
};

// The dialog of the Esc key.
struct xyVoteQuitOptions : host::ControlForm {
  enum Option { goTo, goBackOne, restartThisVote, continueVoting, goToGraph, quitAllVotes, quitThisVote };
  xyVoteQuitOptions();

  void Form_Load() override;
  void Form_KeyDown(int keyCode, int shift) override;
  host::ActionTable actions() override;
  void wish(Option option);    // chooses it; without a target of its own "Go to..." asks for one
  void choose(Option option);  // sets UserResult and closes, unless there is nowhere to go to
  static VoteOutcome outcomeOf(Option option);
  // Captions of the options, in the order of `Option`.
  static const std::array<const char*, 7>& captions();

  host::Panel options;  // by Option
  host::Panel List1,
      List2;  // "Item list", "Assessments", the targets of "Go to...": index into risks, 1 to 9
  Option chosen = continueVoting;
  VoteOutcome UserResult = VoteOutcome::none;  // none: go on voting

 protected:
  std::string take() override;
  void dismissed() override;

 private:
  void fillTargets();
  bool mayVoteAgain(int item, int assessment) const;
};

// Defines "xyVoteRuntime" and "xyVoteQuitOptions" in the registry of the host.
void registerVoteForms();

}  // namespace qrn

#include "core/glo.h"
#include "core/item_label.h"
#include "host/errors.h"
#include "host/host.h"
#include "store/statistics.h"
#include "vote/vote_plan.h"
#include "vote/xy_vote_runtime.h"

namespace qrn {

xyVoteQuitOptions::xyVoteQuitOptions() : Form("xyVoteQuitOptions") {}

const std::array<const char*, 7>& xyVoteQuitOptions::captions() {
  static const std::array<const char*, 7> texts{"Go to...",        "Go back one", "Restart this vote",
                                                "Continue voting", "Go to graph", "Quit all votes",
                                                "Quit this vote"};
  return texts;
}

void xyVoteQuitOptions::Form_Load() {
  for (int i = 0; i < glo.itemCount(); ++i) {
    RiskRecord& risk = glo.risks[static_cast<std::size_t>(i)];
    if (!risk.voting)
      continue;
    if (i == glo.currentItem)
      List1Index = static_cast<int>(List1.size());
    List1.push_back(GetItemLabel(risk));
    itemTargets.push_back(i);
  }
  for (const int assessment : assessmentOrder()) {
    if (assessment == glo.currentAssessment)
      List2Index = static_cast<int>(List2.size());
    List2.push_back("A" + std::to_string(assessment) + ": " +
                    glo.assessmentTitles[static_cast<std::size_t>(assessment - 1)]);
    assessmentTargets.push_back(assessment);
  }
}

VoteOutcome xyVoteQuitOptions::outcomeOf(Option option) {
  switch (option) {
    case goTo:
    case goBackOne:
      return VoteOutcome::jump;
    case restartThisVote:
      return VoteOutcome::again;
    case quitAllVotes:
      return VoteOutcome::leaveAll;
    case quitThisVote:
      return VoteOutcome::leaveThis;
    case continueVoting:
    case goToGraph:
      break;
  }
  return VoteOutcome::none;
}

void xyVoteQuitOptions::Form_KeyDown(int keyCode, int) {
  const int last = static_cast<int>(captions().size()) - 1;
  if (keyCode == host::key::escape)
    choose(continueVoting);
  else if (keyCode == host::key::enter || keyCode == host::key::space)
    choose(chosen);
  else if (keyCode == host::key::up && chosen > 0)
    chosen = static_cast<Option>(chosen - 1);
  else if (keyCode == host::key::down && chosen < last)
    chosen = static_cast<Option>(chosen + 1);
  else if (keyCode >= '1' && keyCode <= '1' + last)
    choose(static_cast<Option>(keyCode - '1'));
}

void xyVoteQuitOptions::choose(Option option) {
  chosen = option;
  UserResult = outcomeOf(option);
  if (option == goTo) {
    const std::size_t item = static_cast<std::size_t>(List1Index),
                      assessment = static_cast<std::size_t>(List2Index);
    if (item >= itemTargets.size() || assessment >= assessmentTargets.size())
      return;
    glo.jumpItem = itemTargets[item];
    glo.jumpAssessment = assessmentTargets[assessment];
  }
  host::host().forms->hide(name);
}

void registerVoteForms() {
  host::FormRegistry& forms = *host::host().forms;
  forms.define("xyVoteRuntime", [] { return std::make_unique<xyVoteRuntime>(); });
  forms.define("xyVoteQuitOptions", [] { return std::make_unique<xyVoteQuitOptions>(); });
  xyVoteRuntimeBoxes = [] {
    const auto* form = dynamic_cast<VoteForm*>(host::host().forms->find("xyVoteRuntime"));
    if (form == nullptr)
      throw HostError(Fault::program, 91, "The voting form is not loaded");
    return VoteFormBoxes{form->txt_RiskNum, form->txt_AssNum};
  };
}

}  // namespace qrn

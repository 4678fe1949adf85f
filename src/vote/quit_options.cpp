#include <algorithm>

#include "base/errors.h"
#include "core/glo.h"
#include "core/item_label.h"
#include "host/dialogs.h"
#include "host/help.h"
#include "host/host.h"
#include "host/names.h"
#include "store/vote_store.h"
#include "vote/vote_plan.h"
#include "vote/xy_vote_runtime.h"

namespace qrn {

namespace {

host::PanelRow rowOf(const std::string& text, int id) {
  host::PanelRow row;
  row.cells = {text};
  row.id = id;
  return row;
}

// What a panel's row at hand stands for; -1: none is.
int targetOf(const host::Panel& panel) {
  return panel.current() < 0 ? -1 : panel.rows()[static_cast<std::size_t>(panel.current())].id;
}

bool isAtHand(int item, int assessment) {
  return item == glo.currentItem && assessment == glo.currentAssessment;
}

// Saved ones, or those that the open vote has taken so far.
bool hasVotes(int item, int assessment) {
  readVoteRecords();
  return glo.voteRecords.lastLine(voteKey(item, assessment)).data() != nullptr ||
         (isAtHand(item, assessment) && glo.votesCast > 0);
}

}  // namespace

xyVoteQuitOptions::xyVoteQuitOptions() : ControlForm(formName::quitOptions) {
  using Kind = host::Control::Kind;
  using Where = host::Control::Place;
  title = "What next?";
  acceptCaption = dismissCaption = captions()[continueVoting];
  controls = {
      {.kind = Kind::list, .name = "options", .panel = &options},
      {.kind = Kind::list, .name = "List1", .caption = "Item list", .panel = &List1, .place = Where::beside},
      {.kind = Kind::list,
       .name = "List2",
       .caption = "Assessments",
       .panel = &List2,
       .place = Where::under}};
}

const std::array<const char*, 7>& xyVoteQuitOptions::captions() {
  static const std::array<const char*, 7> texts{"Go to...",        "Go back one", "Restart this vote",
                                                "Continue voting", "Go to graph", "Quit all votes",
                                                "Quit this vote"};
  return texts;
}

void xyVoteQuitOptions::Form_Load() {
  std::vector<host::PanelRow> rows;
  for (const char* caption : captions()) {
    const int place = static_cast<int>(rows.size());
    rows.push_back(rowOf(std::to_string(place + 1) + "   " + caption, place));
  }
  options.setRows(std::move(rows));
  options.select(continueVoting);
  options.selectionChanged = [this](int row) {
    chosen = static_cast<Option>(row);
    acceptCaption = chosen == goTo ? "Go to" : captions()[chosen];
  };
  options.activated = [this](int row) { wish(static_cast<Option>(row)); };
  fillTargets();
  for (host::Panel* panel : {&List1, &List2}) {
    panel->selectionChanged = [this](int) { options.select(goTo); };
    panel->activated = [this](int) { choose(goTo); };
  }
}

void xyVoteQuitOptions::fillTargets() {
  std::vector<host::PanelRow> items, assessments;
  for (const int key : listKeys())
    if (const int item = itemOfKey(key); glo.item(item).voting)
      items.push_back(rowOf(GetItemLabel(glo.item(item)), item));
  for (const int assessment : assessmentOrder())
    assessments.push_back(rowOf("A" + std::to_string(assessment) + ": " +
                                    glo.assessmentTitles[static_cast<std::size_t>(assessment - 1)],
                                assessment));
  List1.setRows(std::move(items));
  List2.setRows(std::move(assessments));
  List1.select(std::max(0, List1.rowOfId(glo.currentItem)));
  List2.select(std::max(0, List2.rowOfId(glo.currentAssessment)));
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

host::ActionTable xyVoteQuitOptions::actions() {
  std::vector<host::Action> rows;
  for (const char* caption : captions()) {
    const int place = static_cast<int>(rows.size());
    rows.push_back({.name = "option" + std::to_string(place),
                    .caption = caption,
                    .keys = {{'1' + place, host::kNoAlt}},
                    .perform = [this, place] { wish(static_cast<Option>(place)); }});
  }
  rows.push_back({.name = "accept",
                  .caption = "What is chosen",
                  .keys = {{host::key::enter, host::kAnyShift}, {host::key::space, host::kAnyShift}},
                  .perform = [this] { wish(chosen); }});
  rows.push_back({.name = "dismiss",
                  .caption = captions()[continueVoting],
                  .keys = {{host::key::escape, host::kAnyShift}},
                  .perform = [this] { dismiss(); }});
  rows.push_back(host::helpAction(*this));
  return host::ActionTable(std::move(rows));
}

void xyVoteQuitOptions::Form_KeyDown(int keyCode, int shift) {
  if (!options.keyDown(keyCode, shift))
    actions().performKey(keyCode, shift);
}

// Going to where the vote is already is hardly meant: the target is asked for first.
void xyVoteQuitOptions::wish(Option option) {
  if (option == goTo && isAtHand(targetOf(List1), targetOf(List2)) && !List1.rows().empty()) {
    options.select(goTo);
    focus = "List1";
  } else {
    choose(option);
  }
}

void xyVoteQuitOptions::choose(Option option) {
  options.select(option);
  accept();
}

bool xyVoteQuitOptions::mayVoteAgain(int item, int assessment) const {
  return !hasVotes(item, assessment) ||
         host::host().dialogs->MsgBox(GetItemLabel(glo.item(item)) + " has votes already. Vote it again?",
                                      host::kTitle, host::Buttons::yesNo,
                                      host::Icon::question) == host::Answer::yes;
}

std::string xyVoteQuitOptions::take() {
  const int item = targetOf(List1), assessment = targetOf(List2);
  if (chosen == goTo && (item < 0 || assessment < 0))
    return "There is no item to go to.";
  if (chosen == goTo && !mayVoteAgain(item, assessment))
    return "Nothing has changed. Choose another item, or go on.";
  if (chosen == goTo) {
    glo.jumpItem = item;
    glo.jumpAssessment = assessment;
  }
  UserResult = outcomeOf(chosen);
  return "";
}

void xyVoteQuitOptions::dismissed() {
  chosen = continueVoting;
}

void registerVoteForms() {
  host::FormRegistry& forms = *host::host().forms;
  forms.define(formName::runtime, [] { return std::make_unique<xyVoteRuntime>(); });
  forms.define(formName::quitOptions, [] { return std::make_unique<xyVoteQuitOptions>(); });
}

}  // namespace qrn

// What the voting form can do, told once: one table while a vote is open, another while its result is up.
// Keys, menu and help read them.

#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/help.h"
#include "host/host.h"
#include "host/windows.h"
#include "vote/xy_vote_runtime.h"

namespace qrn {

namespace {

namespace key = host::key;
using host::Action;
using host::kAnyShift;
using host::KeyStroke;
using host::kNoAlt;
using Actions = std::vector<Action>;

constexpr const char* kMenu = "voteMenu";

std::vector<KeyStroke> with(int shift, std::initializer_list<int> codes) {
  std::vector<KeyStroke> keys;
  for (const int code : codes) keys.push_back({code, shift});
  return keys;
}

std::vector<KeyStroke> goOnKeys(int shift) {
  return with(shift, {key::space, key::enter, key::right, key::down, key::pageDown, 'N'});
}

std::vector<KeyStroke> digits() {
  std::vector<KeyStroke> keys = host::keyRange('0', '9', kAnyShift);
  for (const KeyStroke& one : host::keyRange(key::numpad0, key::numpad0 + 9, kAnyShift)) keys.push_back(one);
  return keys;
}

Action helpOf(host::Form& form) {
  Action help = host::helpAction(form);
  help.keys.push_back({key::f2, kAnyShift});
  help.menus = {kMenu};
  help.separated = true;
  return help;
}

}  // namespace

// Between two votes there is nothing to do.
host::ActionTable xyVoteRuntime::actions() {
  Actions rows;
  if (state == VoteState::resultUp)
    rows = resultActions();
  else if (takesKeys())
    rows = host::together({openActions(), keypadActions()});
  const auto whole = [this, open = state == VoteState::open](const std::function<void()>& act) {
    trapErrors("xyVoteRuntime", "Form_KeyDown", act);
    if (open)
      afterKey();
  };
  for (Action& row : rows) {
    if (row.performKey)
      row.performKey = [whole, act = row.performKey](int keyCode) { whole([&] { act(keyCode); }); };
    else
      row.perform = [whole, act = row.perform] { whole(act); };
  }
  return host::ActionTable(std::move(rows));
}

std::vector<host::Action> xyVoteRuntime::openActions() {
  return {{.name = "endVote",
           .caption = "Close the vote",
           .keys = goOnKeys(kAnyShift),
           .menus = {kMenu},
           .perform = [this] { endVoteKey(); }},
          {.name = "restartVote",
           .caption = "This vote again",
           .keys = with(kAnyShift, {'R', key::clear}),
           .menus = {kMenu},
           .perform =
               [] {
                 glo.restartVote = true;
                 glo.voteAbandoned = 1;
               }},
          {.name = "quitOptions",
           .caption = "What next?",
           .keys = with(kAnyShift, {key::escape, 'Q'}),
           .menus = {kMenu},
           .perform = [this] { askHowToLeave(); },
           .help = "What next? Go to another item, go back, quit"},
          {.name = "uctl_kpadsNotVoted",
           .caption = "Who has not voted yet",
           .keys = with(kAnyShift, {'K'}),
           .menus = {kMenu},
           .perform = [this] { toggleKeypadPanel(); },
           .checked = [this] { return uctl_kpadsNotVoted.Visible; },
           .separated = true},
          {.name = "cursor",
           .caption = "Mouse pointer",
           .keys = with(kAnyShift, {'A'}),
           .menus = {kMenu},
           .perform =
               [this] {
                 cursorShown = !cursorShown;
                 if (host::host().windows)
                   host::host().windows->showCursor(cursorShown);
               },
           .checked = [this] { return cursorShown; }}};
}

std::vector<host::Action> xyVoteRuntime::keypadActions() {
  return {{.name = "keepVotingKeypads",
           .caption = "Close it and keep only who has voted",
           .keys = with(kAnyShift, {key::subtract, key::minus}),
           .menus = {kMenu},
           .perform = [this] { keepVotingKeypads(); },
           .enabled = [] { return glo.votesCast >= 1; },
           .separated = true},
          {.name = "forgetActiveKeypads",
           .caption = "Forget which keypads are in use",
           .keys = with(kAnyShift, {key::add, key::equal}),
           .menus = {kMenu},
           .perform = [this] { forgetActiveKeypads(); }},
          {.name = "keyboardVote",
           .caption = "Vote from the keyboard",
           .keys = digits(),
           .performKey = [this](int keyCode) { keyboardKey(keyCode); }},
          {.name = "keyboardAbstain",
           .caption = "Abstain from the keyboard",
           .keys = with(kAnyShift, {'Z'}),
           .perform = [this] { keyboardKey('Z'); }},
          {.name = "randomVotes",
           .caption = "Votes by chance for every keypad",
           .keys = with(kAnyShift, {'G'}),
           .perform = [this] { keyboardKey('G'); }},
          helpOf(*this)};
}

std::vector<host::Action> xyVoteRuntime::resultActions() {
  return {{.name = "goOn",
           .caption = "Go on",
           .keys = goOnKeys(kNoAlt),
           .menus = {kMenu},
           .perform =
               [this] {
                 if (host::host().windows)
                   host::host().windows->freeCursor();
                 endResult(VoteOutcome::held);
               }},
          {.name = "revote",
           .caption = "Vote on it again",
           .keys = with(kNoAlt, {'R', key::clear}),
           .menus = {kMenu},
           .perform = [this] { endResult(VoteOutcome::again); }},
          {.name = "quitOptions",
           .caption = "What next?",
           .keys = {{key::escape, kNoAlt}},
           .menus = {kMenu},
           .perform = [this] { askHowToLeave(); },
           .help = "What next? Go to another item, go back, quit"},
          {.name = "showResult",
           .caption = "Bars and statistics",
           .keys = with(key::altMask, {'D'}),
           .menus = {kMenu},
           .perform = [this] { toggleResult(); },
           .checked = [this] { return resultShown(); },
           .separated = true},
          helpOf(*this)};
}

// Keys
void xyVoteRuntime::Form_KeyDown(int keyCode, int shift) {
  if (keyCode == key::clear)
    keyCode = 'R';
  if (keyCode == key::enter)
    keyCode = key::space;
  if (!keyGuard_.repeated(keyCode))
    VoteForm::Form_KeyDown(keyCode, shift);
}

// A click on the count acts as Space; the right button opens the menu.
void xyVoteRuntime::Form_MouseDown(int button, double x, double y) {
  const host::Hit hit = host::hitTest(surface(), x, y);
  if (button == host::mouse::left && hit && hit.array->name() == "uctl_votesCast")
    uctl_votesCast_Click();
  else if (button == host::mouse::right && takesKeys())
    host::popUp(*this, kMenu, true);
}

}  // namespace qrn

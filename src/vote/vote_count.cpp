// Presses and their count. The first count of a pass looks at every keypad; from then on a press changes the
// count by what it changes, with the same result.
#include <algorithm>
#include <utility>
#include <vector>

#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/names.h"
#include "vote/count_up_vote.h"

namespace qrn {

namespace {

enum Mark : int { notCounted, number, valid };

// What a count depends on beside the votes.
struct Rules {
  int startFrom = 0, options = 0, assessmentType = 1;
  std::int32_t voteType = 0;
  bool abstain = false;
  std::string allowedVotes;
  bool operator==(const Rules&) const = default;
  bool scale() const {
    return voteType == 0 || voteType == voteKind::singleDigit || voteType == voteKind::singleItemSelect;
  }
};

// The running tally beside glo.keypadCounted.
struct Tally {
  Rules rules;
  int firstValid = -1;  // index of the first keypad with a valid vote; numbers count from there on
  int count = 0;
};
Tally tally;

struct HeldPress {
  std::int32_t keypad = 0;
  std::string vote;
};
bool holding = false;
std::vector<HeldPress> held;

Rules rulesNow(int options) {
  const int assessment = std::clamp(glo.currentAssessment, 1, kAssessments);
  return {glo.startFrom,      options,         glo.assessment(assessment).voteType, glo.voteType,
          glo.abstainEnabled, glo.allowedVotes};
}

bool isAllowed(const std::string& text, const std::string& allowed) {
  return ("," + allowed + ",").find("," + text + ",") != std::string::npos;
}

Mark markOf(std::string& text, const Rules& rules) {
  if (!rules.scale())
    return text.empty() || text == "-100" ? notCounted : valid;
  if (!isNumeric(text))
    return notCounted;
  const double value = qrnVal(text);
  if (value == -100)
    return notCounted;
  if (rules.assessmentType == 1 && value >= rules.startFrom && value <= rules.options)
    return valid;
  if (rules.assessmentType == 3 && isAllowed(text, rules.allowedVotes))
    return valid;
  if (!rules.abstain || (value != 0 && value != -2))
    return number;
  text = "-2";
  return valid;
}

// Once one keypad is valid, every later number counts, whatever its value.
void recount() {
  const std::vector<int>& marks = glo.keypadCounted;
  const auto end = marks.end() - 1;  // the spare element
  const auto first = std::find(marks.begin(), end, static_cast<int>(valid));
  tally.firstValid = first == end ? -1 : static_cast<int>(first - marks.begin());
  tally.count = static_cast<int>(std::count_if(first, end, [](int mark) { return mark != notCounted; }));
}

void countAll(const Rules& rules) {
  tally.rules = rules;
  glo.keypadCounted.assign(std::max<std::size_t>(glo.liveVotes.size(), 1), notCounted);
  for (int i = 0; i < upperBound(glo.liveVotes); ++i) {
    const std::size_t n = static_cast<std::size_t>(i);
    glo.keypadCounted[n] = markOf(glo.liveVotes[n], rules);
  }
  recount();
}

void countOne(std::size_t keypad) {
  if (keypad + 1 >= glo.liveVotes.size())
    return;  // the spare element counts nowhere
  const int before = glo.keypadCounted[keypad];
  const int now = glo.keypadCounted[keypad] = markOf(glo.liveVotes[keypad], tally.rules);
  const int place = static_cast<int>(keypad);
  const bool newFirst = now == valid && (tally.firstValid < 0 || place < tally.firstValid);
  if (newFirst || (place == tally.firstValid && now != valid))
    recount();
  else if (tally.firstValid >= 0 && place > tally.firstValid)
    tally.count += (now != notCounted ? 1 : 0) - (before != notCounted ? 1 : 0);
}

int activeKeypadCount() {
  return static_cast<int>(std::count_if(glo.activeKeypads.begin(), glo.activeKeypads.end(),
                                        [](const std::string& keypad) { return !keypad.empty(); }));
}

// All of the room have voted, or the share the controller asked for. Without a list of the room's keypads
// only the highest keypad number can tell.
bool enoughVotes(int count) {
  if (glo.keypadsNotVotedClose != 1 || count < 1)
    return false;
  if (glo.keypadsNotVotedHi > 0 && count >= glo.keypadsNotVotedHi)
    return true;
  const int active = activeKeypadCount();
  if (active < 1)
    return false;
  const double threshold = glo.keypadsNotVotedClosePercent / 100.0 * active;
  return count >= active || (threshold > 0 && threshold <= count);
}

void tellCount() {
  VoteForm* form = runningVoteForm();
  if (form)
    form->SetVotesCastCount(std::to_string(tally.count));
  glo.votesCast = tally.count;
  if (glo.voteOpen && glo.voteComplete != 1 && enoughVotes(tally.count)) {
    if (form)
      form->SetVotesCastCount("Wait");
    host::host().forms->unload("keypadsnotloaded");
    glo.voteComplete = 1;
  }
  if (form)
    host::host().forms->refresh(form->name);
}

// True when a form that takes presses for itself is open.
bool takenByAnotherForm(std::int32_t keypad, const std::string& vote) {
  for (const char* name : {formName::sifterVote, formName::liveRiskList}) {
    auto* taker = dynamic_cast<TakesPresses*>(host::host().forms->find(name));
    if (!taker)
      continue;
    taker->VoteRx(keypad, vote);
    return true;
  }
  return false;
}

void takePress(std::int32_t keypad, const std::string& vote) {
  if (holding) {
    held.push_back({keypad, vote});
    return;
  }
  if (takenByAnotherForm(keypad, vote))
    return;
  if (keypad < 1 || keypad - 1 > upperBound(glo.liveVotes))
    return;
  if (!glo.voteOpen) {
    writeVoteDataLog("press outside a vote", std::to_string(keypad) + ";" + vote);
    return;
  }
  const std::size_t place = static_cast<std::size_t>(keypad - 1);
  std::string& entry = glo.liveVotes[place];
  entry = vote == "X" ? "-2" : vote;
  if (entry == "-2" && glo.startFrom == 0 && !glo.abstainEnabled)
    entry = "0";
  if (glo.keypadCounted.size() != glo.liveVotes.size() || tally.rules != rulesNow(glo.options)) {
    ShowVotesCast(glo.options);
    return;
  }
  countOne(place);
  tellCount();
}

}  // namespace

void oComms_VoteRx(std::int32_t keypad, const std::string& vote) {
  trapErrors("count_up_vote", "oComms_VoteRx", [&] { takePress(keypad, vote); });
}

PressHold::PressHold() : votes_(glo.liveVotes), open_(glo.voteOpen) {
  holding = true;
}

PressHold::~PressHold() {
  holding = false;
  glo.liveVotes = std::move(votes_);
  if (open_ && glo.voteOpen) {
    ShowVotesCast(glo.options);
    for (const HeldPress& press : held) oComms_VoteRx(press.keypad, press.vote);
  }
  held.clear();
}

void ShowVotesCast(int options) {
  if (glo.startFrom == -1)
    glo.startFrom = 1;
  countAll(rulesNow(options));
  tellCount();
}

}  // namespace qrn

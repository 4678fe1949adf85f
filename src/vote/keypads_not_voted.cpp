#include "vote/keypads_not_voted.h"

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "core/common.h"
#include "core/glo.h"
#include "host/host.h"
#include "host/system.h"

namespace qrn {

namespace {

constexpr int kCheckInterval = 500;  // milliseconds
constexpr const char* kFont = "Arial";
constexpr double kFontSize = 14;

// Neither a vote from 0 up nor an abstention (-2).
bool waitsFor(int keypad) {
  const auto place = static_cast<std::size_t>(keypad - 1);
  if (place >= glo.liveVotes.size())
    return true;
  const double vote = qrnVal(glo.liveVotes[place]);
  return vote == -1 || vote < -2;
}

// The number on the keypad, with its base in brackets beyond the first: 12(2).
std::string keypadLabel(const std::string& keypad) {
  const int number = static_cast<int>(qrnVal(keypad));
  if (!glo.useOffsets)
    return keypad;
  for (const std::string& info : glo.keypadPortInfo) {
    const auto fields = splitFields(info, ',');
    if (fields.size() < 3 || qrnVal(fields[0]) + qrnVal(fields[1]) != number)
      continue;
    const int base = static_cast<int>(qrnVal(fields[2]));
    return base > 0 ? std::string(fields[0]) + "(" + std::to_string(base + 1) + ")" : keypad;
  }
  return keypad;
}

// "4 7 12 and 40 more"; where no numbers are to be shown, how many there are.
std::string waitedText(const std::string& named, int waitedFor, int shown) {
  if (named.empty())
    return waitedFor == 0 ? "" : std::to_string(waitedFor) + (waitedFor == 1 ? " keypad" : " keypads");
  return waitedFor > shown ? named + " and " + std::to_string(waitedFor - shown) + " more" : named;
}

}  // namespace

uctlKpadsNotVoted::uctlKpadsNotVoted()
    : tmr_checkKeypadsNotVotedPopUp(kCheckInterval, [this] { ShowKeypadsNotVoted(); }) {}

void uctlKpadsNotVoted::BeginChecking(bool on) {
  tmr_checkKeypadsNotVotedPopUp.setEnabled(on);
}

void uctlKpadsNotVoted::forceRefresh() {
  refreshForced_ = true;
  ShowKeypadsNotVoted();
}

void uctlKpadsNotVoted::ShowKeypadsNotVoted() {
  if (glo.voteComplete == 1 || !glo.voteOpen)
    return;
  glo.keypadsNotVotedLo = std::max(1, glo.keypadsNotVotedLo);
  if (glo.keypadsNotVotedHi < 1)
    glo.keypadsNotVotedHi = 650;
  std::string named;
  labels.clear();
  int known = 0;
  waitedFor = 0;
  for (const std::string& keypad : glo.activeKeypads) {
    if (keypad.empty())
      continue;
    ++known;
    if (!waitsFor(static_cast<int>(qrnVal(keypad))))
      continue;
    if (++waitedFor > glo.keypadsNotVotedHowManyToShow)
      continue;
    labels.push_back(keypadLabel(keypad));
    named += (named.empty() ? "" : " ") + labels.back();
  }
  const std::string text = waitedText(named, waitedFor, glo.keypadsNotVotedHowManyToShow);
  if (known > 0 && waitedFor <= glo.keypadsNotVotedPopupOn && glo.keypadsNotVotedPopupOn >= 1 &&
      showRequested)
    showRequested();
  if (waitedFor == 0 && known > 0 && glo.keypadsNotVotedClose == 1)
    glo.voteComplete = 1;
  if (text == Caption && !refreshForced_)
    return;
  refreshForced_ = false;
  Caption = text;
  const host::TextMeasure& measure = *host::host().textMeasure;
  LabelWidth = std::max(measure.TextWidth(Caption, kFont, kFontSize, false, false),
                        measure.TextWidth(title, kFont, kFontSize, true, false));
  if (changed)
    changed();
}

}  // namespace qrn

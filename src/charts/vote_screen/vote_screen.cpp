#include "charts/vote_screen/vote_screen.h"

#include <algorithm>

#include "base/text.h"
#include "charts/vote_screen/vote_model.h"
#include "charts/vote_screen/vote_words.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/host.h"
#include "host/system.h"
#include "host/windows.h"
#include "look/theme.h"
#include "store/counted_votes.h"

namespace qrn {

namespace {

constexpr int kFrame = 16;  // milliseconds

bool keyboardVotes() {
  return glo.baseType.empty() || upperCase(glo.baseType) == "KBOARD";
}

std::string lineFeedsCleaned(const std::string& text) {
  return replaceAll(replaceAll(text, "\r\n", "\n"), "\r", "\n");
}

std::string itemCaption(int item) {
  if (item < 0 || item >= glo.itemCount())
    return "   ";
  const RiskRecord& risk = glo.item(item);
  const std::string text = risk.text.empty() ? "   " : lineFeedsCleaned(risk.text);
  return glo.CheckShowListItemIdentifier ? risk.identifier + ": " + text : text;
}

// The text as the controller takes it: one line, and no bar of its own between captions.
std::string wireText(const std::string& caption) {
  return replaceAll(replaceAll(caption, "\n", " "), "|", "/");
}

void setVoteTexts(const VoteForm& form) {
  glo.preVoteText = replaceAll(form.lbl_Risk.Caption, "\n", " ");
  glo.voteTitle =
      form.lbl_assessment.Visible ? replaceAll(form.lbl_assessment.Caption, "\n", " ") : std::string();
  glo.voteText.clear();
  for (const VoteLabel& label : form.lbl_Criteria) glo.voteText += "|" + wireText(label.Caption);
  if (form.lbl_Criteria.empty())
    glo.voteText = "   Vote Now";
}

void setCriteria(int assessment, VoteForm& form) {
  const std::size_t a = static_cast<std::size_t>(assessment - 1);
  const AssessmentRecord& record = glo.assessments[a];
  form.lbl_Criteria.resize(static_cast<std::size_t>(std::max(0, glo.labelCount(assessment - 1))));
  for (std::size_t i = 0; i < form.lbl_Criteria.size(); ++i) {
    form.lbl_Criteria[i].Caption = std::to_string(static_cast<int>(i) + record.startFrom) + ".  " +
                                   lineFeedsCleaned(glo.scaleLabels[a][i]);
    form.lbl_Criteria[i].Visible = record.showScaleText;
  }
  glo.startFrom = record.startFrom;
  glo.options = record.startFrom + static_cast<int>(form.lbl_Criteria.size()) - 1;
  glo.limits = 1;
}

}  // namespace

void uctlVotesCast::Initialise() {
  label.Caption = "0";
}

void uctlVotesCast::PlaySound(const std::string& file) const {
  if (!file.empty() && fileExists(file))
    host::host().sound->play(file);
}

void uctlVotesCast::SetVotesCastCount(const std::string& text) {
  const bool digits =
      !text.empty() && text.find_first_not_of("0123456789", text[0] == '-' ? 1 : 0) == std::string::npos;
  label.Caption = digits ? grouped(text) : text;
  if (digits)
    voted = static_cast<int>(qrnVal(text));
}

VoteForm::VoteForm(std::string formName) : Form(std::move(formName)), tmr_grow_(kFrame, [this] { grow(); }) {
  uctl_votesCast.Initialise();
}

void VoteForm::SetVotesCastCount(const std::string& text) {
  uctl_votesCast.SetVotesCastCount(text);
}

void VoteForm::ShowVotesCastControl(bool on) {
  uctl_votesCast.label.Visible = on;
}

void VoteForm::ShowAverageScore(const std::string& text, bool on) {
  lbl_averageScore = {text, on};
}

void VoteForm::ShowBars(bool on) {
  bars.Visible = on;
}

void VoteForm::UpdateBars() {
  bars.counts = CountVotes(glo.startFrom, glo.options);
  bars.abstains = countedVotes().abstains;
  roomAtClose_ = keypadsInRoom();
}

void VoteForm::GrowBars() {
  if (!bars.Visible || host::host().windows == nullptr || !host::host().windows->motionWanted())
    return;
  grown_ = 0;
  growsFrom_ = host::host().clock->microseconds();
  tmr_grow_.setEnabled(true);
}

void VoteForm::grow() {
  const double passed = static_cast<double>(host::host().clock->microseconds() - growsFrom_) / 1000;
  grown_ = look::easedOut(passed / look::kQuick);
  tmr_grow_.setEnabled(grown_ < 1);
  host::host().forms->refresh(name);
}

void VoteForm::ShowKeypads(const WaitingFor& waiting, bool on) {
  waiting_ = on ? std::optional(waiting) : std::nullopt;
}

void VoteForm::ShowStatus(const std::string& line) {
  lbl_status = {line, !line.empty()};
}

void VoteForm::LayOutAgain() {
  question_ = questionOf(*this);
  laidOut_ = false;
}

VoteNow VoteForm::now() const {
  VoteNow now;
  now.closed = closed();
  now.count = uctl_votesCast.label.Visible ? uctl_votesCast.label.Caption
                                           : grouped(std::to_string(uctl_votesCast.voted));
  now.clickable = uctl_votesCast.label.Visible;
  now.voted = uctl_votesCast.voted;
  now.room = now.closed ? roomAtClose_ : keypadsInRoom();
  if (now.room > 0)
    now.room = std::max(now.room, now.voted);  // some have left after their vote
  now.keyboard = keyboardVotes();
  now.waiting = waiting_;
  now.counts = bars.counts;
  now.abstains = bars.abstains;
  now.barsShown = bars.Visible;
  now.grown = grown_;
  if (now.closed && lbl_averageScore.Visible)
    now.average = average;
  now.stats = lbl_averageScore.Visible ? lbl_averageScore.Caption : "";
  now.status = lbl_status.Caption;
  now.joinAddress = now.closed ? "" : joinAddress();
  return now;
}

// Made anew only when something has changed since the last look.
const host::Surface& VoteForm::surface() const {
  VoteNow asked = now();
  if (!asked.joinAddress.empty() && !question_.aside) {
    question_.aside = true;
    laidOut_ = false;
  }
  if (laidOut_ && drawn_ == asked)
    return surface_;
  if (!laidOut_)
    layout_ = layOut(question_);
  laidOut_ = true;
  surface_ = voteModel(question_, layout_, asked);
  drawn_ = std::move(asked);
  return surface_;
}

void DisplayVote(int item, int assessment, int round, VoteForm& form) {
  trapErrors("ChartDisplay", "DisplayVote", [&] {
    const AssessmentRecord& record = glo.assessment(assessment);
    form.displayedItem = item;
    form.displayedAssessment = assessment;
    form.displayedRound = round;
    form.txt_AssNum = std::to_string(assessment - 1);
    form.txt_RiskNum = std::to_string(item);
    form.bgndImage = record.imageFile;
    form.lbl_Risk.Caption = itemCaption(item);
    form.lbl_assessment.Caption =
        lineFeedsCleaned(glo.assessmentTitles[static_cast<std::size_t>(assessment - 1)]);
    form.lbl_assessment.Visible = record.showTitleText;
    setCriteria(assessment, form);
    setVoteTexts(form);
    form.uctl_votesCast.label.Visible = true;
    form.uctl_votesCast.voted = 0;
    form.bars = {};
    form.average.reset();
    form.ShowAverageScore("", false);
    form.ShowKeypads({}, false);
    form.LayOutAgain();
  });
}

}  // namespace qrn

#include "charts/vote_screen/vote_screen.h"

#include <algorithm>

#include "base/text.h"
#include "charts/vote_screen/whole_text.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/host.h"
#include "host/system.h"

namespace qrn {

namespace {

constexpr double kThinnestBar = 45;  // twips of the bar of an option without votes

// Digits in groups of three.
std::string grouped(std::string digits) {
  const std::size_t first = !digits.empty() && digits[0] == '-' ? 1 : 0;
  for (std::size_t at = digits.size(); at > first + 3;) digits.insert(at -= 3, ",");
  return digits;
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
}

VoteForm::VoteForm(std::string formName) : Form(std::move(formName)) {
  uctl_votesCast.Initialise();
}

void VoteForm::SetVotesCastCount(const std::string& text) {
  uctl_votesCast.SetVotesCastCount(text);
  fitCount();
}

void VoteForm::fitCount() {
  const VoteLabel& label = uctl_votesCast.label;
  const WholeText fitted = setWhole(label.Caption, label.Font, label.Width, label.Height);
  if (host::Element* element = surface_.find("uctl_votesCast", 1)) {
    element->caption = fitted.caption;
    element->font = fitted.font;
    element->top = label.Top + (label.Height - fitted.height) / 2;
  }
}

void VoteForm::ShowVotesCastControl(bool on) {
  uctl_votesCast.label.Visible = on;
  showElements("uctl_votesCast", on);
}

void VoteForm::ShowAverageScore(const std::string& text, bool on) {
  lbl_averageScore.Caption = text;
  lbl_averageScore.Visible = on;
  setElement("lbl_averageScore", 0, lbl_averageScore);
}

void VoteForm::ShowBars(bool on) {
  bars.Visible = on;
  for (const char* array : {"bar", "barMark", "barNumber"}) showElements(array, on);
}

void VoteForm::UpdateBars() {
  std::vector<int> counts = CountVotes(glo.startFrom, glo.options);
  if (counts == bars.counts)
    return;
  bars.counts = std::move(counts);
  const int most = bars.counts.empty() ? 0 : *std::max_element(bars.counts.begin(), bars.counts.end());
  for (std::size_t i = 0; i < bars.counts.size(); ++i) {
    host::Element* bar = surface_.find("bar", static_cast<int>(i));
    host::Element* mark = surface_.find("barMark", static_cast<int>(i));
    if (bar == nullptr || mark == nullptr)
      continue;
    bar->width = std::max(kThinnestBar, most > 0 ? barSpan_ * bars.counts[i] / most : 0.0);
    mark->left = bar->left + bar->width + 90;
    mark->caption = BarMark(bars.counts[i], bars.total(), glo.graphPercentOrNumber);
  }
}

void VoteForm::ShowKeypads(const std::string& title, const std::string& text, bool on) {
  lbl_kpadsTitle.Caption = title;
  const WholeText fitted = setWhole(text, lbl_kpads.Font, lbl_kpads.Width, lbl_kpads.Height);
  lbl_kpads.Caption = text;
  lbl_kpadsTitle.Visible = lbl_kpads.Visible = on;
  setElement("uctl_kpadsNotVoted", 1, lbl_kpadsTitle);
  setElement("uctl_kpadsNotVoted", 2, lbl_kpads);
  if (host::Element* element = surface_.find("uctl_kpadsNotVoted", 2)) {
    element->caption = fitted.caption;
    element->font = fitted.font;
  }
  if (host::Element* panel = surface_.find("uctl_kpadsNotVoted", 0)) {
    panel->visible = on;
    panel->height = lbl_kpads.Top + fitted.height - panel->top + 90;
  }
}

void VoteForm::ShowStatus(const std::string& line) {
  lbl_status.Caption = line;
  lbl_status.Visible = !line.empty();
  const WholeText fitted = setWhole(line, lbl_status.Font, lbl_status.Width, places_.status.Height);
  setElement("lbl_status", 0, lbl_status);
  if (host::Element* element = surface_.find("lbl_status", 0)) {
    element->caption = fitted.caption;
    element->font = fitted.font;
    element->height = fitted.height;
  }
}

void VoteForm::setElement(const char* array, int index, const VoteLabel& label) {
  if (host::Element* element = surface_.find(array, index)) {
    element->caption = label.Caption;
    element->visible = label.Visible;
  }
}

void VoteForm::showElements(const std::string& array, bool on) {
  if (host::ElementArray* elements = surface_.find(array))
    for (host::Element& element : *elements) element.visible = on;
}

void DisplayVote(int item, int assessment, int round, VoteForm& form) {
  trapErrors("ChartDisplay", "DisplayVote", [&] {
    const AssessmentRecord& record = glo.assessment(assessment);
    form.displayedItem = item;
    form.displayedAssessment = assessment;
    form.displayedRound = round;
    form.txt_AssNum = std::to_string(assessment - 1);
    form.txt_RiskNum = std::to_string(item);
    form.bgndImage = !record.imageFile.empty() && fileExists(record.imageFile) ? record.imageFile : "";
    form.lbl_Risk.Caption = itemCaption(item);
    form.lbl_Risk.Visible = true;
    form.lbl_assessment.Caption =
        lineFeedsCleaned(glo.assessmentTitles[static_cast<std::size_t>(assessment - 1)]);
    form.lbl_assessment.Visible = record.showTitleText;
    setCriteria(assessment, form);
    setVoteTexts(form);
    form.uctl_votesCast.label.Visible = true;
    form.bars = {};
    form.lbl_averageScore.Caption.clear();
    form.lbl_averageScore.Visible = false;
    form.lbl_kpadsTitle.Visible = form.lbl_kpads.Visible = false;
    form.LayOutAgain();
  });
}

}  // namespace qrn

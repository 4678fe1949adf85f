#include "analysis/weighting_selector.h"

#include "core/edit.h"
#include "core/glo.h"
#include "host/dialogs.h"
#include "host/host.h"

namespace qrn {

namespace {

constexpr int kMostWeight = 32767;  // that the exercise text holds

}  // namespace

weightingSelector::weightingSelector() : ControlForm(kWeightingForm) {
  title = "Weightings";
  controls = {{.kind = host::Control::Kind::note,
               .caption = "How much each assessment counts in the weighted cumulative averages."}};
  for (int a = 1; a <= kAssessments; ++a) {
    const AssessmentInfoRecord& info = glo.running(a);
    weight[static_cast<std::size_t>(a - 1)] = info.weight;
    weightingOn[static_cast<std::size_t>(a - 1)] = info.weightingOn;
    if (info.active)
      addRow(a);
  }
  controls.push_back({.kind = host::Control::Kind::button,
                      .name = "cmd_reset",
                      .caption = "Reset all to 1",
                      .pressed = [this] { cmd_reset_Click(); }});
}

void weightingSelector::addRow(int assessment) {
  using Control = host::Control;
  const auto a = static_cast<std::size_t>(assessment - 1);
  const std::string number = std::to_string(assessment);
  controls.push_back({.kind = Control::Kind::check,
                      .name = "CheckAssessWeighting" + number,
                      .caption = glo.assessmentTitles[a],
                      .value = host::flag(weightingOn[a])});
  controls.push_back({.kind = Control::Kind::number,
                      .name = "LabelAssessweighting" + number,
                      .caption = "Weight",
                      .value = host::number(weight[a]),
                      .low = 1,
                      .high = kMostWeight,
                      .subject = "The weight of " + glo.assessmentTitles[a],
                      .place = Control::Place::beside});
  for (const int by : {-1, 1})
    controls.push_back({.kind = Control::Kind::button,
                        .name = (by < 0 ? "lighter" : "heavier") + number,
                        .caption = by < 0 ? "\u2212" : "+",
                        .pressed = [this, assessment, by] { step(assessment, by); },
                        .help = by < 0 ? "One less" : "One more",
                        .place = Control::Place::beside});
}

void weightingSelector::step(int assessment, int by) {
  int& value = weight[static_cast<std::size_t>(assessment - 1)];
  if (value + by < 1)
    host::host().dialogs->MsgBox("The minimum premitted weighting is 1", host::kTitle, host::Buttons::ok,
                                 host::Icon::information);
  else if (value + by <= kMostWeight)
    value += by;
}

void weightingSelector::cmd_reset_Click() {
  const host::Answer answer =
      host::host().dialogs->MsgBox("This will reset all weightings to 1. Would you like to proceed?",
                                   host::kTitle, host::Buttons::yesNo, host::Icon::question);
  if (answer == host::Answer::yes)
    weight.fill(1);
}

std::string weightingSelector::take() {
  Edit edit("Weightings");
  for (std::size_t a = 0; a < kAssessments; ++a) {
    glo.assessmentInfo[a].weight = weight[a];
    glo.assessmentInfo[a].weightingOn = weightingOn[a];
  }
  edit.commit();
  return "";
}

void registerWeightingForm() {
  host::host().forms->define(kWeightingForm, [] { return std::make_unique<weightingSelector>(); });
}

}  // namespace qrn

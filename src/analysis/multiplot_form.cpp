#include "analysis/multiplot_form.h"

#include <algorithm>
#include <vector>

#include "core/edit.h"
#include "core/glo.h"
#include "host/dialogs.h"
#include "host/host.h"

namespace qrn {

namespace {

using Control = host::Control;

constexpr std::size_t kLongestTitle = 52;  // letters of an assessment on its box
constexpr const char *kQuotient = "Quotient (a / b / c ...)", *kReversed = "Quotient (c / b / a ...)";

// The assessments in use, from 0, as they are voted.
std::vector<std::size_t> runningOrder() {
  std::vector<std::size_t> order;
  for (std::size_t a = 0; a < kAssessments; ++a)
    if (glo.assessmentInfo[a].active)
      order.push_back(a);
  std::stable_sort(order.begin(), order.end(), [](std::size_t a, std::size_t b) {
    return glo.assessmentInfo[a].votingOrder < glo.assessmentInfo[b].votingOrder;
  });
  return order;
}

std::string boxCaption(std::size_t assessment, const std::string& title) {
  std::size_t end = std::min(kLongestTitle, title.size());
  while (end < title.size() && (static_cast<unsigned char>(title[end]) & 0xC0U) == 0x80U)
    --end;  // whole letters
  return "A" + std::to_string(assessment + 1) + ": " + title.substr(0, end) +
         (end < title.size() ? "..." : "");
}

}  // namespace

multiplot::multiplot() : ControlForm(kMultiPlotForm), plots_{glo.multiPlot[0], glo.multiPlot[1]} {
  title = "MultiPlots";
  for (int plot = 0; plot < 2; ++plot)
    names_[static_cast<std::size_t>(plot)] = glo.assessmentTitles[titleOf(plot)];
  for (std::size_t a = 0; a < kAssessments; ++a) titles_[a] = glo.assessmentTitles[a];
  controls = {{.kind = Control::Kind::choice,
               .name = "opt_multiPlot",
               .caption = "Plot",
               .value = {[this] { return std::to_string(shown_); },
                         [this](const std::string& place) {
                           opt_multiPlot_Click(place == "1" ? 1 : 0);
                           return true;
                         }},
               .choices = {"Multi plot 1", "Multi plot 2"}},
              {.kind = Control::Kind::check,
               .name = "chk_multiPlotOn",
               .caption = "Enabled",
               .value = host::flag(now_.Enabled),
               .place = Control::Place::beside},
              {.kind = Control::Kind::text,
               .name = "txt_multiPlotName",
               .caption = "Name",
               .value = host::text(name_)}};
  addBoxes();
  addKind();
  showPlot(0);
}

void multiplot::addKind() {
  controls.push_back(
      {.kind = Control::Kind::choice,
       .name = "opt_plotType",
       .caption = "Value",
       .value = host::number(now_.PlotType),
       .choices = {"Cumulative", "Highest", "Lowest", "Product", "Cumulative average", kQuotient}});
  controls.push_back({.kind = Control::Kind::check,
                      .name = "chkReverseDivisionOrder",
                      .caption = "Reverse Order",
                      .value = {[this] { return std::string(now_.ReverseCalc ? "-1" : "0"); },
                                [this](const std::string& on) {
                                  const bool taken = host::flag(now_.ReverseCalc).set(on);
                                  chkReverseDivisionOrder_Click();
                                  return taken;
                                }},
                      .enabled = [this] { return now_.PlotType == 5; },
                      .help = "Reverse the order of division",
                      .place = Control::Place::beside});
}

// A box and a label for each part that the plot can have.
void multiplot::addBoxes() {
  std::vector<std::size_t> parts = runningOrder();
  parts.push_back(kOther);
  for (const std::size_t part : parts) {
    controls.push_back({.kind = Control::Kind::check,
                        .name = "chk_assessment" + std::to_string(part),
                        .caption = part == kOther ? "" : boxCaption(part, titles_[part]),
                        .value = host::flag(now_.Assessments[part])});
    controls.push_back({.kind = Control::Kind::text,
                        .name = "txt_assessmentLabel" + std::to_string(part),
                        .caption = "Label",
                        .value = host::text(now_.ToolTips[part]),
                        .place = Control::Place::beside});
  }
}

void multiplot::showPlot(int plot) {
  shown_ = plot;
  now_ = plots_[static_cast<std::size_t>(plot)];
  name_ = names_[static_cast<std::size_t>(plot)];
  find("chk_assessment" + std::to_string(kOther))->caption = names_[static_cast<std::size_t>(1 - plot)];
  chkReverseDivisionOrder_Click();
}

void multiplot::SaveMultiPlotSettings(int plot, bool& ok) {
  MultiPlotRecord& record = plots_[static_cast<std::size_t>(plot)];
  names_[static_cast<std::size_t>(plot)] = name_;
  record.Enabled = now_.Enabled;
  record.Assessments = now_.Assessments;
  for (std::size_t part = 0; part < kBoxes; ++part)
    record.ToolTips[part] =
        !now_.ToolTips[part].empty() || part == kOther ? now_.ToolTips[part] : titles_[part];
  ok = !record.Enabled ||
       std::count(record.Assessments.begin(), record.Assessments.begin() + kBoxes, true) > 0;
  if (!ok) {
    host::host().dialogs->MsgBox("You must select at least one assessment", "quorin");
    return;
  }
  record.PlotType = now_.PlotType;
  record.ReverseCalc = now_.ReverseCalc;
}

void multiplot::opt_multiPlot_Click(int plot) {
  bool ok = true;
  if (plot != shown_)
    SaveMultiPlotSettings(shown_, ok);
  if (ok)
    showPlot(plot);
}

void multiplot::chkReverseDivisionOrder_Click() {
  find("opt_plotType")->choices.back() = now_.ReverseCalc ? kReversed : kQuotient;
}

std::string multiplot::take() {
  bool ok = false;
  SaveMultiPlotSettings(shown_, ok);
  if (!ok)
    return "An enabled plot needs an assessment.";
  Edit edit("MultiPlots");
  for (int plot = 0; plot < 2; ++plot) {
    glo.multiPlot[static_cast<std::size_t>(plot)] = plots_[static_cast<std::size_t>(plot)];
    glo.assessmentTitles[titleOf(plot)] = names_[static_cast<std::size_t>(plot)];
  }
  edit.commit();
  return "";
}

void registerMultiPlotForm() {
  host::host().forms->define(kMultiPlotForm, [] { return std::make_unique<multiplot>(); });
}

}  // namespace qrn

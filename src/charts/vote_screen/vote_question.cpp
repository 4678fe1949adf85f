// From a form and the exercise to the plain question that the picture is made of.
#include <algorithm>

#include "charts/vote_screen/vote_screen.h"
#include "core/common.h"
#include "core/glo.h"
#include "core/layout.h"
#include "core/model.h"
#include "host/controller.h"
#include "host/host.h"
#include "host/presentation.h"

namespace qrn {

namespace {

// Item `item` among those that are voted, from 1; {0, 0} for one that is not.
std::pair<int, int> placeInList(int item) {
  int at = 0, of = 0;
  for (int i = 0; i < glo.itemCount(); ++i) {
    if (!glo.risks[static_cast<std::size_t>(i)].voting)
      continue;
    ++of;
    if (i == item)
      at = of;
  }
  return at > 0 ? std::pair(at, of) : std::pair(0, 0);
}

// Key and text of a caption "n.  text".
VoteOption optionOf(const std::string& caption) {
  const std::size_t stop = caption.find(".  ");
  return stop == std::string::npos ? VoteOption{"", caption, -1}
                                   : VoteOption{caption.substr(0, stop), caption.substr(stop + 3), -1};
}

// The colours of the presentation's own type are no choice of the exercise.
void forgetMasterColours(AssessmentRecord& record) {
  if (glo.oPresentation == nullptr)
    return;
  const auto title = glo.oPresentation->MasterTitleFont(), body = glo.oPresentation->MasterBodyFont();
  if (title && record.titleFont.colour == title->colour)
    record.titleFont.colour = 0;
  if (body && record.font2.colour == body->colour)
    record.font2.colour = 0;
}

void addOptions(const VoteForm& form, const AssessmentRecord& record, VoteQuestion& question) {
  for (std::size_t i = 0; i < form.lbl_Criteria.size(); ++i) {
    VoteOption option = optionOf(form.lbl_Criteria[i].Caption);
    const std::size_t point = std::min(i, record.pointColours.size() - 1);
    if (!isDefaultPointColour(point, record.pointColours[point]))
      option.colour = record.pointColours[point];
    question.options.push_back(std::move(option));
  }
  question.showOptions = form.lbl_Criteria.empty() || form.lbl_Criteria.front().Visible;
}

}  // namespace

VoteQuestion questionOf(const VoteForm& form) {
  VoteQuestion question;
  question.width = form.ScaleWidth;
  question.height = form.ScaleHeight;
  host::Surface behind;
  setGraphBackground(behind, form.bgndImage);
  question.ground = behind;
  question.look = chooseLook(behind);
  if (form.displayedAssessment < 1)
    return question;
  const auto a = static_cast<std::size_t>(form.displayedAssessment - 1);
  question.stored = fitted(glo.assessments[a], glo.layoutScreen, {form.ScaleWidth, form.ScaleHeight});
  forgetMasterColours(question.stored);
  question.scale = form.lbl_assessment.Visible ? form.lbl_assessment.Caption : "";
  question.item = form.lbl_Risk.Caption;
  std::tie(question.at, question.of) = placeInList(form.displayedItem);
  addOptions(form, question.stored, question);
  question.bars = glo.runByShowBarGraph != 0;
  question.percentOrNumber = glo.graphPercentOrNumber;
  const bool stats = glo.CheckAverageScoreIndicator == 1;
  if (stats || glo.opt_abstain) {  // how to abstain stands there while the vote runs
    question.statsCorner = glo.opt_StatsBoxPosition.empty() ? "TR" : glo.opt_StatsBoxPosition;
    question.statsLines = glo.opt_abstain ? 5 : 4;
  }
  question.aside = stats || !joinAddress().empty();
  return question;
}

int keypadsInRoom() {
  return static_cast<int>(std::count_if(glo.activeKeypads.begin(), glo.activeKeypads.end(),
                                        [](const std::string& keypad) { return !keypad.empty(); }));
}

std::string joinAddress() {
  const host::ControllerLink* link = host::host().controller;
  if (link == nullptr || !link->linked())
    return "";
  const host::RoomState room = link->room();
  return room.takesPhones && (room.phones > 0 || room.rehearse == 0) ? room.address : "";
}

}  // namespace qrn

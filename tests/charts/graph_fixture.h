// An exercise with votes for the graph tests, in a world without windows.
#pragma once

#include <string>
#include <vector>

#include "core/glo.h"
#include "core/item_label.h"
#include "core/model.h"
#include "host/surface.h"
#include "support/test_host.h"

namespace qrn::test {

class GraphExercise {
 protected:
  GraphExercise() {
    glo = Glo{};
    initXYVote();
    glo.listTitle = "Workshop";
    glo.voteRecords.assign("");
    glo.postalRecords.assign("");
    for (std::size_t a = 0; a < kAssessments; ++a) glo.assessmentInfo[a].active = false;
  }

  void addItems(int count) {
    glo.risks.assign(static_cast<std::size_t>(count) + 1, RiskRecord{});
    for (int i = 0; i < count; ++i) {
      RiskRecord& risk = glo.risks[static_cast<std::size_t>(i)];
      risk.ID = risk.sortKey = i;
      risk.identifier = itemIdentifier(i);
      risk.text = "item " + std::to_string(i);
      risk.voting = true;
      risk.active.fill(true);
    }
  }

  // Scale of `points` points named s1, s2 ... (assessment counted from 1).
  void addScale(int assessment, const std::string& title, int points, int startFrom = 1) {
    const auto a = static_cast<std::size_t>(assessment - 1);
    glo.scaleLabels[a].clear();
    for (int i = 1; i <= points; ++i) glo.scaleLabels[a].push_back("s" + std::to_string(i));
    glo.scaleLabels[a].emplace_back();
    glo.assessments[a].scalePointCount = points;
    glo.assessments[a].startFrom = startFrom;
    glo.assessmentTitles[a] = title;
    glo.assessmentInfo[a].active = true;
  }

  // Votes of the keypads in order, as in "4;5;-;".
  void vote(int item, int assessment, const std::string& votes) {
    glo.voteRecords.append("14/03/2026,09:00:00," + votes + "," +
                           std::to_string(glo.risks[static_cast<std::size_t>(item)].sortKey) + "C" +
                           std::to_string(assessment) + "\r\n");
  }

  static std::vector<const host::Element*> all(const host::Surface& surface, const std::string& array,
                                               bool visibleOnly = true) {
    std::vector<const host::Element*> found;
    if (const host::ElementArray* elements = surface.find(array))
      for (const host::Element& element : *elements)
        if (element.visible || !visibleOnly)
          found.push_back(&element);
    return found;
  }

  static std::vector<std::string> captions(const host::Surface& surface, const std::string& array) {
    std::vector<std::string> texts;
    for (const host::Element* element : all(surface, array)) texts.push_back(element->caption);
    return texts;
  }

  TestHost world;
};

class GraphWorld : public ::testing::Test, protected GraphExercise {};

}  // namespace qrn::test

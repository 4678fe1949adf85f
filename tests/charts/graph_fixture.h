// An exercise with votes for the graph tests, in a world without windows.
#pragma once

#include <string>
#include <vector>

#include "core/glo.h"
#include "core/model.h"
#include "host/surface.h"
#include "support/run_case.h"

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

  static void addItems(int count) { test::addItems(count); }
  static void addScale(int assessment, const std::string& title, int points, int startFrom = 1) {
    test::addScale(assessment, title, points, startFrom);
  }
  static void vote(int item, int assessment, const std::string& votes) { addVote(item, assessment, votes); }

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

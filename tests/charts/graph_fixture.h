// An exercise with votes for the graph tests, in a world without windows.
#pragma once

#include <string>
#include <vector>

#include "core/glo.h"
#include "core/model.h"
#include "host/panel.h"
#include "host/surface.h"
#include "support/drawing.h"
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

// A graph told in case files.
class GraphCase : public RunCase {
 protected:
  GraphCase() {
    glo.voteRecords.assign("");
    glo.postalRecords.assign("");
    on("plots", [](const Words& words) { addItems(words.number(0)); });
    // scale ASSESSMENT TITLE POINTS [FROM]
    on("scale", [](const Words& words) {
      addScale(words.number(0), words[1], words.number(2), words.size() > 3 ? words.number(3) : 1);
    });
    // captions ARRAY ...: of its visible elements, and how many are hidden
    on("captions", [this](const Words& words) {
      for (const std::string& array : words) tellCaptions(array);
    });
    on("drawing", [this](const Words& words) { tell(drawingOf(surface(), words)); });
    on("tip", [this](const Words& words) {
      const host::Element* e = surface().find(words[0], 0);
      tell(e == nullptr ? "not there" : e->toolTip);
    });
  }
  virtual const host::Surface& surface() = 0;
  void tellCaptions(const std::string& array) {
    std::string all;
    int hidden = 0;
    if (const host::ElementArray* elements = surface().find(array))
      for (const host::Element& element : *elements)
        element.visible ? all += " " + (element.caption.empty() ? "." : element.caption)
                        : all += (++hidden, "");
    tell(array, ":", all, (hidden > 0 ? " and " + std::to_string(hidden) + " hidden" : ""));
  }
  void tellRows(const host::Panel& list) {
    tell(list.columns.at(0).title, ":");
    for (const host::PanelRow& row : list.rows()) tell(row.cells[0]);
  }
};

class GraphWorld : public ::testing::Test, protected GraphExercise {};

}  // namespace qrn::test

// A scripted presentation with an exercise and probe forms, for tests of a run's start and end.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/glo.h"
#include "core/model.h"
#include "core/run/end_program.h"
#include "core/run/entry.h"
#include "core/windows/blank_form.h"
#include "core/windows/presentation_windows.h"
#include "store/exercise_text.h"
#include "store/progress_log.h"
#include "support/test_host.h"
#include "vote/link/comms.h"

namespace qrn {

inline constexpr const char* kVote = "1/1/2026,9:00:00,5;6;,1C1\r\n";

class EntryTest : public ::testing::Test {
 protected:
  EntryTest() {
    glo = Glo{};
    world.program.showRuns = true;
    world.program.show.index = 2;
    world.link.canShare = world.link.canStart = false;
    registerComms();
    registerBlankForm();
    for (const char* name : {"Wizard", "xyVoteRuntime", "xyVoteAverageGraph", "xyVoteGraph"}) define(name);
    entryHooks() = EntryHooks{[this] { ++votes; }, {}, {}};
  }
  ~EntryTest() override { entryHooks() = EntryHooks{}; }

  struct Probe : host::Form {
    Probe(const std::string& formName, std::vector<std::string>& log) : host::Form(formName), log_(log) {
      log_.push_back(formName);
    }
    std::vector<std::string>& log_;
  };
  void define(const std::string& name) {
    world.forms.define(name, [this, name] { return std::make_unique<Probe>(name, loaded); });
  }

  // The text of an exercise with `items` items.
  std::string exercise(int items) {
    glo = Glo{};
    glo.oPresentation = &world.presentation;
    initXYVote();
    glo.listTitle = "Risks";
    glo.assessments[0].lbl_Risk = {1536, 0, 7680, 5760};
    glo.risks.assign(static_cast<std::size_t>(items) + 1, RiskRecord{});
    for (int i = 0; i < items; ++i) {
      RiskRecord& risk = glo.risks[static_cast<std::size_t>(i)];
      risk.text = "Item " + std::to_string(i);
      risk.ID = i;
      risk.sortKey = i + 1;
      risk.voting = true;
    }
    return writeExercise(glo);
  }
  test::MemoryTags& slideTags() { return world.presentation.slide(2).tagStore; }
  test::MemoryTags& tags() { return world.presentation.tagStore; }
  void storeExercise(const std::string& votesText = "") {
    slideTags().Add("qrnMatrix", exercise(2));
    slideTags().Add("QRNVOTES", votesText);
  }
  void storeLog(bool finished) {
    slideTags().Add("qrnMatrixLog", "category = 1\r\nassessment = 1\r\nrisk = 1\r\nprocess finished = " +
                                        std::string(finished ? "True" : "False") + "\r\nrisk list\r\n");
  }
  std::string errorLog() { return world.files.files["/appdata/quorin/Err.log"]; }
  void closeFormAt(double seconds, const std::string& name) {
    world.at(seconds, [this, name] { world.forms.unload(name); });
  }

  test::TestHost world;
  std::vector<std::string> loaded;  // probe forms, in the order of loading
  int votes = 0;
};

}  // namespace qrn

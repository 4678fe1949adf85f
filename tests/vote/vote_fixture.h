// A small exercise on a slide, a controller that answers, and a facilitator at the keys.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "core/common.h"
#include "core/glo.h"
#include "core/model.h"
#include "store/vote_store.h"
#include "support/test_host.h"
#include "vote/link/comms.h"
#include "vote/link/keypad_arrays.h"
#include "vote/xy_vote_runtime.h"

namespace qrn {

class VoteExercise {
 protected:
  VoteExercise() {
    glo = Glo{};
    glo.oPresentation = &world.presentation;
    glo.oVoteSlide = &world.presentation.Slides(1);
    glo.appPath = "/install/";
    initXYVote();
    glo.risks.resize(4);
    const char* texts[] = {"Fire", "Flood", "Theft"};
    for (int i = 0; i < 3; ++i) {
      RiskRecord& risk = glo.risks[static_cast<std::size_t>(i)];
      risk.text = texts[i];
      risk.ID = i;
      risk.sortKey = 10 + i;
      risk.voting = true;
    }
    for (std::size_t a = 0; a < 2; ++a) {
      glo.assessmentInfo[a].active = true;
      glo.scaleLabels[a] = {"low", "some", "middle", "much", "high", ""};
    }
    glo.assessmentTitles[0] = "Impact";
    glo.assessmentTitles[1] = "Likelihood";
    glo.CheckAutoSave = 0;
    glo.baseType = "HW";
    glo.keypadsNotVotedHi = 4;
    glo.activeKeypads = {"1", "2", "3"};
    registerComms();
    registerVoteForms();
    world.link.onSend = [this](const std::string& command) {
      if (command == "StartVote")
        opened();
    };
  }

  xyVoteRuntime& runtime() { return host::host().forms->as<xyVoteRuntime>("xyVoteRuntime"); }
  void key(int code, int shift = 0) { runtime().Form_KeyDown(code, shift); }
  void keyAt(double seconds, int code) {
    world.at(seconds, [this, code] { key(code); });
  }
  // The quit options answered, once they stand.
  void chooseAt(double seconds, xyVoteQuitOptions::Option option, int item = 0) {
    world.at(seconds, [option, item] {
      ASSERT_TRUE(host::host().forms->isVisible("xyVoteQuitOptions"));
      auto& dialog = host::host().forms->as<xyVoteQuitOptions>("xyVoteQuitOptions");
      dialog.List1.select(item);
      dialog.choose(option);
    });
  }
  void press(int keypad, const std::string& vote) {
    world.link.says("[1]," + std::to_string(keypad) + ";" + vote);
  }
  // Keypads 1, 2, 3 vote at once; the facilitator closes, looks at the result and goes on.
  void voteAndGoOn(const std::string& votes = "345") {
    world.at(0.2, [this, votes] {
      for (std::size_t i = 0; i < votes.size(); ++i) press(static_cast<int>(i) + 1, std::string(1, votes[i]));
    });
    keyAt(1, host::key::space);
    keyAt(2, host::key::space);
  }
  // Each opened vote follows the next script; without one the ordinary vote.
  void opened() {
    const std::size_t nth = opens++;
    if (nth < scripts.size() && scripts[nth])
      scripts[nth]();
    else
      voteAndGoOn();
  }

  std::string records() { return world.presentation.Slides(1).tags().Item("QRNVOTES"); }
  // "3;4;5;-; 10C1" for each record.
  std::vector<std::string> saved() {
    std::vector<std::string> lines, result;
    SplitPPTTag(records(), "\r\n", lines);
    for (const std::string& line : lines) result.push_back(getField(line, 3) + " " + getField(line, 4));
    return result;
  }
  std::vector<std::string> savedKeys() {
    std::vector<std::string> keys;
    for (const std::string& line : saved()) keys.push_back(line.substr(line.find(' ') + 1));
    return keys;
  }
  std::string outcome() { return world.presentation.tags().Item("qrnVoteTerminated"); }

  test::TestHost world;
  std::vector<std::function<void()>> scripts;
  std::size_t opens = 0;
};

class VoteFixture : public ::testing::Test, protected VoteExercise {
 protected:
  // Nobody is left waiting: a whole run takes less than two simulated minutes.
  void TearDown() override { EXPECT_LT(world.clock.micros, std::int64_t{120} * 1000000); }
};

}  // namespace qrn

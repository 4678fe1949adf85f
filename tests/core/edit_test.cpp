// The door for edits: what is undone and done again, what it leaves alone, and who is told.
#include "core/edit.h"

#include <map>
#include <random>

#include "core/glo.h"
#include "core/model.h"
#include "store/exercise_text.h"
#include "support/test_host.h"

namespace qrn {
namespace {

class EditTest : public ::testing::Test {
 protected:
  EditTest() {
    glo = Glo{};
    initXYVote();
    for (const char* text : {"Fire", "Flood", "Theft"}) addItem(text);
    exerciseHistory().begin();
  }
  void addItem(const std::string& text) {
    RiskRecord& risk = glo.risks.back();
    risk.text = text;
    risk.ID = glo.itemCount();
    risk.sortKey = ++lastKey;
    risk.voting = true;
    glo.risks.emplace_back();
  }
  test::TestHost world;
  int lastKey = 0;
};

// Any walk of edits, undos, redos and votes, against the plain list of texts that it has gone through.
TEST_F(EditTest, undoAndRedoGiveTheExerciseBackAndLeaveVotesAlone) {
  std::mt19937 dice(2026);
  const auto upTo = [&](std::size_t count) { return static_cast<std::size_t>(dice() % count); };
  const std::vector<std::function<void()>> changes{
      [&] { addItem("Item \"" + std::to_string(lastKey) + "\""); },
      [&] { glo.risks.erase(glo.risks.begin() + static_cast<std::ptrdiff_t>(upTo(glo.risks.size() - 1))); },
      [&] { std::shuffle(glo.risks.begin(), glo.risks.end() - 1, dice); },
      [&] {
        glo.risks[0].owners = {"Ann", ""};
      },
      [&] { glo.categories.insert(glo.categories.end() - 1, CategoryRecord{}); },
      [&] {
        glo.scaleLabels[2] = {"low", std::to_string(dice()), ""};
      },
      [&] { glo.assessments[3].lbl_Risk.left = static_cast<float>(dice() % 1000); },
      [&] { glo.onFinish = 1 - glo.onFinish; },
      [&] {}};
  std::vector<std::string> texts{writeExercise(glo)};
  std::size_t at = 0;
  std::map<int, float> scores;
  float vote = 0;
  for (int step = 0; step < 2000; ++step) {
    switch (upTo(4)) {
      case 0:
        EXPECT_EQ(exerciseHistory().undo(), at > 0);
        at -= at > 0 ? 1 : 0;
        break;
      case 1:
        EXPECT_EQ(exerciseHistory().redo(), at + 1 < texts.size());
        at += at + 1 < texts.size() ? 1 : 0;
        break;
      case 2:
        for (int i = 0; i < glo.itemCount(); ++i) {
          RiskRecord& risk = glo.risks[static_cast<std::size_t>(i)];
          scores[risk.sortKey] = risk.average[0] = ++vote;
        }
        break;
      default: {
        Edit edit("Step");
        if (glo.itemCount() < 2)
          addItem("Another");
        changes[upTo(changes.size())]();
        if (upTo(5) == 0)
          break;  // given up
        if (edit.commit()) {
          texts.resize(++at);
          texts.push_back(writeExercise(glo));
        }
      }
    }
    ASSERT_EQ(writeExercise(glo), texts[at]) << "step " << step;
    for (int i = 0; i < glo.itemCount(); ++i)
      ASSERT_EQ(glo.risks[static_cast<std::size_t>(i)].average[0],
                scores[glo.risks[static_cast<std::size_t>(i)].sortKey]);
  }
  while (exerciseHistory().undo()) {
  }
  EXPECT_EQ(writeExercise(glo), texts.front());
  while (exerciseHistory().redo()) {
  }
  EXPECT_EQ(writeExercise(glo), texts.back());
  EXPECT_GT(texts.size(), 5U);
}

}  // namespace
}  // namespace qrn

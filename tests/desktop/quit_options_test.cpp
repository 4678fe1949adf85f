#include <QPushButton>
#include <QTreeView>

#include "core/glo.h"
#include "core/model.h"
#include "desktop/form_windows.h"
#include "desktop/window_world.h"
#include "vote/xy_vote_runtime.h"

namespace {

using namespace qrn;

class QuitOptions : public ::testing::Test {
 protected:
  QuitOptions() {
    glo = Glo{};
    initXYVote();
    glo.risks.resize(4);
    for (std::size_t i = 0; i < 3; ++i) {
      glo.risks[i].text = "item";
      glo.risks[i].ID = static_cast<int>(i);
      glo.risks[i].voting = true;
    }
    for (std::size_t a = 0; a < 2; ++a) glo.assessmentInfo[a].active = true;
    registerVoteForms();
    desktop::attachFormWindows(world.forms, stack);
  }
  // Shows the dialog as the vote does, types the keys, and returns what was chosen.
  xyVoteQuitOptions& answer(const std::vector<Qt::Key>& keys) {
    world.forms.unload("xyVoteQuitOptions");
    world.at(0.05, [this, keys] {
      for (const Qt::Key key : keys) QTest::keyClick(stack.front()->focusWidget(), key);
    });
    world.forms.showModal("xyVoteQuitOptions");
    return world.forms.as<xyVoteQuitOptions>("xyVoteQuitOptions");
  }

  desktop::WindowStack stack;
  test::WindowWorld world;
};

TEST_F(QuitOptions, KeysChooseAndEscAlwaysContinues) {
  EXPECT_EQ(answer({Qt::Key_Escape}).chosen, xyVoteQuitOptions::continueVoting);
  EXPECT_EQ(answer({Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}).chosen, xyVoteQuitOptions::quitAllVotes);
  EXPECT_EQ(answer({Qt::Key_3}).chosen, xyVoteQuitOptions::restartThisVote);
  world.at(0.05, [this] { stack.front()->close(); });
  world.forms.unload("xyVoteQuitOptions");
  world.forms.showModal("xyVoteQuitOptions");
  EXPECT_EQ(world.forms.as<xyVoteQuitOptions>("xyVoteQuitOptions").chosen, xyVoteQuitOptions::continueVoting);
}

TEST_F(QuitOptions, TabReachesTheTargetsOfGoTo) {
  const auto& form =
      answer({Qt::Key_Tab, Qt::Key_PageDown, Qt::Key_Up, Qt::Key_Tab, Qt::Key_End, Qt::Key_Return});
  EXPECT_EQ(form.chosen, xyVoteQuitOptions::goTo);
  EXPECT_EQ(glo.jumpItem, 1);
  EXPECT_EQ(glo.jumpAssessment, 2);
}

TEST_F(QuitOptions, ShowsWhatItWillDoAndAsksForATargetOfItsOwn) {
  const char* target = "1 Go to...; Go to; List1";  // the row, the first button, where the keyboard is
  const std::pair<std::vector<Qt::Key>, const char*> cases[] = {
      {{}, "4 Continue voting; Continue voting; options"},
      {{Qt::Key_1}, target},
      {{Qt::Key_Home, Qt::Key_Return}, target},
      {{Qt::Key_Tab, Qt::Key_End}, target},
      {{Qt::Key_Down}, "5 Go to graph; Go to graph; options"}};
  for (const auto& [keys, wanted] : cases) {
    world.at(0.06, [&, wanted = wanted] {
      QWidget& window = *stack.front();
      const auto rows = window.findChild<QTreeView*>("options")->selectionModel()->selectedRows();
      const QStringList seen{rows[0].data().toString(),
                             window.findChild<QPushButton*>("primary")->text().remove('&'),
                             window.focusWidget()->objectName()};
      EXPECT_EQ(seen.join("; "), wanted);
      QTest::keyClick(&window, Qt::Key_Escape);
    });
    answer(keys);
  }
}

TEST_F(QuitOptions, WhatHasVotesIsVotedAgainOnlyWhenThatIsConfirmed) {
  glo.votesCast = 2;
  const char* question = "item has votes already. Vote it again?";
  world.expectMsgBox(question, host::Answer::no);
  EXPECT_EQ(answer({Qt::Key_1, Qt::Key_Return, Qt::Key_Escape}).chosen, xyVoteQuitOptions::continueVoting);
  world.expectMsgBox(question, host::Answer::yes);
  EXPECT_EQ(answer({Qt::Key_1, Qt::Key_Return}).UserResult, VoteOutcome::jump);
}

TEST_F(QuitOptions, StandsOverTheVoteAndGoesBeforeIt) {
  world.forms.show("xyVoteRuntime");
  EXPECT_EQ(answer({Qt::Key_Escape}).UserResult, VoteOutcome::none);
  EXPECT_EQ(stack.front(), stack.formWindow("xyVoteRuntime"));
  world.forms.unload("xyVoteRuntime");
  world.forms.unload("xyVoteQuitOptions");
  world.forms.releaseUnloaded();
}

}  // namespace

// A process that was stopped, from the question at its next start to its last vote.
#include <algorithm>
#include <set>

#include "core/run/end_program.h"
#include "core/run/entry.h"
#include "store/exercise_text.h"
#include "vote/vote_fixture.h"

namespace qrn {
namespace {

namespace key = host::key;
using host::Answer;

constexpr int kItems = 80;
const std::string kResume = "Would you like to continue from where it was previously stopped?";
const std::string kRestart = "Would you like to clear the data and restart?";
const std::string kDelete = "This will delete all live data";

class Resume : public VoteFixture {
 protected:
  Resume() {
    world.program.showRuns = true;
    for (const char* name : {"xyVote", "newItemsForm"})
      world.forms.define(name, [name] { return std::make_unique<host::Form>(name); });
    entryHooks() = EntryHooks{[] {
                                host::host().forms->show("xyVoteRuntime");
                                host::host().forms->as<xyVoteRuntime>("xyVoteRuntime").startProcess();
                              },
                              {},
                              {}};
    // Neither the keys nor the names stand in the order of the list.
    glo.risks.assign(kItems + 1, RiskRecord{});
    for (int i = 0; i < kItems; ++i) {
      RiskRecord& risk = glo.risks[static_cast<std::size_t>(i)];
      risk.text = "Item " + std::to_string(100 + 37 * i % kItems);
      risk.ID = i;
      risk.sortKey = 1 + 11 * i % kItems;
      risk.voting = true;
      risk.newItem = true;
    }
    glo.assessmentInfo[1].active = false;
    slideTags().Add("qrnMatrix", writeExercise(glo));
  }
  ~Resume() override { entryHooks() = EntryHooks{}; }

  test::MemoryTags& slideTags() { return world.presentation.slide(1).tagStore; }
  // One run of the program: `votes` votes, then "Quit all votes" while there are more.
  void runVotes(std::size_t votes) {
    opens = 0;
    scripts.assign(votes, [this] {
      world.at(0.05, [this] { press(1, "3"), press(2, "4"); });
      keyAt(0.3, key::space);
      keyAt(0.7, key::pageDown);
    });
    if (votes < kItems - 6)
      scripts.push_back([this] {
        keyAt(0.1, key::escape);
        world.at(0.2, [] {
          host::host()
              .forms->as<xyVoteQuitOptions>("xyVoteQuitOptions")
              .choose(xyVoteQuitOptions::quitAllVotes);
        });
      });
    run();
  }
  void run() {
    Main("QRNMATRIX,DISPLAY");
    endProgram();  // the editor, should it be up, is closed
    releaseObjects();
  }
};

TEST_F(Resume, asksEveryItemOnceWhateverWasAnsweredBetween) {
  runVotes(6);
  ASSERT_EQ(saved().size(), 6U);
  slideTags().values["QRNMATRIX"] += "\r\n";  // a text that saving would write otherwise
  const auto kept = slideTags().values;
  const std::string room = world.presentation.tagStore.Item("ActiveKeypads");
  for (const std::vector<std::pair<std::string, Answer>>& answers :
       {std::vector<std::pair<std::string, Answer>>{{kResume, Answer::cancel}},
        {{kResume, Answer::no}, {kRestart, Answer::no}},
        {{kResume, Answer::no}, {kRestart, Answer::yes}, {kDelete, Answer::no}}}) {
    for (const auto& [question, answer] : answers) world.expectMsgBox(question, answer);
    run();
    EXPECT_EQ(slideTags().values, kept) << answers.size() << " answers";
  }
  world.expectMsgBox(kResume, Answer::yes);
  runVotes(kItems - 6);
  const std::vector<std::string> keys = savedKeys();
  EXPECT_EQ(keys.size(), static_cast<std::size_t>(kItems));
  EXPECT_EQ(std::set<std::string>(keys.begin(), keys.end()).size(), static_cast<std::size_t>(kItems));
  EXPECT_EQ(world.presentation.tagStore.Item("ActiveKeypads"), room);
}

// Items that the process began with are not new to it, whether voted or not.
TEST_F(Resume, asksAboutNewItemsWhenSomeCameSince) {
  runVotes(6);
  RiskRecord late = glo.risks[0];
  late.text = "Late";
  late.sortKey = 1000;
  late.newItem = true;
  glo.risks.insert(glo.risks.end() - 1, late);
  slideTags().Add("qrnMatrix", writeExercise(glo));
  bool shown = false;
  world.at(1, [&] {
    shown = host::host().forms->isVisible("newItemsForm");
    host::host().forms->unload("newItemsForm");
  });
  runVotes(1);
  EXPECT_TRUE(shown);
  EXPECT_EQ(saved().size(), 7U);
}

}  // namespace
}  // namespace qrn

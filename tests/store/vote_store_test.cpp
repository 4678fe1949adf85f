#include "store/vote_store.h"

#include "core/options.h"
#include "store/vote_fixture.h"
#include "store/votes_rec_conversion.h"

namespace qrn::test {
namespace {

using Votes = std::vector<std::string>;
using host::Answer;

class VoteStoreTest : public VoteTest {
 protected:
  VoteStoreTest() {
    addItems({12, 7});
    voteSaved = [this](const std::string& line) {
      saved.push_back(line);
      EXPECT_NE(stored().find(line + "\r\n"), std::string::npos);  // durable before anyone is told
    };
  }
  ~VoteStoreTest() override {
    voteSaved = nullptr;
    forgetLeftoverVotes();
  }
  Votes saved;
};

TEST_F(VoteStoreTest, AVoteComesBackFromItsTokens) {
  setVotes({"5", "-2", "-1", "-100", "10", "0"});
  EXPECT_TRUE(SaveCVotes());
  EXPECT_EQ(stored(), "14/03/2026,09:00:00,5;X;-;-;A;0;,12C1\r\n");
  EXPECT_EQ(saved, Votes{"14/03/2026,09:00:00,5;X;-;-;A;0;,12C1"});
  EXPECT_EQ(glo.voteRecords.text(), stored());
  EXPECT_TRUE(LoadVotes("12C1"));
  EXPECT_EQ(firstVotes(6), (Votes{"5", "-2", "-100", "-100", "10", "0"}));
  EXPECT_FALSE(LoadVotes("7C1"));
  EXPECT_EQ(firstVotes(6), Votes(6, "-100"));
}

TEST_F(VoteStoreTest, WhatWouldBreakTheLineStaysOutOfIt) {
  setVotes({"1,2;\r\n\"3", "", "4"});
  SaveCVotes();
  EXPECT_EQ(stored(), "14/03/2026,09:00:00,123;-;4;,12C1\r\n");
}

TEST_F(VoteStoreTest, RecordsOfEveryForm) {
  struct Case {
    const char *text, *key;
    bool found;
    Votes votes;
    std::vector<int> postal;
  };
  const Case cases[] = {
      {"d,t,1;2;,12C1\r\nd,t,3;4;,12C1\r\n", "12C1", true, {"3", "4"}, {}},
      {"d,t,12;2,12C1", "12C1", true, {"1", "2"}, {}},  // first character; no end mark
      {"\"d\",\"t\",\"1X-A\",12C1\n", "12c1", true, {"1", "-2", "-100", "10"}, {}},  // the older form, quoted
      {"d,t,1;;b;,12C1\r\n", "12C1", true, {"1", "-100", "0"}, {}},
      {"d,t,,12C1,,,\"3X-A\"", "12C1", true, {}, {3, -2, -100, 10}},
      {"d,t,,12C1\r\n", "12C1", false, {}, {}},
      {"d,t,5;,12C1\r\nd,t,[SSD],x\r\nd,t,4", "12C1", true, {"5"}, {}},
      {"", "12C1", false, {}, {}},
  };
  for (const Case& c : cases) {
    store(c.text);
    EXPECT_EQ(LoadVotes(c.key), c.found) << c.text;
    EXPECT_EQ(firstVotes(c.votes.size()), c.votes) << c.text;
    EXPECT_EQ(glo.liveVotes.at(c.votes.size()), "-100") << c.text;
    std::vector<int> postal = glo.postalVotes;
    ASSERT_EQ(postal.size(), c.postal.size() + 1) << c.text;
    postal.pop_back();
    EXPECT_EQ(postal, c.postal) << c.text;
  }
}

TEST_F(VoteStoreTest, TheWidestVoteRaisesTheKeypadCount) {
  store("d,t,1;1;1;1;1;1;1;1;,12C1\r\n");
  LoadVotes("12C1");
  EXPECT_EQ(glo.maxKeypads, 8);
  EXPECT_EQ(glo.liveVotes.size(), 9u);
  EXPECT_EQ(glo.keypadIncluded.size(), 9u);
}

TEST_F(VoteStoreTest, AKeypadOutsideTheFilterReadsAsNotVoted) {
  glo.demographicQuestions = {{1, 1, "", "", "d,t,2;1;2;", 1, true, {{2, "B", true}}}};
  glo.demographicFilterOn = true;
  store("d,t,5;4;3;,12C1\r\n");
  for (const int anyGroup : {0, 1}) {
    glo.demographicLogicalOperator = anyGroup;
    EXPECT_TRUE(LoadVotes("12C1"));
    EXPECT_EQ(firstVotes(4), (Votes{"5", "-100", "3", "-100"}));
  }
  EXPECT_EQ(glo.demographicFilterText, "B");
}

TEST_F(VoteStoreTest, AFullDiskAsksAndTriesAgain) {
  setVotes({"1"});
  slide.stubborn.refusals = 1;
  world.expectEnter("The disk is full");
  EXPECT_TRUE(SaveCVotes());
  EXPECT_EQ(saved.size(), 1u);
  EXPECT_EQ(glo.voteRecords.text(), stored());
}

TEST_F(VoteStoreTest, AVoteGivenUpStaysInMemoryAndGoesOutBeforeTheNext) {
  setVotes({"1"});
  slide.stubborn.refusals = 1;
  world.expectMsgBox("The votes could not be saved", Answer::no);
  EXPECT_FALSE(SaveCVotes());
  EXPECT_TRUE(saved.empty());
  EXPECT_EQ(leftoverVotes(), 1);
  const std::string deckFolder = world.presentation.folder;
  setVotes({"-100"});
  EXPECT_TRUE(LoadVotes("12C1"));
  EXPECT_EQ(firstVotes(1), Votes{"1"});
  glo.voteRecords.forget();
  EXPECT_TRUE(LoadVotes("12C1"));  // also after the slide has been read again

  world.presentation.folder = "/another";  // a copy of the deck has the same slide, but not the vote
  glo.voteRecords.forget();
  EXPECT_FALSE(LoadVotes("12C1"));
  EXPECT_EQ(leftoverVotes(), 0);
  forgetLeftoverVotes();
  EXPECT_TRUE(saveLeftoverVotes());
  EXPECT_EQ(stored(), "");
  world.presentation.folder = deckFolder;
  glo.voteRecords.forget();

  glo.currentRisk = 1;
  setVotes({"2"});
  EXPECT_TRUE(SaveCVotes());
  EXPECT_EQ(leftoverVotes(), 0);
  EXPECT_EQ(saved.size(), 2u);
  EXPECT_EQ(stored(), "14/03/2026,09:00:00,1;,12C1\r\n14/03/2026,09:00:00,2;,7C1\r\n");
}

TEST_F(VoteStoreTest, ACutLineDoesNotSwallowTheNextRecord) {
  store("d,t,1;,12C1\r\nd,t,4;4");
  setVotes({"3"});
  SaveCVotes();
  EXPECT_EQ(stored(), "d,t,1;,12C1\r\nd,t,4;4\r\n14/03/2026,09:00:00,3;,12C1\r\n");
  EXPECT_EQ(glo.voteRecords.text(), stored());
  LoadVotes("12C1");
  EXPECT_EQ(firstVotes(2), (Votes{"3", "-100"}));
}

TEST_F(VoteStoreTest, ACorrectionReplacesTheFirstRecordOfTheKey) {
  store("d1,t1,1;1;1;,7C1\r\n\"d2\",t2,1;1;1;,12c1,a,b,55\r\nd3,t3,3;3;,12C1\r\n");
  setVotes({"-2", "-1", "-100", "10", "4"});
  modifyVoteResult("12C1");
  const std::string expected = "d1,t1,1;1;1;,7C1\r\nd2,t2,X;-;A;4;,12c1,a,b,55\r\nd3,t3,3;3;,12C1\r\n";
  EXPECT_EQ(stored(), expected);
  EXPECT_EQ(glo.voteRecords.text(), expected);
  modifyVoteResult("99C1");
  EXPECT_EQ(stored(), expected);
  store("");
  world.expectMsgBox("Could not find any results for this process.");
  modifyVoteResult("12C1");
}

TEST_F(VoteStoreTest, PostalVotesComeFromTheirOwnStore) {
  slide.stubborn.values["QRNPOSTALVOTES"] = "12C1;P1;3;-;X;A;12\r\n7C1;2\r\n7C1;4";
  store("d,t,,12C1,,,44\r\nd,t,,5C1,,,1\r\n");
  LoadVotes("12C1");
  EXPECT_TRUE(LoadPostalVotes("12C1"));
  EXPECT_EQ(glo.postalVotes, (std::vector<int>{3, -100, -2, 10, 12, 0}));
  EXPECT_TRUE(LoadPostalVotes("7c1"));
  EXPECT_EQ(glo.postalVotes, (std::vector<int>{2, 0}));
  LoadVotes("5C1");
  EXPECT_FALSE(LoadPostalVotes("5C1"));
  EXPECT_EQ(glo.postalVotes, (std::vector<int>{1, 0}));
}

TEST_F(VoteStoreTest, TheSlideToOpen) {
  struct Case {
    const char* tag;
    bool showRuns;
    int show, window, slide, showAfter, windowAfter;
  };
  for (const Case& c : {Case{"3", true, 1, 2, 3, 3, 2}, Case{"3", false, 1, 2, 3, 1, 3},
                        Case{"", true, 1, 2, 1, 1, 2}, Case{"0", false, 1, 2, 2, 1, 2}}) {
    world.presentation.tagStore.values["QRNCURRENTSLIDE"] = c.tag;
    world.program.showRuns = c.showRuns;
    world.program.show.index = c.show;
    world.program.window.index = c.window;
    EXPECT_EQ(readCurrentSlide(), c.slide) << c.tag;
    EXPECT_EQ(world.program.show.index, c.showAfter) << c.tag;
    EXPECT_EQ(world.program.window.index, c.windowAfter) << c.tag;
    EXPECT_EQ(world.presentation.tagStore.Item("qrnCurrentSlide"), "");
  }
}

TEST_F(VoteStoreTest, ActiveKeypadsAndSifterLines) {
  world.presentation.tagStore.values["ACTIVEKEYPADS"] = ",1,2,1 2,7,";
  ReadActiveKeypads();
  EXPECT_EQ(glo.activeKeypads, (Votes{"1", "2", "7"}));
  world.presentation.tagStore.values.clear();
  ReadActiveKeypads();
  EXPECT_EQ(glo.activeKeypads, Votes{""});

  store("d,t,1;,12C1\r\nd,t,[SSD],9\r\nd,t,[SSD][SSD],14");
  LoadSifterSorterData();
  EXPECT_EQ(glo.sifterLines, (Votes{"d,t,[SSD],9", "d,t,[SSD][SSD],14"}));
  EXPECT_TRUE(glo.hasSifterData);
  store("");
  LoadSifterSorterData();
  EXPECT_FALSE(glo.hasSifterData);
}

TEST(VotesRec, OldLinesBecomeRecords) {
  const std::string old =
      "\"C:\\w\\Risk.mtx12C1\",a,b,\"1X-\",\"09:00\",\"14/03\",c,d\r\n"
      "\"C:\\w\\Other.mtx12C1\",a,b,\"1\",t,d,c,d\r\n"
      "\"C:\\w\\risk.MTX3C2\",a,b,\"5\",t,,c\r\n"
      "risk.mtx7C2,a,b,55,t,,c,d";
  EXPECT_EQ(convertVotesRec(old, "risk.mtx"), "14/03,09:00,1X-,12C1\r\n,t,55,7C2\r\n");
  EXPECT_EQ(convertVotesRec("", "risk.mtx"), "");
}

}  // namespace
}  // namespace qrn::test

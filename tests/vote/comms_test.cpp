// The controller form: what goes out, in which order, and what every kind of incoming block does.
#include "vote/link/comms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "core/glo.h"
#include "store/vote_store.h"
#include "support/test_host.h"

namespace qrn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using Presses = std::vector<std::pair<std::int32_t, std::string>>;

class CommsTest : public ::testing::Test {
 protected:
  CommsTest() {
    glo = Glo{};
    glo.oPresentation = &world.presentation;
    registerComms();
    link().VoteRx = [this](std::int32_t keypad, const std::string& vote) {
      presses.emplace_back(keypad, vote);
    };
  }
  comms& link() { return theComms(); }
  void decode(const std::string& block) { link().DecodeDataFromController(block); }
  std::string activeTag() { return world.presentation.tagStore.Item("ActiveKeypads"); }
  void setActiveTag(const std::string& list) { world.presentation.tagStore.Add("ActiveKeypads", list); }
  std::string names() {
    std::string text;
    for (const KeypadName& entry : glo.keypadNames)
      text += std::to_string(entry.keypad) + "/" + entry.name + "/" + std::to_string(entry.number) + " ";
    return text;
  }

  test::TestHost world;
  Presses presses;
};

// The link

TEST_F(CommsTest, TakesTheSharedControllerAndStartsOneOnlyWithoutIt) {
  EXPECT_EQ(world.link.made, "shared;");
  world.forms.unload("comms");
  world.link.linkUp = world.link.canShare = false;
  world.link.made.clear();
  EXPECT_TRUE(link().linked());
  EXPECT_EQ(world.link.made, "shared;new;");
}

TEST_F(CommsTest, StaysWhenTheUserClosesIt) {
  EXPECT_FALSE(world.forms.unload("comms", true));
  EXPECT_TRUE(world.forms.unload("comms"));
}

TEST_F(CommsTest, SendsAVoteInTheProtocolsOrder) {
  glo.voteType = 14;
  glo.preVoteText = "Before";
  glo.voteTitle = "Likelihood";
  glo.voteText = "Low|Middle|High";
  glo.limits = 2;
  glo.allocation = 25;
  glo.points = 5;
  glo.options = 9;
  glo.startFrom = 1;
  EXPECT_TRUE(link().StartVote());
  EXPECT_THAT(world.link.sent, ElementsAre("voteType=14", "preVoteText=Before", "voteText=Low|Middle|High",
                                           "postVotedText=Vote Submitted", "limits=2", "allocation=25",
                                           "points=5", "options=9", "StartFrom=1", "Clear", "StartVote"));
  EXPECT_EQ(world.link.described, "Likelihood");
  EXPECT_EQ(glo.voteTextOptionCount, 2);
  EXPECT_EQ(link().voteStartedAt, 9 * 3600);
}

TEST_F(CommsTest, VoteTypeZeroGoesOutAndStaysAsNine) {
  link().StartVote();
  EXPECT_EQ(world.link.sent.front(), "voteType=9");
  EXPECT_EQ(glo.voteType, 9);
  EXPECT_EQ(glo.voteTextOptionCount, -1);
}

TEST_F(CommsTest, WithoutALinkTellsSoUnlessSilent) {
  world.link.linkUp = world.link.canShare = world.link.canStart = false;
  link().SendCommandToController("EndVote", true, true);
  world.expectMsgBox("Error: matrix.exe: Unable to initialize link with quorin controller");
  link().SendCommandToController("EndVote", true, false);
  EXPECT_THAT(world.link.sent, IsEmpty());
}

TEST_F(CommsTest, MakesALostLinkAgainOnlyWhenAskedTo) {
  world.link.linkUp = false;
  link().SendCommandToController("GetNames", false, true);
  EXPECT_THAT(world.link.sent, IsEmpty());
  link().SendCommandToController("GetNames", true, true);
  EXPECT_THAT(world.link.sent, ElementsAre("GetNames"));
}

TEST_F(CommsTest, WaitsForAControllerThatIsGettingReady) {
  world.link.ready = false;
  world.at(9.5, [&] { world.link.ready = true; });
  link().SendCommandToController("BaseInfo", true, false);
  EXPECT_THAT(world.link.sent, ElementsAre("BaseInfo"));
}

TEST_F(CommsTest, GivesUpOnAControllerAfterTenSeconds) {
  world.link.ready = false;
  world.expectMsgBox("Error: matrix.exe: quorin controller failed to fully initialize");
  link().SendCommandToController("BaseInfo", true, false);
  EXPECT_NEAR(static_cast<double>(world.clock.micros) / 1e6, 10.0, 0.05);
  link().SendCommandToController("BaseInfo", true, true);
  world.link.ready = true;
  EXPECT_THAT(world.link.sent, IsEmpty());
}

// One wait for all that begins a vote, and no vote with half of its settings.
TEST_F(CommsTest, AVoteWaitsOnceForAControllerThatNeverGetsReady) {
  world.link.ready = false;
  link().SendCommandToController("Abstain=True", true, true);
  EXPECT_TRUE(link().StartVote());
  EXPECT_NEAR(static_cast<double>(world.clock.micros) / 1e6, 10.0, 0.05);
  EXPECT_FALSE(link().voteOpened);
  world.link.ready = true;
  link().StartVote();
  EXPECT_TRUE(link().voteOpened);
  EXPECT_EQ(world.link.sent.size(), 11U);
}

// The queue

TEST_F(CommsTest, QueuesWhatArrivesAndDecodesItATimerTickLater) {
  link();
  world.link.says("[1],3;5");
  world.link.says("[1],4;6");
  EXPECT_EQ(link().txt_dataFromController, "\r\n[1],3;5\r\n[1],4;6");
  EXPECT_TRUE(link().tmr_decodeDataFromController.enabled());
  EXPECT_TRUE(presses.empty());
  world.sleep(100);
  host::DoEvents();
  EXPECT_EQ(presses, (Presses{{3, "5"}, {4, "6"}}));
  EXPECT_EQ(link().txt_dataFromController, "");
  EXPECT_FALSE(link().tmr_decodeDataFromController.enabled());
}

TEST_F(CommsTest, APressDuringALongCommandWaitsAndIsNotLost) {
  world.link.ready = false;
  world.at(1, [&] { world.link.says("[1],7;2"); });
  world.at(2, [&] { world.link.ready = true; });
  link().SendCommandToController("BaseInfo", true, false);
  EXPECT_EQ(presses, (Presses{{7, "2"}}));
}

// Votes

TEST_F(CommsTest, APressThatWaitsInTheQueueSurvivesANewLink) {
  link();
  world.link.says("[1],3;5");
  world.link.linkUp = false;
  link().makeLink();
  EXPECT_THAT(presses, ElementsAre(Pair(3, "5")));
  EXPECT_EQ(link().txt_dataFromController, "");
}

TEST_F(CommsTest, ReadsVotePieces) {
  const std::vector<std::pair<std::string, Presses>> cases{{"[12],3;5", {{3, "5"}}},
                                                           {"[12],3;5,4;6", {}},
                                                           {"[1],3;5],4;6", {{3, "5"}, {4, "6"}}},
                                                           {"[1],3;X", {{3, "X"}}},
                                                           {"[1],3;", {{3, ""}}},
                                                           {"[1],3.9;5", {{3, "5"}}},
                                                           {"anything],3;5", {{3, "5"}}},
                                                           {"[1],3;5;6", {}},
                                                           {"[1],35", {}},
                                                           {"3;5", {}},
                                                           {"[1],3;5\r\n[1],3;6", {{3, "5"}, {3, "6"}}},
                                                           {"[1],99999999999;5", {{2147483647, "5"}}},
                                                           {"", {}}};
  for (const auto& [block, expected] : cases) {
    presses.clear();
    decode(block);
    EXPECT_EQ(presses, expected) << block;
  }
}

TEST_F(CommsTest, AFailingHandlerEndsItsBlockAlone) {
  link().VoteRx = [&](std::int32_t keypad, const std::string& vote) {
    if (keypad == 4)
      throw HostError(Fault::program, 9, "out of range");
    presses.emplace_back(keypad, vote);
  };
  decode("[1],3;1\r\n[1],4;1\r\n[1],5;1");
  decode("[1],6;1");
  EXPECT_EQ(presses, (Presses{{3, "1"}, {6, "1"}}));
  EXPECT_NE(world.files.files["/appdata/quorin/Err.log"].find("Procedure: DecodeDataFromController"),
            std::string::npos);
}

// Names

TEST_F(CommsTest, ReadsTheNameList) {
  struct Case {
    std::string block, names;
    bool ticked;
  };
  const std::vector<Case> cases{
      {"StartListOfNames\r\n1,Ann,7\r\n2,Bob,8\r\nEndListOfNames", "1/Ann/7 2/Bob/8 0//0 ", true},
      {"x\r\nSTARTLISTOFNAMES\r\n1,Ann,7\r\nendlistofnames\r\n2,Bob,8", "1/Ann/7 0//0 ", true},
      {"StartListOfNames\r\n1,Ann\r\n2,Bob,8,9\r\n3,Cy,4\r\nEndListOfNames", "3/Cy/4 0//0 ", true},
      {"StartListOfNames\r\nEndListOfNames", "0//0 ", true},
      {"1,Ann,7\r\nendlistofnames", "9/Old/9 ", true},
      {"endlistofnames\r\nStartListOfNames", "9/Old/9 ", true},
      {"StartListOfNames\r\n1,Ann,7", "9/Old/9 ", false}};
  for (const Case& c : cases) {
    glo.keypadNames = {{9, "Old", 9}};
    link().chk_GotNames = false;
    decode(c.block);
    EXPECT_EQ(names(), c.names) << c.block;
    EXPECT_EQ(link().chk_GotNames, c.ticked) << c.block;
  }
}

// Keys

TEST_F(CommsTest, ReadsTheKeyBlock) {
  decode(
      "BASETYPE=RF\r\nMAX_KPADS=5\r\nkeypadsnotvotedlo=2\r\nKEYPADSNOTVOTEDHI=1,"
      "200\r\nKEYPADSNOTVOTEDPOPUPON=7"
      "\r\nKEYPADSNOTVOTEDHOWMANYTOSHOW=12.9\r\nKEYPADSNOTVOTEDCLOSE=1\r\nKEYPADSNOTVOTEDCLOSEPERCENT=80"
      "\r\nNUMKEYPADS=24\r\nSCROLLINGDISPLAY=1\r\nUSEOFFSETS=True\r\nno equals sign\r\nUNKNOWN=3");
  EXPECT_EQ(glo.baseType, "RF");
  EXPECT_EQ(glo.keypadsNotVotedLo, 2);
  EXPECT_EQ(glo.keypadsNotVotedHi, 1200);
  EXPECT_EQ(glo.keypadsNotVotedPopupOn, 7);
  EXPECT_EQ(glo.keypadsNotVotedHowManyToShow, 12);
  EXPECT_EQ(glo.keypadsNotVotedClose, 1);
  EXPECT_EQ(glo.keypadsNotVotedClosePercent, 80);
  EXPECT_EQ(glo.numKeypads, 24);
  EXPECT_TRUE(glo.useOffsets);
  decode("NUMKEYPADS=30");
  EXPECT_EQ(glo.numKeypads, 24) << "a block without BASETYPE is no key block";
  for (const auto& [value, expected] :
       std::vector<std::pair<std::string, std::string>>{{"FW2000", "FW"}, {"fw2000", "fw2000"}, {"", ""}}) {
    decode("BaseType=" + value);
    EXPECT_EQ(glo.baseType, expected);
  }
}

TEST_F(CommsTest, HandlesKeysBeforeTheVotesOfTheSameBlock) {
  std::string baseAtPress;
  link().VoteRx = [&](std::int32_t, const std::string&) { baseAtPress = glo.baseType; };
  decode("[1],3;5\r\nBASETYPE=HW7");
  EXPECT_EQ(baseAtPress, "HW7");
}

TEST_F(CommsTest, AnOffsetListsTheKeypadsOfABaseInUse) {
  setActiveTag("1,2");
  struct Case {
    std::string value, list;
    std::vector<std::string> ports;
  };
  const std::vector<Case> cases{{"1,100,1,2,False", "101,102,", {"1,100,1", "2,100,1"}},
                                {"1,100,1,2,True", "", {}},
                                {"1,100,1,2,false", "", {}},
                                {"1,100,1,2", "", {}}};
  for (const Case& c : cases) {
    glo.activeKeypadList.clear();
    glo.keypadPortInfo.clear();
    decode("BASETYPE=HW\r\nOFFSET=" + c.value);
    EXPECT_EQ(glo.activeKeypadList, c.list) << c.value;
    EXPECT_EQ(glo.keypadPortInfo, c.ports) << c.value;
    EXPECT_EQ(glo.activeKeypads, (std::vector<std::string>{"1", "2"})) << c.value;
  }
  decode("BASETYPE=HW\r\nOFFSET=2,50,1,0,True\r\nOFFSET=0,7,1,0,True");
  EXPECT_EQ(glo.baseOffsets, (std::vector<int>{7, 100, 50}));
  EXPECT_THAT(world.link.sent, IsEmpty()) << "the room's keypads are known";
}

TEST_F(CommsTest, TheFirstScanBecomesTheRoomsKeypads) {
  decode("BASETYPE=HW\r\nOFFSET=0,0,1,4,False");
  EXPECT_EQ(activeTag(), "1,2,3,4");
  EXPECT_EQ(glo.activeKeypads, (std::vector<std::string>{"1", "2", "3", "4"}));
  EXPECT_EQ(glo.activeKeypadList, "");
  EXPECT_THAT(world.link.sent, ElementsAre("ReadActiveKeypads", "BaseInfo"));
}

TEST_F(CommsTest, ARoomWithoutABaseInUseDoesNotAskForEver) {
  world.link.onSend = [&](const std::string& command) {
    if (command == "BaseInfo")
      world.link.says("BASETYPE=HW\r\nOFFSET=0,0,1,4,True");
  };
  link().ReadPortInfo();
  host::waitUntil([] { return false; }, 5);
  EXPECT_THAT(world.link.sent, ElementsAre("BaseInfo", "ReadActiveKeypads", "BaseInfo"));
}

TEST_F(CommsTest, WritesTheKeypadsThatHaveVoted) {
  link().WriteActiveKeypads(false);
  EXPECT_THAT(world.link.sent, IsEmpty()) << "no scan has been started";
  glo.scanMarked = true;
  glo.activeKeypads = {"1", "2", "3", "4", "900", "x"};
  glo.liveVotes = {"5", "-100", "0", "-2", "-1", ""};
  link().WriteActiveKeypads(false);
  EXPECT_EQ(activeTag(), "1,3");
  EXPECT_EQ(glo.activeKeypads, (std::vector<std::string>{"1", "3"}));
  EXPECT_THAT(world.link.sent, ElementsAre("ReadActiveKeypads"));
}

// The list of the deck, what the controller says, and the list that both make.
TEST_F(CommsTest, TheRoomIsWhoIsThereLessWhomTheFacilitatorLeftOut) {
  struct Case {
    std::string tag, block, list, tagAfter;
  };
  for (const Case& c : std::vector<Case>{
           {"", "BASETYPE=PHONES\r\nPRESENT=1,2,9\r\nOFFSET=0,0,1,9,False", "1,2,9", "1,2,9"},
           {"1,3", "BASETYPE=PHONES\r\nPRESENT=1,2,3", "1,3", "1,3"},
           {"1,3", "BASETYPE=PHONES\r\nPRESENT=1,2,3\r\nJOINED=2", "1,2,3", "1,2,3"},
           {"1,2,3,4", "BASETYPE=PHONES\r\nPRESENT=2,4", "2,4", "2,4"},
           {"1,10", "BASETYPE=PHONES\r\nJOINED=10,2", "1,2,10", "1,2,10"},
           {"7", "BASETYPE=PHONES\r\nPRESENT=", "", ""},
           {"", "BASETYPE=REHEARSAL\r\nPRESENT=1,2\r\nOFFSET=0,0,1,2,False", "1,2", ""},
           {"7", "BASETYPE=REHEARSAL\r\nPRESENT=1,2\r\nOFFSET=0,0,1,2,False", "1,2", "7"},
           {"7", "BASETYPE=REHEARSAL\r\nPRESENT=1\r\nBASETYPE=KBOARD\r\nPRESENT=1,2", "1,2", "7"}}) {
    setActiveTag(c.tag);
    ReadActiveKeypads();
    glo.roomRehearsed = false;
    decode(c.block);
    std::string list;
    for (const std::string& keypad : glo.activeKeypads) list += (list.empty() ? "" : ",") + keypad;
    EXPECT_EQ(list, c.list) << c.tag << " " << c.block;
    EXPECT_EQ(activeTag(), c.tagAfter) << c.tag << " " << c.block;
    EXPECT_THAT(world.link.sent, IsEmpty()) << "nothing more is to be asked";
  }
}

TEST_F(CommsTest, AListThatTheDeckHoldsIsNotWrittenAgain) {
  setActiveTag("1,3");
  ReadActiveKeypads();
  world.presentation.tagStore.failAtWrite = 1;
  decode("BASETYPE=PHONES\r\nPRESENT=1,3");
  EXPECT_EQ(world.presentation.tagStore.failAtWrite, 1);
}

TEST_F(CommsTest, LeavesNoListOfARehearsalBehind) {
  setActiveTag("7");
  decode("BASETYPE=REHEARSAL\r\nPRESENT=1,2,3\r\nOFFSET=0,0,1,3,False");
  glo.liveVotes = {"5", "-100", "4", ""};
  link().WriteActiveKeypads(false);
  EXPECT_EQ(glo.activeKeypads, (std::vector<std::string>{"1", "3"}));
  glo.activeKeypads.clear();
  link().WriteActiveKeypads(true);
  EXPECT_EQ(activeTag(), "7");
}

TEST_F(CommsTest, ReadsTheRoomsKeypadsBack) {
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases{
      {"1,2,3", {"1", "2", "3"}}, {",1,2,", {"1", "2"}}, {"1,a b,3", {"1", "3"}}, {"", {""}}, {" ", {""}}};
  for (const auto& [tag, expected] : cases) {
    setActiveTag(tag);
    ReadActiveKeypads();
    EXPECT_EQ(glo.activeKeypads, expected) << tag;
  }
}

TEST_F(CommsTest, AsksForTheBase) {
  struct Case {
    std::string baseBefore, baseAfter;
    bool marker;
    int keyboardFlag;
  };
  glo.appPath = "/install/";
  for (const Case& c :
       std::vector<Case>{{"", "HW", false, 0}, {"FW", "FW", false, 0}, {"FW", "KBOARD", true, 1}}) {
    world.link.sent.clear();
    world.files.files.clear();
    if (c.marker)
      world.files.files["/install/baseKB.txt"] = "";
    glo.baseType = c.baseBefore;
    glo.keyboardFlag = 0;
    glo.keypadsNotVotedHi = 40;
    glo.liveVotes = {"5"};
    link().ReadPortInfo();
    EXPECT_THAT(world.link.sent, ElementsAre("BaseInfo"));
    EXPECT_EQ(glo.baseType, c.baseAfter);
    EXPECT_EQ(glo.keyboardFlag, c.keyboardFlag);
    EXPECT_EQ(glo.liveVotes.size(), 41U);
    EXPECT_EQ(glo.liveVotes.front(), "5");
  }
}

TEST_F(CommsTest, DecodesAHundredThousandPressesInOneBlock) {
  std::string block = "BASETYPE=HW\r\n";
  for (int i = 1; i <= 100000; ++i) block += "[1]," + std::to_string(i % 500 + 1) + ";5\r\n";
  decode(block);
  EXPECT_EQ(presses.size(), 100000U);
}

}  // namespace
}  // namespace qrn

// The texts of both languages: commands and blocks with the program, frames with the phones, arguments.
#include <gtest/gtest.h>

#include "adapters/link/wire/wire.h"
#include "controller/room/arguments.h"
#include "controller/room/outbox.h"
#include "controller/room/phone_text.h"
#include "controller/room/program_text.h"
#include "controller/room/vote_state.h"

namespace qrn::controller {
namespace {

VoteSettings settingsFrom(const std::vector<std::string>& lines) {
  VoteSettings settings;
  for (const std::string& line : lines) EXPECT_TRUE(applySetting(line, settings)) << line;
  return settings;
}

TEST(ProgramText, EveryCommandIsKnown) {
  const std::vector<std::pair<const char*, Command>> cases{{"voteType=9", Command::setting},
                                                           {"preVoteText=", Command::setting},
                                                           {"voteText=a=b|c", Command::setting},
                                                           {"postVotedText=Vote Submitted", Command::setting},
                                                           {"limits=0", Command::setting},
                                                           {"allocation=0", Command::setting},
                                                           {"points=0", Command::setting},
                                                           {"options=5", Command::setting},
                                                           {"StartFrom=1", Command::setting},
                                                           {"Abstain=FALSE", Command::setting},
                                                           {"PCAOptions=1,2,", Command::setting},
                                                           {"PCAOptions=", Command::setting},
                                                           {"Clear", Command::clear},
                                                           {"StartVote", Command::startVote},
                                                           {"EndVote", Command::endVote},
                                                           {"KBOARD", Command::keyboardOn},
                                                           {"KBOARD-OFF", Command::keyboardOff},
                                                           {"BaseInfo", Command::baseInfo},
                                                           {"GetNames", Command::getNames},
                                                           {"ReadActiveKeypads", Command::noted},
                                                           {"ShowAudio", Command::noted},
                                                           {"EndWizard", Command::noted},
                                                           {"AddTask=Vote,Voting...", Command::noted},
                                                           {"DeleteTask=Vote", Command::noted},
                                                           {"", Command::unknown},
                                                           {"StartVote now", Command::unknown},
                                                           {"colour=red", Command::unknown}};
  for (const auto& [text, command] : cases) EXPECT_EQ(commandOf(text), command) << text;
}

TEST(ProgramText, SettingsAreTakenOverAndBadNumbersAreNot) {
  const VoteSettings s =
      settingsFrom({"voteType=14", "preVoteText=Why = how?", "options=10", "options=ten", "StartFrom=-1",
                    "limits=99999999999999999999", "Abstain=True", "PCAOptions=1,2,x,4,2,"});
  EXPECT_EQ(s.voteType, 14);
  EXPECT_EQ(s.preVoteText, "Why = how?");
  EXPECT_EQ(s.options, 10);
  EXPECT_EQ(s.startFrom, -1);
  EXPECT_EQ(s.limits, 0);
  EXPECT_TRUE(s.abstain);
  EXPECT_EQ(s.allowedVotes, (std::vector<long>{1, 2, 4}));
}

TEST(ProgramText, BlocksHaveTheShapeThatTheProgramReads) {
  EXPECT_EQ(pressText(12, {{3, "5"}, {4, "X"}}), "[12],3;5],4;X");
  EXPECT_EQ(nameListText({{1, "Ann"}, {2, "Lee, Bo\r\n"}}),
            "StartListOfNames\r\n1,Ann,1\r\n2,Lee  Bo  ,2\r\nEndListOfNames");
  KeyBlock block;
  block.baseType = "PHONES";
  block.highest = 60;
  block.closePercent = 80;
  block.keypads = 50;
  block.useOffsets = true;
  block.bases = {{0, 0, 1, 50, true}, {1, 50, 1, 10, false}};
  const std::string text = keyBlockText(block);
  for (const char* line :
       {"BASETYPE=PHONES\r\n", "\r\nMAX_KPADS=60\r\n", "\r\nKEYPADSNOTVOTEDLO=1\r\n",
        "\r\nKEYPADSNOTVOTEDHI=60\r\n", "\r\nKEYPADSNOTVOTEDCLOSE=1\r\n",
        "\r\nKEYPADSNOTVOTEDCLOSEPERCENT=80\r\n", "\r\nNUMKEYPADS=50\r\n", "\r\nOFFSET=0,0,1,50,False\r\n",
        "\r\nOFFSET=1,50,1,10,True\r\n", "\r\nUSEOFFSETS=True\r\n"})
    EXPECT_NE(text.find(line), std::string::npos) << line;
}

struct PressCase {
  const char* name;
  std::vector<std::string> settings;
  std::vector<std::string> taken;
  std::vector<std::string> refused;
};

class Presses : public ::testing::TestWithParam<PressCase> {};

TEST_P(Presses, OnlyWhatTheVoteAsksForIsTaken) {
  const VoteSettings settings = settingsFrom(GetParam().settings);
  for (const std::string& press : GetParam().taken) EXPECT_EQ(acceptedPress(settings, press), press);
  for (const std::string& press : GetParam().refused)
    EXPECT_EQ(acceptedPress(settings, press), std::nullopt) << press;
}

INSTANTIATE_TEST_SUITE_P(
    Votes, Presses,
    ::testing::Values(
        PressCase{"scale",
                  {"options=10", "StartFrom=1"},
                  {"1", "10"},
                  {"0", "11", "X", "1|2", "", "|", "1;5", "-1"}},
        PressCase{"from0", {"options=4", "StartFrom=0", "Abstain=True"}, {"0", "4", "X"}, {"5", "XX"}},
        PressCase{"unsetStart", {"options=9", "StartFrom=-1"}, {"1", "9"}, {"0"}},
        PressCase{
            "balance", {"options=9", "StartFrom=-1", "PCAOptions=1,2,4,5,7,8,"}, {"1", "8"}, {"3", "6", "9"}},
        PressCase{
            "rank", {"voteType=1", "voteText=|a|b|c"}, {"3|1|2"}, {"1|2", "1|1|2", "0|1|2", "1|2|4", "X"}},
        PressCase{
            "order", {"voteType=5", "voteText=|a|b|c|", "limits=2"}, {"3", "2|1"}, {"1|2|3", "4", "2|2"}},
        PressCase{"tag",
                  {"voteType=3", "voteText=|a|b|c", "limits=2"},
                  {"1|0|1", "0|1|0"},
                  {"1|1|1", "2|0|0", "1|0", "0|0|0"}},
        PressCase{"allocate",
                  {"voteType=6", "voteText=|a|b|c", "points=5", "allocation=8"},
                  {"5|3|0", "1|0|0"},
                  {"6|0|0", "5|4|0", "0|0|0", "8", "99999999999999999999|0|0"}}),
    [](const auto& each) { return each.param.name; });

TEST(Captions, BelongToTheirValuesWithoutASecondNumber) {
  const VoteSettings s = settingsFrom({"options=4", "StartFrom=1", "voteText=|1.  Rare|2.  Likely|7. of 9"});
  const auto captions = captionsOf(s);
  ASSERT_EQ(captions.size(), 3U);
  EXPECT_EQ(captionFor(s, captions, 1), "Rare");
  EXPECT_EQ(captionFor(s, captions, 3), "7. of 9");
  EXPECT_EQ(captionFor(s, captions, 4), "");
  EXPECT_EQ(captionFor(s, captions, 0), "");
  EXPECT_TRUE(captionsOf(settingsFrom({"voteText=   Vote Now"})).empty());
  EXPECT_EQ(captionsOf(settingsFrom({"voteText=Yes|No"})), (std::vector<std::string>{"Yes", "No"}));
}

TEST(PhoneText, OnlyTheTwoFramesAreRead) {
  const std::string token(32, 'a');
  const auto join = readPhoneFrame("join " + token + " 7");
  ASSERT_TRUE(join);
  EXPECT_EQ(join->token, token);
  EXPECT_EQ(join->keypad, 7);
  const auto press = readPhoneFrame("press 12 3|1");
  ASSERT_TRUE(press);
  EXPECT_EQ(press->vote, 12);
  EXPECT_EQ(press->text, "3|1");
  for (const std::string& bad :
       {std::string(), std::string("join"), std::string("join - "), std::string("join - -1"), "join " + token,
        "join " + token + "a 1", std::string("join - 99999"), std::string("press"), std::string("press 1"),
        std::string("press 1 "), std::string("press x 1"), std::string("press 1 3;4"),
        std::string("press 1 3],4;5"), std::string("press 1 3\n"),
        "press 1 " + std::string(maxPhoneFrame, '1')})
    EXPECT_FALSE(readPhoneFrame(bad)) << bad;
}

TEST(PhoneText, TextsCannotBreakOutOfTheirLine) {
  const VoteSettings s = settingsFrom(
      {"options=1", "Scale=How\nbad?", "preVoteText=a\r\nb\rc\\n\nvote=99", "voteText=|x\nkind=rank"});
  EXPECT_EQ(
      voteFrame(3, s),
      "vote\nvote=3\nkind=scale\nfrom=1\nto=1\nabstain=0\nlimit=0\npoints=0\ntotal=0\nscale=How\\nbad?\n"
      "question=a\\nb\\nc\\\\n\\nvote=99\nafter=\noption=1 x\\nkind=rank");
}

TEST(Outbox, AnUnsentPressGivesWayToTheNextOfItsKeypad) {
  Outbox box;
  box.setVote(4);
  box.press({1, "2"});
  box.reply("names");
  box.press({2, "3"});
  box.press({1, "5"});
  EXPECT_EQ(box.next(), "names");
  EXPECT_EQ(box.next(), "[4],2;3],1;5");
  EXPECT_EQ(box.next(), std::nullopt);
}

TEST(Outbox, WithoutAcknowledgementsItStopsAtTheWindowAndLosesNothing) {
  Outbox box;
  box.setVote(1);
  std::size_t sent = 0;
  for (long keypad = 1; keypad <= 600; ++keypad) {
    box.press({keypad, "1"});
    sent += box.next() ? 1U : 0U;
  }
  EXPECT_EQ(sent, Outbox::window);
  EXPECT_EQ(box.acknowledge(sent).size(), Outbox::window);
  std::size_t rest = 0;
  while (box.next()) ++sent;
  rest = box.acknowledge(sent).size();
  EXPECT_EQ(rest, 600 - Outbox::window);
}

TEST(Wire, AnAnnouncementComesBackAsItWasAndADamagedOneNotAtAll) {
  link::Announcement a;
  a.port = 7878;
  a.token = link::randomToken();
  a.process = 42;
  a.rehearse = 20;
  a.seed = 7;
  a.join = "http://192.168.1.5:7878/join";
  const auto read = link::readAnnouncement(link::announcementText(a));
  ASSERT_TRUE(read);
  EXPECT_EQ(link::announcementText(*read), link::announcementText(a));
  for (const char* bad : {"", "port=7878\n", "port=70000\ntoken=0123456789abcdef0123456789abcdef\n",
                          "port=1\ntoken=short\n", "port=\ntoken=0123456789abcdef0123456789abcdef"})
    EXPECT_FALSE(link::readAnnouncement(bad)) << bad;
}

TEST(Wire, TheRoomComesBackAsItWas) {
  host::RoomState room;
  room.address = "192.168.1.20:7878";
  room.page = "http://127.0.0.1:7878/join";
  room.candidates = {{"vote.local", "", true}, {"10.8.0.3", "wg0", false}};
  room.phones = 3;
  room.rehearse = 20;
  room.takesPhones = false;
  EXPECT_EQ(link::readRoom(link::roomText(room)), room);
  EXPECT_EQ(link::readRoom("Room=\nlikely=\nnonsense\nphones=x\n"), host::RoomState{});
}

TEST(Wire, WhatIsNotUtf8IsMarked) {
  EXPECT_EQ(link::validUtf8("Fjäll € 😀"), "Fjäll € 😀");
  EXPECT_EQ(link::validUtf8("a\xE4z\xC0\x80\xED\xA0\x80"),
            "a\xEF\xBF\xBDz\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Arguments, RangesBasesAndNames) {
  EXPECT_EQ(readRange("1-650"), std::make_pair(1L, 650L));
  for (const char* bad : {"", "5", "0-5", "9-5", "1-99999", "1-5-9", "a-b"})
    EXPECT_FALSE(readRange(bad)) << bad;
  const auto base = readBase("1:50:1-40:off");
  ASSERT_TRUE(base);
  EXPECT_EQ(base->offset, 50);
  EXPECT_EQ(base->last, 40);
  EXPECT_FALSE(base->used);
  for (const char* bad : {"", "1:50", "1:9990:1-40", "1:0:1-40:on"}) EXPECT_FALSE(readBase(bad)) << bad;
  EXPECT_EQ(readNames("1,Ann\r\nx,No\n2,\n3,Lee, Bo"),
            (std::map<long, std::string>{{1, "Ann"}, {3, "Lee, Bo"}}));
}

}  // namespace
}  // namespace qrn::controller

// A room without sockets: what the program sends and gets, what each phone is told.
#include "controller/room/room.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qrn::controller {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class RoomTest : public ::testing::Test {
 protected:
  void furnish(RoomOptions options = {}) {
    RoomPorts ports;
    ports.programWaiting = [this] { fetch(); };
    ports.toPhone = [this](PhoneId phone, const SharedText& text) { told[phone].push_back(*text); };
    ports.log = [this](const std::string& line) { logged.push_back(line); };
    ports.keypadGiven = [](long, const std::string&) {};
    ports.phonesChanged = [this] { ++changes; };
    ports.newToken = [this] {
      std::string token = std::to_string(++tokens);
      return std::string(32 - token.size(), '0') + token;
    };
    ports.now = [this] { return Moment{ms, 0}; };
    room = std::make_unique<Room>(std::move(options), std::move(ports));
  }
  void SetUp() override {
    furnish();
    arrive("program");
  }
  void arrive(const std::string& instance) {
    atProgram.clear();
    hello = room->programArrived(instance);
    fetch();
  }
  void fetch() {
    while (auto text = room->nextForProgram()) atProgram.push_back(*text);
  }
  void acknowledge() { room->fromProgram("Received=" + std::to_string(atProgram.size())); }
  void startVote(const std::vector<std::string>& settings = {"options=5", "StartFrom=1"}) {
    for (const std::string& line : settings) room->fromProgram(line);
    room->fromProgram("Clear");
    room->fromProgram("StartVote");
    acknowledge();
  }
  std::string last(PhoneId phone) { return told[phone].empty() ? "" : told[phone].back(); }
  std::vector<std::string> presses() const {
    std::vector<std::string> result;
    for (const std::string& text : atProgram)
      if (text.find("],") != std::string::npos)
        result.push_back(text);
    return result;
  }

  std::unique_ptr<Room> room;
  std::string hello;
  std::vector<std::string> atProgram, logged;
  std::map<PhoneId, std::vector<std::string>> told;
  int changes = 0;  // in the number of phones
  std::int64_t ms = 1'000'000;
  int tokens = 0;
};

TEST_F(RoomTest, APressGoesToTheProgramAndCountsWhenItIsAcknowledged) {
  room->phoneText(1, "join - 0");
  EXPECT_THAT(last(1), HasSubstr("why=idle"));
  startVote();
  EXPECT_THAT(last(1), HasSubstr("vote\nvote=1\nkind=scale"));
  room->phoneText(1, "press 1 4");
  EXPECT_THAT(presses(), ElementsAre("[1],1;4"));
  EXPECT_THAT(last(1), HasSubstr("kind=scale")) << "nothing is promised yet";
  acknowledge();
  EXPECT_EQ(last(1), "yours\nvote=1\npress=4\nstanding=counted");
  room->phoneText(1, "press 1 2");
  acknowledge();
  EXPECT_THAT(presses(), ElementsAre("[1],1;4", "[1],1;2"));
  room->fromProgram("EndVote");
  EXPECT_EQ(last(1), "wait\nwhy=ended\nresult=counted\npress=2");
}

TEST_F(RoomTest, WhatTheProgramHasNotTakenWhenTheVoteEndsIsToldToBeLate) {
  room->phoneText(1, "join - 0");
  room->phoneText(2, "join - 0");
  startVote();
  room->phoneText(1, "press 1 4");
  acknowledge();
  room->phoneText(1, "press 1 5");
  room->phoneText(2, "press 1 3");
  room->fromProgram("EndVote");
  acknowledge();  // of frames that the program's side has dropped
  EXPECT_EQ(last(1), "wait\nwhy=ended\nresult=late\npress=4");
  EXPECT_EQ(last(2), "wait\nwhy=ended\nresult=late\npress=");
}

TEST_F(RoomTest, PressesThatDoNotFitAreRefused) {
  room->phoneText(1, "join - 0");
  room->phoneText(1, "press 1 4");
  EXPECT_EQ(last(1), "refused\nreason=closed");
  startVote();
  room->phoneText(1, "press 1 6");
  EXPECT_EQ(last(1), "refused\nreason=not possible");
  room->phoneText(1, "press 2 4");
  EXPECT_EQ(last(1), "refused\nreason=closed");
  EXPECT_TRUE(presses().empty());
  EXPECT_FALSE(room->phoneText(2, "press 1 4")) << "a phone that has not joined";
  EXPECT_FALSE(room->phoneText(1, "join - 0")) << "a phone joins once";
}

TEST_F(RoomTest, AProgramThatComesBackGetsWhatItMissed) {
  room->phoneText(1, "join - 0");
  room->phoneText(2, "join - 0");
  startVote();
  room->phoneText(1, "press 1 4");  // sent, never acknowledged
  room->programGone();
  room->phoneText(2, "press 1 2");
  EXPECT_EQ(last(2), "yours\nvote=1\npress=2\nstanding=kept");
  room->phoneText(2, "press 1 3");
  arrive("program");
  EXPECT_EQ(hello, "Hello=quorin-controller,1,1");
  EXPECT_THAT(presses(), ElementsAre("[1],1;4],2;3"));
  acknowledge();
  EXPECT_THAT(last(1), HasSubstr("standing=counted"));
  EXPECT_THAT(last(2), HasSubstr("standing=counted"));
}

TEST_F(RoomTest, AnotherProgramIsNotGivenPressesOfAVoteItDoesNotKnow) {
  room->phoneText(1, "join - 0");
  startVote();
  room->programGone();
  room->phoneText(1, "press 1 2");
  arrive("another");
  EXPECT_EQ(hello, "Hello=quorin-controller,1,0");
  EXPECT_TRUE(presses().empty());
  EXPECT_EQ(last(1), "wait\nwhy=interrupted\nresult=late\npress=");
}

TEST_F(RoomTest, AVoteStartedAnewForgetsTheFormerPresses) {
  room->phoneText(1, "join - 0");
  startVote();
  room->phoneText(1, "press 1 4");
  acknowledge();
  startVote();
  EXPECT_THAT(last(1), HasSubstr("vote=2"));
  room->fromProgram("EndVote");
  EXPECT_EQ(last(1), "wait\nwhy=ended\nresult=none\npress=");
  EXPECT_EQ(atProgram.back(), "VoteOpened=2");
}

TEST_F(RoomTest, AbstainIsOfferedWhileTheProgramAllowsIt) {
  room->phoneText(1, "join - 0");
  startVote({"options=5", "Abstain=True"});
  EXPECT_THAT(last(1), HasSubstr("abstain=1"));
  room->phoneText(1, "press 1 X");
  EXPECT_THAT(presses(), ElementsAre("[1],1;X"));
  room->fromProgram("EndVote");
  startVote({"Abstain=FALSE"});
  room->phoneText(1, "press 2 X");
  EXPECT_EQ(last(1), "refused\nreason=not possible");
}

TEST_F(RoomTest, KeypadsRestWhileTheKeyboardVotes) {
  room->phoneText(1, "join - 0");
  startVote();
  room->fromProgram("KBOARD");
  EXPECT_THAT(last(1), HasSubstr("why=keyboard"));
  room->phoneText(1, "press 1 3");
  EXPECT_TRUE(presses().empty());
  room->fromProgram("BaseInfo");
  EXPECT_THAT(atProgram.back(), HasSubstr("BASETYPE=KBOARD\r\n"));
  room->fromProgram("KBOARD-OFF");
  room->phoneText(1, "press 1 3");
  EXPECT_THAT(presses(), ElementsAre("[1],1;3"));
}

TEST_F(RoomTest, ThePhonesOfOneKeypadShareItsStanding) {
  room->phoneText(1, "join - 0");
  const std::string token = std::string(31, '0') + "2";  // the first was the room's own
  startVote();
  room->phoneText(1, "press 1 4");
  acknowledge();
  room->phoneText(2, "join " + token + " 0");
  EXPECT_THAT(told[2].front(), HasSubstr("keypad=1\n"));
  EXPECT_EQ(last(2), "yours\nvote=1\npress=4\nstanding=counted");
  room->phoneGone(1);
  EXPECT_EQ(room->phoneCount(), 1U);
}

TEST_F(RoomTest, BasesTellTheKeypadsThatAreThere) {
  room->fromProgram("BaseInfo");
  EXPECT_THAT(atProgram.back(), ::testing::Not(HasSubstr("OFFSET=0"))) << "nobody has joined";
  for (PhoneId phone = 1; phone <= 3; ++phone) room->phoneText(phone, "join - 0");
  room->fromProgram("BaseInfo");
  EXPECT_THAT(atProgram.back(), HasSubstr("OFFSET=0,0,1,3,False\r\n"));
  EXPECT_THAT(atProgram.back(), HasSubstr("NUMKEYPADS=3\r\n"));
  EXPECT_THAT(atProgram.back(), HasSubstr("KEYPADSNOTVOTEDCLOSE=0\r\n"));
  EXPECT_THAT(atProgram.back(), HasSubstr("PRESENT=1,2,3\r\n"));

  RoomOptions options;
  options.highest = 60;
  options.rehearse = 10;
  options.names = {{2, "Ann"}};
  furnish(options);
  arrive("program");
  room->phoneText(1, "join - 0");
  EXPECT_THAT(told[1][told[1].size() - 2], HasSubstr("keypad=11\n"));
  room->fromProgram("BaseInfo");
  EXPECT_THAT(atProgram.back(), HasSubstr("OFFSET=0,0,1,11,False\r\n"));
  EXPECT_THAT(atProgram.back(), HasSubstr("BASETYPE=REHEARSAL\r\n"));
  room->fromProgram("GetNames");
  EXPECT_THAT(atProgram.back(), HasSubstr("1,Keypad 1,1\r\n2,Ann,2\r\n"));
}

// Each keypad is told once as new: at its joining, or to the first question of a program that came later.
TEST_F(RoomTest, TheProgramLearnsWhoJoins) {
  room->phoneText(1, "join - 0");
  EXPECT_EQ(atProgram.back(), "BASETYPE=PHONES\r\nNUMKEYPADS=1\r\nJOINED=1\r\n");
  room->programGone();
  room->phoneText(2, "join - 0");
  const auto back = [this](const std::string& instance) {
    arrive(instance);
    room->fromProgram("BaseInfo");
    return atProgram.back();
  };
  EXPECT_THAT(back("program"), HasSubstr("PRESENT=1,2\r\nJOINED=2\r\n"));
  EXPECT_THAT(back("program"), ::testing::Not(HasSubstr("JOINED")));
  EXPECT_THAT(back("another"), HasSubstr("PRESENT=1,2\r\nJOINED=1,2\r\n"));
  room->phoneGone(1);
  ms += Roster::reclaimAfterMs;
  const std::size_t before = atProgram.size();
  room->phoneText(3, "join " + std::string(31, '0') + "2 0");  // the first phone again: nothing new
  EXPECT_EQ(atProgram.size(), before);

  RoomOptions full;
  full.highest = 1;
  furnish(full);
  arrive("program");
  for (PhoneId phone = 4; phone <= 5; ++phone) {
    room->phoneText(phone, "join - 0");
    EXPECT_THAT(atProgram.back(), HasSubstr("JOINED=1\r\n"))
        << "the number of one long gone is somebody else";
    atProgram.clear();
    room->phoneGone(phone);
    ms += Roster::reclaimAfterMs;
  }
}

TEST_F(RoomTest, PhonesKnownFromAnEarlierControllerAreThereOnceTheyJoin) {
  const std::string token(32, 'a');
  room->roster().readState(Roster::stateLine(7, token, 0), {});
  room->fromProgram("BaseInfo");
  EXPECT_THAT(atProgram.back(), HasSubstr("PRESENT=\r\n"));
  room->phoneText(1, "join " + token + " 0");
  EXPECT_THAT(atProgram.back(), HasSubstr("JOINED=7\r\n"));
}

TEST_F(RoomTest, UnknownCommandsAreLoggedAndDoNothing) {
  startVote();
  const auto before = atProgram.size();
  for (const char* text : {"Dance", "", "AddTask=Vote,Voting...", "ShowAudio", "Received=x"})
    room->fromProgram(text);
  EXPECT_EQ(atProgram.size(), before);
  EXPECT_THAT(logged, ElementsAre("unknown command ignored: Dance", "unknown command ignored: ",
                                  "noted: AddTask=Vote,Voting...", "noted: ShowAudio"));
}

TEST_F(RoomTest, PhonesBeyondTheRangeAreToldThatItIsFull) {
  RoomOptions options;
  options.highest = 2;
  furnish(options);
  for (PhoneId phone = 1; phone <= 3; ++phone) room->phoneText(phone, "join - 0");
  EXPECT_EQ(last(3), "full");
  EXPECT_EQ(changes, 2);
  room->phoneGone(2);
  EXPECT_EQ(changes, 3);
}

TEST_F(RoomTest, APhoneInARehearsalIsToldSo) {
  RoomOptions options;
  options.highest = options.rehearse = 20;
  furnish(options);
  EXPECT_TRUE(room->phoneText(1, "join - 0"));
  EXPECT_EQ(last(1), "rehearsal\nkeypads=20");
  EXPECT_EQ(changes, 0);
}

}  // namespace
}  // namespace qrn::controller

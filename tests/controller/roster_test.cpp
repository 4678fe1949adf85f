#include "controller/room/roster.h"

#include <gtest/gtest.h>

#include "controller/room/rate_limit.h"

namespace qrn::controller {
namespace {

std::string token(int number) {
  const std::string digits = std::to_string(number);
  return std::string(32 - digits.size(), '0') + digits;
}

long keypadOf(Roster& roster, int phone, long wanted = 0, Moment now = {}) {
  const auto joined = roster.join(token(phone), wanted, now);
  return joined ? joined->keypad : 0;
}

TEST(Roster, APhoneKeepsItsNumberAndOthersGetTheLowestFree) {
  Roster roster({{1, 3}, {11, 12}});
  EXPECT_EQ(keypadOf(roster, 1), 1);
  EXPECT_EQ(keypadOf(roster, 2, 3), 3);
  EXPECT_EQ(keypadOf(roster, 3, 3), 2) << "taken";
  EXPECT_EQ(keypadOf(roster, 4, 7), 11) << "outside";
  roster.left(1, {});
  EXPECT_EQ(keypadOf(roster, 1, 12), 1);
}

TEST(Roster, AFullRoomTakesBackOnlyNumbersLongLeftAndNeverVotedWith) {
  Roster roster({{1, 3}});
  for (int phone = 1; phone <= 3; ++phone) keypadOf(roster, phone);
  roster.voted(1);
  for (long keypad = 1; keypad <= 2; ++keypad) roster.left(keypad, {1000, 0});
  EXPECT_EQ(keypadOf(roster, 4, 0, {1000 + Roster::reclaimAfterMs - 1, 0}), 0);
  EXPECT_EQ(keypadOf(roster, 4, 0, {1000 + Roster::reclaimAfterMs, 0}), 2);
  EXPECT_EQ(keypadOf(roster, 1), 1);
}

TEST(Roster, NumbersSurviveInTheStateText) {
  Roster before({{1, 9}});
  keypadOf(before, 5, 4, {0, 1000});
  const std::string damaged =
      before.stateText() + "x y z\n\n99 " + token(6) + " 1000\n3 " + token(7) + " 10\n2 short 1000\n";
  Roster after({{1, 9}});
  after.readState(damaged, {0, Roster::lifetimeSeconds + 500});
  EXPECT_EQ(after.stateText(), before.stateText()) << "the others are malformed, outside or too old";
  EXPECT_EQ(after.present(), std::vector<long>{}) << "its phone has yet to come";
  const auto again = after.join(token(5), 0, {});
  ASSERT_TRUE(again);
  EXPECT_EQ(again->keypad, 4);
  EXPECT_FALSE(again->fresh);
}

TEST(RateLimit, AllowsABurstAndThenASteadyPace) {
  RateLimit rate(3, 2);
  int allowed = 0;
  for (int i = 0; i < 10; ++i) allowed += rate.allows(1000) ? 1 : 0;
  EXPECT_EQ(allowed, 3);
  EXPECT_FALSE(rate.allows(1400));
  EXPECT_TRUE(rate.allows(1900));
  EXPECT_EQ(rate.refused(), 8);
}

}  // namespace
}  // namespace qrn::controller

// What stands behind the room: the outbox, the pace of a phone, the frames of the link's own.
#include <gtest/gtest.h>

#include "adapters/link/wire/wire.h"
#include "base/utf8.h"
#include "controller/room/outbox.h"
#include "controller/room/phone_text.h"
#include "controller/room/rate_limit.h"

namespace qrn::controller {
namespace {

TEST(PhoneText, AFrameMayNotBeLongerThanAnyTrueOne) {
  const std::string head = "press 1 ";
  EXPECT_TRUE(readPhoneFrame(head + std::string(maxPhoneFrame - head.size(), '1')));
  EXPECT_FALSE(readPhoneFrame(head + std::string(maxPhoneFrame, '1')));
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
  while (const auto frame = box.next()) {
    ++sent;
    EXPECT_LE(std::count(frame->begin(), frame->end(), ';'), Outbox::maxPressesPerFrame);
  }
  EXPECT_EQ(box.acknowledge(sent).size(), 600 - Outbox::window);
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

TEST(Wire, AnAnnouncementComesBackAsItWasAndADamagedOneNotAtAll) {
  const link::Announcement a{7878, link::randomToken(), 42, 20, 7, "http://192.168.1.5:7878/join"};
  const auto read = link::readAnnouncement(link::announcementText(a));
  ASSERT_TRUE(read);
  EXPECT_EQ(link::announcementText(*read), link::announcementText(a));
  EXPECT_EQ(read->rehearse, 20);
  for (const char* bad : {"", "port=7878\n", "port=70000\ntoken=0123456789abcdef0123456789abcdef\n",
                          "port=1\ntoken=short\n", "port=\ntoken=0123456789abcdef0123456789abcdef"})
    EXPECT_FALSE(link::readAnnouncement(bad)) << bad;
}

TEST(Wire, TheRoomComesBackAsItWas) {
  const host::RoomState room{"192.168.1.20:7878",
                             "http://127.0.0.1:7878/join",
                             {{"vote.local", "", true}, {"10.8.0.3", "wg0", false}},
                             3,
                             20,
                             false};
  EXPECT_EQ(link::readRoom(link::roomText(room)), room);
  EXPECT_EQ(link::readRoom("Room=\nlikely=\nnonsense\nphones=x\n"), host::RoomState{});
}

TEST(Wire, WhatIsNotUtf8IsMarked) {
  EXPECT_EQ(validUtf8("Fjäll € 😀"), "Fjäll € 😀");
  EXPECT_EQ(validUtf8("a\xE4z\xC0\x80\xED\xA0\x80"),
            "a\xEF\xBF\xBDz\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
}  // namespace qrn::controller

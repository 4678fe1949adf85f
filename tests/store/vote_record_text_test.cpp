#include "core/vote_record_text.h"

#include <gtest/gtest.h>

#include <random>

namespace qrn {
namespace {

TEST(VoteRecordText, FindsTheLastLineThatHoldsTheKey) {
  VoteRecordText records;
  EXPECT_FALSE(records.known());
  records.assign("d,t,1;,3C1\r\nd,t,2;,13C1\nd,t,3;,3c10\r\nd,t,[SSD],\r\nd,t,4;,13C2");
  const std::string mended = records.text();
  EXPECT_EQ(mended, "d,t,1;,3C1\r\nd,t,2;,13C1\r\nd,t,3;,3c10\r\nd,t,[SSD],\r\nd,t,4;,13C2");
  records.assign("d,t,1;,3C1\r\nd,t,2;,13C1\r\nd,t,3;,3c10^|^d,t,[SSD],\r\nd,t,4;,13C2");
  EXPECT_EQ(records.text(), mended);
  struct Case {
    const char *key, *line;
  };
  for (const Case& c :
       {Case{"3C1", "d,t,3;,3c10"}, Case{"3C10", "d,t,3;,3c10"}, Case{"13C1", "d,t,2;,13C1"},
        Case{"13c2", "d,t,4;,13C2"}, Case{"3C2", ""}, Case{"C1", ""}, Case{"[ssd]", "d,t,[SSD],"}})
    EXPECT_EQ(records.lastLine(c.key), c.line) << c.key;
  EXPECT_EQ(records.recordCount(), 4u);
  EXPECT_EQ(records.lastLine(recordKey(13, 2)), "d,t,4;,13C2");
}

TEST(VoteRecordText, AnAppendedLineWinsAndContinuesACutOne) {
  VoteRecordText records;
  records.assign("d,t,1;,3C1\r\nd,t,2;,4C1");
  EXPECT_TRUE(records.endsInsideLine());
  EXPECT_EQ(records.lastLine("4C12").data(), nullptr);
  records.append("2\r\n");
  records.append("d,t,5;,3C1\r\n");
  EXPECT_EQ(records.lastLine("4C12"), "d,t,2;,4C12");
  EXPECT_EQ(records.lastLine("4C1"), "d,t,2;,4C12");
  EXPECT_EQ(records.lastLine("3C1"), "d,t,5;,3C1");
  EXPECT_EQ(records.recordCount(), 3u);
  records.forget();
  EXPECT_FALSE(records.known());
  EXPECT_EQ(records.lastLine("3C1").data(), nullptr);
}

std::string randomText(std::mt19937& random) {
  const char* const pieces[] = {",",     "1C1",   "12C3", "1c10", "-5C2", "\r\n",
                                "\r\n",  "X;-;",  "5;",   "\"",   "C",    "0012C3",
                                "[SSD]", "1C123", ",,",   "\n",   "\r",   "12345678901234C1"};
  std::string text;
  for (unsigned long i = random() % 40; i > 0; --i) text += pieces[random() % std::size(pieces)];
  return text;
}

TEST(VoteRecordText, TheIndexAgreesWithThePlainScanOnRandomTexts) {
  const char* const keys[] = {"1C1",   "1C10", "1C12", "12C3", "-5C2", "0012C3",
                              "1C123", "5C2",  "C",    "",     "12C",  "12345678901234C1",
                              "2C3",   "1c1"};
  std::mt19937 random(11);
  for (int round = 0; round < 3000; ++round) {
    VoteRecordText records;
    records.assign(randomText(random));
    for (unsigned long i = random() % 4; i > 0; --i) records.append(randomText(random));
    for (const char* key : keys) {
      const std::string_view plain = VoteRecordText::lastLineByScan(records.text(), key);
      const std::string_view found = records.lastLine(key);
      ASSERT_EQ(found.data(), plain.data()) << key << " in:\n" << records.text();
      ASSERT_EQ(found, plain) << key << " in:\n" << records.text();
    }
  }
}

}  // namespace
}  // namespace qrn

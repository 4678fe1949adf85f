// What is no usable deck is told clearly and left alone; what is unusual but whole opens.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "adapters/deck/deck.h"
#include "adapters/deck/deck_fixture.h"

namespace qrn::test {
namespace {

using deck::Deck;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string messageOf(const std::string& file) {
  try {
    Deck::open(file);
  } catch (const HostError& error) {
    EXPECT_NE(error.fault(), Fault::program);
    return error.what();
  }
  return "opened";
}

TEST(DeckOpen, SaysWhatIsWrongWithItsBytes) {
  const TempFolder folder;
  const std::string whole = readFile(folder.deck());
  std::string stream;
  for (const char c : std::string_view("EncryptedPackage")) stream += {c, '\0'};
  const std::string ole = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(3000, '\0');
  std::string damaged = whole;
  for (std::size_t i = 40; i < 300; ++i) damaged[i] = static_cast<char>(damaged[i] ^ 0x55);
  const struct {
    std::string bytes;
    const char* message;
  } cases[] = {{"", "is empty"},
               {"just a text, no deck", "is not a presentation"},
               {"PK", "is broken or cut short"},
               {whole.substr(0, whole.size() / 2), "is broken or cut short"},
               {whole.substr(0, whole.size() - 1), "is broken or cut short"},
               {damaged, "is broken"},
               {ole + stream, "password-protected"},
               {ole + std::string(200000, 'x') + stream, "password-protected"},
               {ole, "old binary format"}};
  for (const auto& one : cases) {
    writeFile(folder.file("talk.pptx"), one.bytes);
    EXPECT_THAT(messageOf(folder.file("talk.pptx")), AllOf(HasSubstr("talk.pptx"), HasSubstr(one.message)));
    EXPECT_EQ(readFile(folder.file("talk.pptx")), one.bytes);
  }
  EXPECT_THAT(messageOf(folder.file("absent.pptx")), HasSubstr("absent.pptx"));
  EXPECT_THAT(messageOf(folder.path()), HasSubstr("is not a file"));
}

TEST(DeckOpen, RefusesABomb) {
  const TempFolder folder;
  PartList parts = deckParts();
  part(parts, "ppt/presentation.xml") = std::string(80 << 20, ' ');
  writeZip(folder.file("talk.pptx"), parts);
  EXPECT_THAT(messageOf(folder.file("talk.pptx")), HasSubstr("not safe to open"));
}

// Two letters in three bytes: a cut must not leave half of one.
std::string longName(const std::string& end) {
  std::string name;
  while (name.size() + 3 + end.size() <= 255) name += "a\xC3\xA9";
  return name + std::string(255 - name.size() - end.size(), 'x') + end;
}

TEST(DeckOpen, NamesAsLongAsTheFileSystemTakes) {
  const TempFolder folder;
  for (const std::string end : {"1.pptx", "2.pptx"}) {
    const std::string file = folder.file(longName(end));
    std::filesystem::rename(folder.deck(), file);
    { Deck::open(file)->tags().Add("A", end); }
    const auto deck = Deck::open(file);
    EXPECT_EQ(deck->tags().Item("A"), end) << "the journal is found again";
    deck->Save();
    std::filesystem::rename(folder.deck({2, false, false, false, false}), file);
    EXPECT_TRUE(Deck::open(file, {true, nullptr, "", {}})->tagsDropped()) << "the backup is found again";
  }
  for (const std::string& name : folder.names()) {
    EXPECT_LE(name.size(), 255U);
    EXPECT_EQ(name.find("\xC3~"), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace qrn::test

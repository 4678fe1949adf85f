// What is no usable deck is told clearly and left alone; what is unusual but whole opens.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "adapters/deck/deck.h"
#include "adapters/deck/deck_fixture.h"

namespace qrn::test {
namespace {

using deck::Deck;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

using Spoil = std::function<void(PartList&)>;

Spoil without(const std::string& name) {
  return
      [name](PartList& parts) { std::erase_if(parts, [&](const auto& one) { return one.first == name; }); };
}

Spoil changed(const std::string& name, const std::string& what, const std::string& by) {
  return [=](PartList& parts) { part(parts, name) = replaced(part(parts, name), what, by); };
}

std::string messageOf(const std::string& file) {
  try {
    const auto deck = Deck::open(file);
    for (int i = 1; i <= deck->SlideCount(); ++i)
      if (const std::string damage = deck->Slides(i).Damage(); !damage.empty())
        return damage;
  } catch (const HostError& error) {
    EXPECT_NE(error.fault(), Fault::program);
    return error.what();
  }
  return "opened";
}

TEST(DeckOpen, SaysWhatIsWrongWithItsParts) {
  const struct {
    const char* name;
    Spoil spoil;
    const char* message;
  } cases[] = {
      {"no content types", without("[Content_Types].xml"), "is not a presentation"},
      {"no relationships", without("_rels/.rels"), "is not a presentation"},
      {"no presentation part", without("ppt/presentation.xml"), "ppt/presentation.xml is missing"},
      {"a text document", changed("ppt/presentation.xml", "presentation x", "document x"), "is broken XML"},
      {"another main part",
       [](PartList& parts) { part(parts, "ppt/presentation.xml") = "<w:document xmlns:w=\"urn:w\"/>"; },
       "is not a presentation"},
      {"no slide part", without("ppt/slides/slide2.xml"), "slide 2 is missing"},
      {"climbing out", [](PartList& parts) { part(parts, "ppt/../../etc/passwd") = "x"; }, "leads out"},
      {"absolute name", [](PartList& parts) { part(parts, "/etc/passwd") = "x"; }, "leads out"},
      {"backslash", [](PartList& parts) { part(parts, "ppt\\..\\x") = "x"; }, "leads out"},
      {"relationship climbing out",
       changed("ppt/_rels/presentation.xml.rels", "slides/slide1.xml", "../../../etc/slide1.xml"),
       "slide 1 is missing"},
      {"entities", changed("ppt/slides/slide1.xml", "<!-- kept -->", "<!DOCTYPE a [<!ENTITY b \"c\">]>"),
       "declares a document type"},
      {"no encoding", changed("ppt/slides/slide1.xml", "UTF-8", "x-none"), "encoding that cannot be read"},
      {"not its encoding",
       changed("ppt/slides/slide1.xml", "UTF-8\" standalone=\"yes\"?>", "us-ascii\"?>\xE9"),
       "no character of its encoding"},
      {"not well-formed", changed("ppt/slides/slide1.xml", "</p:cSld>", ""), "is broken XML"},
      {"signed", [](PartList& parts) { part(parts, "_xmlsignatures/sig1.xml") = "<a/>"; },
       "digitally signed"},
      {"the same id twice", changed("ppt/presentation.xml", "\"299\"", "\"300\""), "two slides"},
      {"a bomb", [](PartList& parts) { part(parts, "ppt/presentation.xml") = std::string(80 << 20, ' '); },
       "not safe to open"},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.name);
    const TempFolder folder;
    PartList parts = deckParts();
    one.spoil(parts);
    writeZip(folder.file("talk.pptx"), parts);
    const std::string before = readFile(folder.file("talk.pptx"));
    EXPECT_THAT(messageOf(folder.file("talk.pptx")), AllOf(HasSubstr("talk.pptx"), HasSubstr(one.message)));
    EXPECT_EQ(readFile(folder.file("talk.pptx")), before);
    EXPECT_THAT(folder.names(), ElementsAre("talk.pptx"));
  }
}

TEST(DeckOpen, OneDamagedSlideClosesNoDeckAndStaysAsItIs) {
  const struct {
    const char *name, *part;
    Spoil spoil;
  } cases[] = {{"slide", "ppt/slides/slide1.xml", changed("ppt/slides/slide1.xml", "</p:cSld>", "")},
               {"tags", "ppt/tags/tag2.xml", changed("ppt/tags/tag2.xml", "</p:tagLst>", "")},
               {"relationships", "ppt/slides/_rels/slide1.xml.rels",
                changed("ppt/slides/_rels/slide1.xml.rels", "</Relationships>", "")}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.name);
    const TempFolder folder;
    const std::string file = folder.deck({3, false, false, false, true});
    {
      const auto whole = Deck::open(file);
      whole->tags().Delete("OTHER");  // no list but the damaged one says that votes are there
      whole->Slides(1).tags().Append("QRNVOTES", "1;");
      whole->Save();
    }
    PartList parts = readZip(file);
    one.spoil(parts);
    writeZip(file, parts);
    {
      const auto deck = Deck::open(file);
      EXPECT_EQ(deck->foreignSaveWarning(), std::nullopt);
      host::Slide& damaged = deck->Slides(1);
      EXPECT_THAT(damaged.Damage(), HasSubstr(one.part));
      EXPECT_EQ(damaged.tags().Item("QRNVOTES"), "");
      EXPECT_EQ(damaged.Title().empty(), damaged.Shapes().empty());
      EXPECT_FALSE(damaged.Hidden());
      EXPECT_TRUE(damaged.NotesPageShapes().empty());
      try {
        damaged.tags().Append("QRNVOTES", "2;");
        ADD_FAILURE() << "stored";
      } catch (const HostError& error) {
        EXPECT_THAT(error.what(), AllOf(HasSubstr("slide 1"), HasSubstr(one.part)));
      }
      deck->Slides(2).tags().Append("QRNVOTES", "3;");
    }
    const auto deck = Deck::open(file);
    EXPECT_EQ(deck->Slides(2).Damage(), "");
    EXPECT_EQ(deck->Slides(2).tags().Item("QRNVOTES"), "3;");
    deck->Save();
    PartList after = readZip(file);
    for (const auto& [name, text] : parts)
      EXPECT_TRUE(part(after, name) == text || name.find("slide2") != std::string::npos ||
                  name == "[Content_Types].xml")
          << name;
    EXPECT_THAT(readFile(file + ".backup"), AllOf(HasSubstr("old\n1;"), HasSubstr("3;")));
  }
}

TEST(DeckOpen, ADamagedListOfTheWholeDeckIsToldAndStaysAsItIs) {
  const TempFolder folder;
  const std::string file = folder.deck({3, false, false, false, true});
  {
    const auto whole = Deck::open(file);
    whole->tags().Add("QRNCURRENTSLIDE", "2");
    whole->Save();
  }
  PartList parts = readZip(file);
  changed("ppt/tags/tag3.xml", "</p:tagLst>", "")(parts);
  writeZip(file, parts);
  const auto deck = Deck::open(file);
  EXPECT_THAT(deck->foreignSaveWarning().value_or(""), HasSubstr("ppt/tags/tag3.xml"));
  EXPECT_THROW(deck->tags().Add("A", "1"), HostError);
  deck->Slides(1).tags().Add("A", "1");
  deck->Save();
  PartList after = readZip(file);
  EXPECT_EQ(part(after, "ppt/tags/tag3.xml"), part(parts, "ppt/tags/tag3.xml"));
  EXPECT_THAT(readFile(file + ".backup"), HasSubstr("tag QRNCURRENTSLIDE 1\n2\n"));
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

TEST(DeckOpen, TakesUnusualDecks) {
  const std::string utf16 = [] {
    PartList parts = deckParts();
    std::string wide = "\xFF\xFE";
    for (const char c : replaced(part(parts, "ppt/slides/slide1.xml"), "UTF-8", "UTF-16")) wide += {c, '\0'};
    return wide;
  }();
  const struct {
    const char* name;
    Spoil spoil;
  } cases[] = {
      {"macros", changed("[Content_Types].xml",
                         "application/vnd.openxmlformats-officedocument.presentationml.presentation.main+xml",
                         "application/vnd.ms-powerpoint.presentation.macroEnabled.main+xml")},
      {"UTF-8 that says UTF-16", changed("ppt/slides/slide1.xml", "UTF-8", "UTF-16")},
      {"UTF-16", [&](PartList& parts) { part(parts, "ppt/slides/slide1.xml") = utf16; }},
      {"other prefix, self-closed list",
       [](PartList& parts) {
         part(parts, "ppt/slides/slide1.xml") =
             "<sld xmlns='http://schemas.openxmlformats.org/presentationml/2006/main'><cSld><spTree/>"
             "<custDataLst/></cSld></sld>";
       }},
      {"names in another case",
       changed("ppt/_rels/presentation.xml.rels", "slides/slide1.xml", "Slides/SLIDE1.xml")},
      {"no relationships of the slide", without("ppt/slides/_rels/slide1.xml.rels")},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.name);
    const TempFolder folder;
    PartList parts = deckParts();
    one.spoil(parts);
    writeZip(folder.file("talk.pptx"), parts);
    {
      const auto deck = Deck::open(folder.file("talk.pptx"));
      deck->Slides(1).tags().Add("A", "1");
      deck->Save();
    }
    const auto deck = Deck::open(folder.file("talk.pptx"));
    EXPECT_EQ(deck->Slides(1).tags().Item("A"), "1");
  }
}

TEST(DeckOpen, ASignedDeckOpensReadOnly) {
  const TempFolder folder;
  PartList parts = deckParts();
  part(parts, "_xmlsignatures/sig1.xml") = "<a/>";
  writeZip(folder.file("talk.pptx"), parts);
  EXPECT_EQ(Deck::open(folder.file("talk.pptx"), {true, nullptr, "", {}})->SlideCount(), 3);
}

TEST(DeckOpen, DoesNotReadAHundredMegabytesOfMedia) {
  const TempFolder folder;
  PartList parts = deckParts({300, false, false, false, false});
  std::string noise(std::size_t{100} << 20, '\0');
  for (std::size_t i = 0; i < noise.size(); i += 7) noise[i] = static_cast<char>(i * 2654435761U >> 13);
  part(parts, "ppt/media/film.png") = std::move(noise);
  writeZip(folder.file("talk.pptx"), parts);
  const auto start = std::chrono::steady_clock::now();
  const auto deck = Deck::open(folder.file("talk.pptx"));
  const auto seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  EXPECT_EQ(deck->SlideCount(), 300);
  EXPECT_LT(seconds, 1.0);
}

}  // namespace
}  // namespace qrn::test

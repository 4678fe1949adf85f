// Slides, shapes, notes, the master's look, new slides, backups.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "adapters/deck/deck.h"
#include "adapters/deck/deck_fixture.h"

namespace qrn::test {
namespace {

using deck::Deck;
using host::PlaceholderType;
using host::Shape;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(DeckSlides, StandInPresentationOrder) {
  const TempFolder folder;
  PartList parts = deckParts();
  std::string& list = part(parts, "ppt/presentation.xml");
  list = replaced(list, "<p:sldId id=\"300\" r:id=\"s1\"/>", "");
  list = replaced(list, "</p:sldIdLst>", "<p:sldId id=\"300\" r:id=\"s1\"/></p:sldIdLst>");
  std::string& third = part(parts, "ppt/slides/slide3.xml");
  third = replaced(third, "<p:sld ", "<p:sld show=\"0\" ");
  writeZip(folder.file("talk.pptx"), parts);
  const auto deck = Deck::open(folder.file("talk.pptx"));
  ASSERT_EQ(deck->SlideCount(), 3);
  const struct {
    int id;
    const char* title;
    bool hidden;
  } expected[] = {{299, "Question 2", false}, {298, "Question 3", true}, {300, "Question 1", false}};
  for (int i = 1; i <= 3; ++i) {
    host::Slide& slide = deck->Slides(i);
    EXPECT_EQ(slide.slideID(), expected[i - 1].id);
    EXPECT_EQ(slide.slideIndex(), i);
    EXPECT_EQ(slide.Title(), expected[i - 1].title);
    EXPECT_EQ(slide.Hidden(), expected[i - 1].hidden);
  }
  EXPECT_THROW(deck->Slides(0), HostError);
  EXPECT_THROW(deck->Slides(4), HostError);
  EXPECT_EQ(deck->SlideWidth(), 960);
  EXPECT_EQ(deck->SlideHeight(), 540);
}

TEST(DeckSlides, ShapesAreReadAsTheProgramShowsThem) {
  const TempFolder folder;
  const auto deck = Deck::open(folder.deck());
  const std::vector<Shape*> shapes = deck->Slides(1).Shapes();
  ASSERT_EQ(shapes.size(), 3U);
  EXPECT_EQ(shapes[1]->Text(), " one & two\rthree\vfour");
  const std::vector<PlaceholderType> kinds = {PlaceholderType::title, PlaceholderType::other,
                                              PlaceholderType::none};
  const std::vector<std::string> names = {"Title 1", "Content", "Picture"};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(shapes[i]->Name(), names[i]);
    EXPECT_EQ(shapes[i]->Placeholder(), kinds[i]);
    EXPECT_EQ(shapes[i]->HasTextFrame(), i < 2);
    EXPECT_TRUE(shapes[i]->Visible());
  }
  EXPECT_TRUE(deck->Slides(1).NotesPageShapes().empty());
  const std::vector<Shape*> notes = deck->Slides(2).NotesPageShapes();
  ASSERT_EQ(notes.size(), 2U);
  EXPECT_FALSE(notes[0]->HasTextFrame()) << "the picture of the slide";
  EXPECT_EQ(notes[1]->Text(), "a.mtx note");
}

TEST(DeckSlides, HiddenAndShownAgainLeavesTheSlideAsItWas) {
  const TempFolder folder;
  const std::string file = folder.deck();
  const std::string before = readFile(file);
  const auto deck = Deck::open(file);
  for (Shape* shape : deck->Slides(1).Shapes()) shape->SetVisible(false);
  for (Shape* shape : deck->Slides(1).Shapes()) {
    EXPECT_FALSE(shape->Visible());
    shape->SetVisible(true);
  }
  deck->Save();
  EXPECT_EQ(readFile(file), before);
  const PartList parts = readZip(file);
  for (const bool visible : {false, true}) {
    for (Shape* shape : deck->Slides(1).Shapes()) shape->SetVisible(visible);
    deck->Save();
    EXPECT_EQ(readZip(file) == parts, visible) << "also with a save between";
  }
}

TEST(DeckSlides, ChangesToShapesTouchNothingElse) {
  const TempFolder folder;
  const std::string file = folder.deck();
  PartList before = readZip(file);
  const auto deck = Deck::open(file);
  std::vector<Shape*> shapes = deck->Slides(1).Shapes();
  shapes[0]->SetVisible(false);
  shapes[2]->Delete();
  Shape* notes = deck->Slides(2).NotesPageShapes()[1];
  notes->SetText(notes->Text() + "\r\nThis & that\v<more>\n");
  EXPECT_EQ(notes->Text(), "a.mtx note\rThis & that\v<more>\r");
  deck->Slides(1).tags().Add("A", "1");
  deck->Save();
  shapes[1]->SetVisible(false);  // still the same shape after saving
  deck->Save();

  PartList after = readZip(file);
  std::string expected = part(before, "ppt/slides/slide1.xml");
  expected = replaced(expected, "<p:cNvPr id=\"2\"", "<p:cNvPr hidden=\"1\" id=\"2\"");
  expected = replaced(expected, "<p:cNvPr id=\"3\"", "<p:cNvPr hidden=\"1\" id=\"3\"");
  const std::size_t picture = expected.find("<p:pic>"), end = expected.find("</p:pic>") + 8;
  expected.erase(picture, end - picture);
  expected =
      replaced(expected, "</p:spTree>", "</p:spTree><p:custDataLst><p:tags r:id=\"rId3\"/></p:custDataLst>");
  EXPECT_EQ(part(after, "ppt/slides/slide1.xml"), expected);
  const std::string run = "<a:r><a:rPr lang='en-GB' dirty=\"0\"/><a:t>",
                    look = "<a:rPr lang='en-GB' dirty=\"0\"/>";
  EXPECT_EQ(part(after, "ppt/notesSlides/notesSlide7.xml"),
            replaced(part(before, "ppt/notesSlides/notesSlide7.xml"), "a.mtx note</a:t></a:r></a:p>",
                     "a.mtx note</a:t></a:r></a:p><a:p>" + run + "This &amp; that</a:t></a:r><a:br>" + look +
                         "</a:br>" + run + "&lt;more&gt;</a:t></a:r></a:p><a:p></a:p>"));
  const auto again = Deck::open(file, {true, nullptr, "", {}});
  EXPECT_EQ(again->Slides(1).Shapes().size(), 2U);
  EXPECT_FALSE(again->Slides(1).Shapes()[0]->Visible());
  EXPECT_EQ(again->Slides(2).NotesPageShapes()[1]->Text(), "a.mtx note\rThis & that\v<more>\r");
}

TEST(DeckSlides, TheMasterGivesFontsAndColours) {
  const TempFolder folder;
  const auto deck = Deck::open(folder.deck());
  const auto title = deck->MasterTitleFont(), body = deck->MasterBodyFont();
  ASSERT_TRUE(title && body);
  EXPECT_EQ(title->name, "Big Face");
  EXPECT_EQ(title->size, 44);
  EXPECT_TRUE(title->bold && title->underline && !title->italic);
  EXPECT_EQ(title->colour, 0xC1B0A0);
  EXPECT_EQ(body->name, "Small Face");
  EXPECT_EQ(body->size, 28);
  EXPECT_TRUE(body->italic && !body->bold && !body->underline);
  EXPECT_EQ(body->colour, 0x030201) << "the system colour's last value";
  const std::vector<std::int32_t> scheme = {0xFFFFFF, 0x030201, 0x302010, 0xE2E1E0, 0xC1B0A0,
                                            0xC2B0A0, 0xC3B0A0, 0xC4B0A0, 0xC5B0A0, -1};
  for (int entry = 1; entry <= 10; ++entry)
    EXPECT_EQ(deck->SchemeColour(entry), scheme[static_cast<std::size_t>(entry - 1)]) << entry;
  EXPECT_EQ(deck->SchemeColour(0), -1);
  EXPECT_EQ(deck->SchemeColour(11), -1);
}

TEST(DeckSlides, AMasterWithoutPlaceholdersOrThemeHasNoLook) {
  const TempFolder folder;
  PartList parts = deckParts();
  std::erase_if(parts, [](const auto& one) { return one.first == "ppt/theme/theme1.xml"; });
  std::string& master = part(parts, "ppt/slideMasters/slideMaster1.xml");
  master = replaced(master, "<p:ph type=\"title\"/>", "");
  writeZip(folder.file("talk.pptx"), parts);
  const auto deck = Deck::open(folder.file("talk.pptx"));
  EXPECT_FALSE(deck->MasterTitleFont());
  EXPECT_EQ(deck->SchemeColour(1), -1);
  ASSERT_TRUE(deck->MasterBodyFont());
  EXPECT_EQ(deck->MasterBodyFont()->name, "");
}

class NewSlides : public ::testing::TestWithParam<bool> {};

TEST_P(NewSlides, JoinTheDeckWhereTheyAreAskedFor) {
  const TempFolder folder;
  const std::string file = folder.deck({3, GetParam(), false, false, false});
  {
    const auto deck = Deck::open(file);
    EXPECT_EQ(deck->AddTitleOnlySlide(0).slideIndex(), 1);
    host::Slide& last = deck->AddTitleOnlySlide(4);
    EXPECT_EQ(last.slideIndex(), 5);
    last.Shapes()[0]->SetText("New question");
    last.tags().Add("QRNMATRIX", "m");
    EXPECT_THROW(deck->AddTitleOnlySlide(7), HostError);
    deck->Save();
  }
  const auto deck = Deck::open(file);
  std::vector<int> ids;
  for (int i = 1; i <= deck->SlideCount(); ++i) ids.push_back(deck->Slides(i).slideID());
  EXPECT_THAT(ids, ElementsAre(301, 300, 299, 298, 302));
  EXPECT_EQ(deck->Slides(5).Title(), "New question");
  EXPECT_EQ(deck->Slides(5).tags().Item("qrnmatrix"), "m");
  PartList parts = readZip(file);
  EXPECT_THAT(part(parts, "ppt/slides/_rels/slide4.xml.rels"),
              HasSubstr("\"../slideLayouts/slideLayout2.xml\""))
      << "the title-only layout";
  EXPECT_THAT(part(parts, "[Content_Types].xml"), HasSubstr("/ppt/slides/slide5.xml"));
}

INSTANTIATE_TEST_SUITE_P(Dialects, NewSlides, ::testing::Bool());

TEST(DeckSlides, NewOnesNeedALayoutWithATitleAndJoinSections) {
  const TempFolder folder;
  PartList parts = deckParts();
  std::erase_if(parts, [](const auto& one) { return one.first.find("slideLayout2") != std::string::npos; });
  std::string& list = part(parts, "ppt/presentation.xml");
  list =
      replaced(list, "</p:presentation>",
               "<p:extLst><p:ext uri=\"{S}\"><p14:sectionLst xmlns:p14=\"urn:14\"><p14:section><p14:sldIdLst>"
               "<p14:sldId id=\"300\"/></p14:sldIdLst></p14:section></p14:sectionLst></p:ext></p:extLst>"
               "</p:presentation>");
  writeZip(folder.file("talk.pptx"), parts);
  {
    const auto deck = Deck::open(folder.file("talk.pptx"));
    deck->AddTitleOnlySlide(1);
    deck->Save();
  }
  PartList after = readZip(folder.file("talk.pptx"));
  EXPECT_THAT(part(after, "ppt/slides/_rels/slide4.xml.rels"), HasSubstr("slideLayout1.xml"));
  EXPECT_THAT(part(after, "ppt/presentation.xml"),
              HasSubstr("<p14:sldId id=\"300\"/><p14:sldId id=\"301\"/>"));
  part(parts, "ppt/slideLayouts/slideLayout1.xml") =
      replaced(part(parts, "ppt/slideLayouts/slideLayout1.xml"), "<p:ph type=\"title\"/>", "");
  writeZip(folder.file("none.pptx"), parts);
  const auto deck = Deck::open(folder.file("none.pptx"));
  EXPECT_THROW(deck->AddTitleOnlySlide(0), HostError);
  EXPECT_EQ(deck->SlideCount(), 3);
}

TEST(DeckBackup, TagsDroppedByAnotherProgramAreToldAndPutBack) {
  const TempFolder folder;
  const std::string file = folder.deck();
  {
    const auto deck = Deck::open(file);
    EXPECT_FALSE(deck->foreignSaveWarning());
    deck->Slides(1).tags().Add("QRNVOTES", "1\r\n");
    deck->Slides(3).tags().Add("QRNMATRIX", "m");
    deck->Slides(3).tags().Add("A NAME 100%", "");
    deck->tags().Add("ACTIVEKEYPADS", "1,2");
    deck->Save();
  }
  EXPECT_FALSE(Deck::open(file)->foreignSaveWarning());
  PartList parts = deckParts();  // without tags, with other ids, slide 3 moved to the front, slide 1 renamed
  std::string& list = part(parts, "ppt/presentation.xml");
  list = replaced(
      list,
      "<p:sldId id=\"300\" r:id=\"s1\"/><p:sldId id=\"299\" r:id=\"s2\"/><p:sldId id=\"298\" r:id=\"s3\"/>",
      "<p:sldId id=\"256\" r:id=\"s3\"/><p:sldId id=\"257\" r:id=\"s1\"/><p:sldId id=\"258\" r:id=\"s2\"/>");
  part(parts, "ppt/slides/slide1.xml") =
      replaced(part(parts, "ppt/slides/slide1.xml"), "Question 1", "Other");
  writeZip(file, parts);
  const std::string backup = readFile(file + ".backup");
  {
    const auto deck = Deck::open(file);
    ASSERT_TRUE(deck->foreignSaveWarning());
    EXPECT_THAT(*deck->foreignSaveWarning(), HasSubstr("talk.pptx.backup"));
    const deck::RestoreResult result = deck->restoreFromBackup();
    EXPECT_EQ(result.tags, 3);
    EXPECT_THAT(result.notPlaced, ElementsAre(HasSubstr("Question 1")));
    EXPECT_EQ(deck->Slides(1).tags().Item("QRNMATRIX"), "m");
    EXPECT_EQ(deck->tags().Item("ActiveKeypads"), "1,2");
    deck->Save();
  }
  EXPECT_EQ(readFile(file + ".backup.1"), backup) << "what could not be placed must not be lost";
  EXPECT_FALSE(Deck::open(file)->foreignSaveWarning());
}

TEST(DeckBackup, TellsThatTheDeckIsOpenElsewhereAndRefusesADamagedBackup) {
  const TempFolder folder;
  const std::string file = folder.deck();
  writeFile(folder.file(".~lock.talk.pptx#"), "x");
  writeFile(file + ".backup", "quorin matrix deck backup 1\ntag A");
  const auto deck = Deck::open(file);
  EXPECT_THAT(deck->foreignSaveWarning().value_or(""), HasSubstr("open in LibreOffice"));
  EXPECT_THROW(deck->restoreFromBackup(), HostError);
}

}  // namespace
}  // namespace qrn::test

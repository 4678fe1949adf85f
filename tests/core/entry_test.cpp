// A run from its command line to what it shows, on a scripted presentation.
#include <gmock/gmock.h>

#include "core/entry_fixture.h"

namespace qrn {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// Command line and modes

TEST_F(EntryTest, SplitsTheCommandLine) {
  struct Case {
    std::string line, file, mode, slide, field4, field5;
  };
  for (const Case& c :
       std::vector<Case>{{"", "", "", "", "", ""},
                         {"qrnmatrix", "QRNMATRIX", "", "", "", ""},
                         {" qrnmatrix , s ,3, four , five ", "QRNMATRIX", "S", "3", "FOUR", "FIVE"},
                         {"a,b,c,d,e,f,g", "A", "B", "C", "D", "E"},
                         {",display", "", "DISPLAY", "", "", ""}}) {
    glo = Glo{};
    splitCommandLine(c.line);
    EXPECT_THAT(
        (std::vector<std::string>{glo.cmdFile, glo.cmdMode, glo.cmdSlide, glo.cmdField4, glo.cmdField5}),
        ElementsAre(c.file, c.mode, c.slide, c.field4, c.field5))
        << c.line;
  }
}

TEST_F(EntryTest, ModesStandForFilesSlidesAndOtherModes) {
  struct Case {
    std::string line, file, mode, slide;
  };
  for (const Case& c : std::vector<Case>{{"X,WIZARD", "WIZARD", "WIZARD", ""},
                                         {"X,S", "X", "SETUP", ""},
                                         {"X,W", "WIZARD", "W", ""},
                                         {"X,3", "X", "DISPLAY", "3"},
                                         {"X,0", "X", "0", ""},
                                         {"X,-2", "X", "-2", ""},
                                         {"X,SERIES VOTE,keep", "X", "SERIES VOTE", "KEEP"}}) {
    glo = Glo{};
    splitCommandLine(c.line);
    applyModes();
    EXPECT_THAT((std::vector<std::string>{glo.cmdFile, glo.cmdMode, glo.cmdSlide}),
                ElementsAre(c.file, c.mode, c.slide))
        << c.line;
  }
}

TEST_F(EntryTest, MakeAsksForFileAndMode) {
  world.expectInputBox("Debug mode: What file? *.mtx or qrnmatrix for v4", "qrnmatrix");
  world.expectInputBox("Debug mode: What type? Setup (S), Slidenumber, Wizard (W)", "w");
  splitCommandLine("x,make");
  applyModes();
  EXPECT_EQ(glo.cmdFile, "WIZARD");
  EXPECT_EQ(glo.cmdMode, "W");
}

// Attaching

TEST_F(EntryTest, EndsWithoutAWordWhenTheProgramDoesNotRun) {
  world.program.running = false;
  Main("QRNMATRIX,S");
  EXPECT_TRUE(glo.closing);
  EXPECT_THAT(world.dialogs.asked, IsEmpty());
  EXPECT_THAT(world.forms.loadedNames(), IsEmpty());
}

TEST_F(EntryTest, TellsWhenNoPresentationIsThere) {
  world.program.presentation = nullptr;
  world.program.showRuns = false;
  world.expectMsgBox("Matrix: No PowerPoint presentation detected");
  world.expectMsgBox("quorinMatrix Auto Close: Matrix is closing because");
  Main("QRNMATRIX,S");
  EXPECT_TRUE(glo.closing);
  EXPECT_THAT(errorLog(), HasSubstr("Procedure: Main"));
}

TEST_F(EntryTest, TellsWhenThereIsNoSlideToOpen) {
  world.program.show.index = 0;
  world.expectMsgBox("Matrix: There is no PowerPoint presentation loaded");
  Main("QRNMATRIX,S");
  EXPECT_TRUE(glo.closing);
}

TEST_F(EntryTest, GoesOnAfterAFolderThatCannotBeMade) {
  struct NoFolders : test::MemoryFiles {
    void makeFolder(const std::string& path) override {
      if (path.rfind("/tmp/", 0) == 0)
        throw HostError(Fault::world, number, path);
    }
    int number = 75;
  } files;
  host::host().files = &files;
  storeExercise();
  Main("QRNMATRIX,SETUP");
  EXPECT_FALSE(glo.closing);
  EXPECT_EQ(glo.listTitle, "Risks");
  EXPECT_EQ(glo.assessments[0].lbl_Risk.left, glo.PowerPointSlideShow_RECT.width() * 15 / 2)
      << "half of the show";
  EXPECT_EQ(glo.assessments[0].lbl_Risk.top, glo.PowerPointSlideShow_RECT.height() * 15 / 2);
  EXPECT_THAT(files.files["/appdata/quorin/Err.log"], HasSubstr("/tmp/t/quorin"));
  files.files.clear();
  files.number = 70;
  Main("QRNMATRIX,SETUP");
  EXPECT_EQ(files.files["/appdata/quorin/Err.log"].find("/tmp/t/quorin"), std::string::npos);
  host::host().files = &world.files;
}

TEST_F(EntryTest, SetsFoldersSlideAndActivity) {
  storeExercise();
  tags().Add("qrnCurrentSlide", "2");
  world.program.show.index = 1;
  Main("QRNMATRIX,SETUP");
  EXPECT_EQ(glo.tempPath, "/work");
  EXPECT_EQ(glo.matrixPath, "/tmp/t/quorin/");
  EXPECT_EQ(glo.appPath, "/install/");
  EXPECT_EQ(glo.currentSlideID, 257);
  EXPECT_EQ(world.program.show.index, 2);
  EXPECT_EQ(tags().Item("qrnActivity"), "Matrix Active");
  EXPECT_EQ(glo.listTitle, "Risks");
  EXPECT_EQ(glo.assessments[0].lbl_Risk.left, glo.PowerPointSlideShow_RECT.width() * 15 / 2)
      << "half of the show";
  EXPECT_EQ(glo.assessments[0].lbl_Risk.top, glo.PowerPointSlideShow_RECT.height() * 15 / 2);
  EXPECT_THAT(world.forms.loadedNames(), ElementsAre("comms", "blankForm"));
}

TEST_F(EntryTest, ASlideNumberAsModeOpensThatSlide) {
  storeExercise(kVote);
  world.program.show.index = 3;
  closeFormAt(1, "xyVoteAverageGraph");
  closeFormAt(2, "xyVoteGraph");
  Main("QRNMATRIX,2");
  EXPECT_EQ(glo.currentSlide, 2);
  EXPECT_THAT(loaded, ElementsAre("xyVoteAverageGraph", "xyVoteGraph"));
}

struct SecondProgram : test::MemoryProgram {
  bool PreviousInstance() const override { return true; }
  bool AppActivate(const std::string& title) override {
    activated = title;
    return others;
  }
  void CloseApplication(const std::string& title) override { closed = title; }
  bool others = false;
  std::string activated, closed;
};

TEST_F(EntryTest, WaitsForThePreviousRunToStoreItsVote) {
  struct Case {
    double tagAt;  // seconds; 0 never
    bool others;
    std::string line;
    bool ends;
    std::string closed;
  };
  for (const Case& c : std::vector<Case>{{2, true, "QRNMATRIX,SETUP", false, ""},
                                         {0, true, "QRNMATRIX,SETUP", true, ""},
                                         {0, false, "QRNMATRIX,SETUP", false, "Matrix"},
                                         {0, true, "WIZARD", false, ""}}) {
    SecondProgram second;
    second.presentation = &world.presentation;
    second.window.index = 2;
    second.others = c.others;
    host::host().presentationProgram = &second;
    tags().Delete("qrnVoteTerminated");
    if (c.tagAt > 0)
      world.at(c.tagAt, [&] { tags().Add("qrnVoteTerminated", "Vote finished"); });
    Main(c.line);
    EXPECT_EQ(glo.closing, c.ends) << c.line << c.tagAt;
    EXPECT_EQ(second.closed, c.closed);
    EXPECT_EQ(tags().Item("qrnVoteTerminated"), "");
    EXPECT_EQ(glo.appTitle, c.ends ? "Matrix2" : "Matrix");
    releaseObjects();
    host::host().presentationProgram = &world.program;
  }
}

// Old exercise files

class OldFileTest : public EntryTest {
 protected:
  OldFileTest() {
    text = exercise(2);
    world.files.files = {{"/work/Old.mtx", text},
                         {"/work/Old.log", "log"},
                         {"/work/votes.rec", "\"Old.mtx1C2\",a,b,\"5;6;\",9:00,1/1/2003,g,h\r\n"}};
    slideTags().Add("qrnMatrixLog", "risk = 1\r\n");
    world.presentation.slide(2).shapes = {test::MemoryShape("matrix"), test::MemoryShape("Title 1")};
    world.presentation.slide(2).notes = {test::MemoryShape("Notes", "see Old.mtx")};
  }
  std::string text;
};

TEST_F(OldFileTest, BecomesTheExerciseOfTheSlide) {
  Main("old.MTX,SETUP");
  EXPECT_EQ(slideTags().Item("qrnMatrix"), text);
  EXPECT_EQ(slideTags().Item("qrnVotes"), "1/1/2003,9:00,5;6;,1C2\r\n");
  EXPECT_EQ(slideTags().Item("qrnMatrixLog"), "");
  EXPECT_TRUE(world.presentation.slide(2).shapes[0].deleted);
  EXPECT_FALSE(world.presentation.slide(2).shapes[1].deleted);
  EXPECT_THAT(world.presentation.slide(2).notes[0].text, HasSubstr("This slide is a quorin Matrix exercise"));
  EXPECT_FALSE(world.files.fileExists("/work/Old.mtx"));
  EXPECT_FALSE(world.files.fileExists("/work/Old.log"));
  EXPECT_EQ(world.presentation.saves, 1);
  EXPECT_EQ(glo.cmdFile, "QRNMATRIX");
  EXPECT_EQ(glo.cmdSlide, "OLD.MTX");
  EXPECT_EQ(glo.itemCount(), 2);
}

TEST_F(OldFileTest, EndsWhenItDoesNotStandBesideThePresentation) {
  Main("other.mtx,SETUP");
  EXPECT_TRUE(glo.closing);
  EXPECT_EQ(slideTags().Item("qrnMatrix"), "");
  EXPECT_THAT(world.dialogs.asked, IsEmpty());
}

TEST_F(OldFileTest, StaysWhenThePresentationCannotBeSaved) {
  struct FullDisk : test::MemoryPresentation {
    FullDisk() : MemoryPresentation(3) {}
    void Save() override { throw HostError(Fault::world, 61, "The disk is full"); }
  } full;
  world.program.presentation = &full;
  world.expectMsgBox("The disk is full");
  Main("old.mtx,SETUP");
  EXPECT_TRUE(world.files.fileExists("/work/Old.mtx"));
  EXPECT_TRUE(world.files.fileExists("/work/Old.log"));
  releaseObjects();
}

// First form

TEST_F(EntryTest, TheWizardComesUpAlone) {
  Main("QRNMATRIX,WIZARD");
  EXPECT_TRUE(world.forms.isVisible("Wizard"));
  EXPECT_EQ(glo.backgroundFile, "/install/tmpbg.bmp");
  EXPECT_FALSE(world.forms.isLoaded("comms"));
}

TEST_F(EntryTest, DisplayNeedsARunningShow) {
  world.program.showRuns = false;
  world.program.window.index = 2;
  storeExercise();
  world.expectMsgBox(
      "quorin matrix: PowerPoint slideshow is not running, can not start quorin matrix in show mode");
  Main("QRNMATRIX,DISPLAY");
  EXPECT_TRUE(glo.closing);
  EXPECT_EQ(votes, 0);
}

TEST_F(EntryTest, DisplayOfASlideWithoutAnExerciseTellsSo) {
  world.expectMsgBox("Could not find Matrix vote on slide.");
  Main("QRNMATRIX,DISPLAY");
  EXPECT_TRUE(glo.closing);
  EXPECT_EQ(votes, 0);
}

// What the facilitator gets on reaching a matrix slide.
TEST_F(EntryTest, ShowsTheVoteUntilTheExerciseIsFinishedAndTheGraphsAfterwards) {
  enum Log { none, unfinished, finished };
  struct Case {
    std::string line, votesText;
    Log log;
    std::vector<std::optional<host::Answer>> answers;  // none: Enter
    int votes;
    bool graphs;
    std::string votesAfter;
  };
  const std::string display = "QRNMATRIX,DISPLAY";
  using host::Answer;
  const std::nullopt_t enter = std::nullopt;
  for (const Case& c :
       std::vector<Case>{{display, "", none, {}, 1, false, ""},
                         {display, "", unfinished, {}, 1, false, ""},
                         {display, kVote, finished, {}, 0, true, kVote},
                         {display, kVote, none, {}, 0, true, kVote},
                         {display, kVote, unfinished, {Answer::yes}, 1, false, kVote},
                         {display, kVote, unfinished, {Answer::no, Answer::yes, Answer::yes}, 1, false, ""},
                         {display, kVote, unfinished, {Answer::no, Answer::yes, Answer::no}, 0, false, kVote},
                         {display, kVote, unfinished, {Answer::no, Answer::no}, 0, false, kVote},
                         {display, kVote, unfinished, {enter}, 1, false, kVote},
                         {display, kVote, unfinished, {Answer::no, enter}, 0, false, kVote},
                         {display, kVote, unfinished, {Answer::no, Answer::yes, enter}, 0, false, kVote},
                         {display, kVote, unfinished, {Answer::cancel}, 0, false, kVote},
                         {"QRNMATRIX,SERIES VOTE", kVote, finished, {}, 1, false, kVote},
                         {"QRNMATRIX,SETUP", "", none, {}, 0, false, ""}}) {
    loaded.clear();
    votes = 0;
    slideTags().values.clear();
    storeExercise(c.votesText);
    if (c.log != none)
      storeLog(c.log == finished);
    const std::vector<std::string> questions{
        "Would you like to continue from where it was previously stopped?",
        "Would you like to clear the data and restart?", "This will delete all live data"};
    for (std::size_t i = 0; i < c.answers.size(); ++i)
      world.dialogs.expected.push_back({"msg", questions[i], c.answers[i], {}});
    if (c.graphs) {
      closeFormAt(1, "xyVoteAverageGraph");
      closeFormAt(2, "xyVoteGraph");
    }
    Main(c.line);
    EXPECT_EQ(votes, c.votes) << c.line << c.log << c.answers.size();
    EXPECT_EQ(loaded.size(), c.graphs ? 2U : 0U) << c.line << c.log;
    EXPECT_EQ(slideTags().Item("QRNVOTES"), c.votesAfter) << c.line << c.log;
    EXPECT_EQ(world.program.keysSent, c.graphs || c.votes == 1 ? "~" : "") << c.line << c.log;
    EXPECT_TRUE(world.dialogs.expected.empty());
    releaseObjects();
    world.program.keysSent.clear();
  }
}

TEST_F(EntryTest, WhereVotesCannotBeStoredTheRoomIsNotAskedToVote) {
  world.presentation.whyNoVotes = "The folder is read-only.";
  for (const bool unfinished : {false, true}) {
    loaded.clear();
    slideTags().values.clear();
    storeExercise(unfinished ? kVote : "");
    if (unfinished)
      storeLog(false);
    world.expectMsgBox("The vote was not started. The folder is read-only.", host::Answer::ok);
    closeFormAt(1, "xyVoteAverageGraph");
    closeFormAt(2, "xyVoteGraph");
    Main("QRNMATRIX,DISPLAY");
    EXPECT_EQ(votes, 0);
    EXPECT_EQ(loaded.size(), 2U) << "the graphs show what there is";
    EXPECT_TRUE(world.dialogs.expected.empty());
    releaseObjects();
  }
}

TEST_F(EntryTest, GraphsGoWhenTheShowMovesOn) {
  storeExercise(kVote);
  storeLog(true);
  world.at(1, [&] { world.program.show.index = 3; });
  Main("QRNMATRIX,DISPLAY");
  EXPECT_TRUE(glo.closing);
  EXPECT_THAT(loaded, ElementsAre("xyVoteAverageGraph"));
  EXPECT_EQ(world.program.keysSent, "") << "the show needs no key to go on";
}

TEST_F(EntryTest, AShowThatEndsClosesTheRun) {
  storeExercise();
  entryHooks().startVote = [&] {
    world.forms.show("xyVoteRuntime");
    host::waitUntil([] { return glo.voteAbandoned != 0; });
  };
  world.at(1, [&] { world.program.showRuns = false; });
  world.expectMsgBox(
      "quorinMatrix Auto Close: Matrix is closing because the PowerPoint slide show is no longer");
  Main("QRNMATRIX,DISPLAY");
  EXPECT_TRUE(glo.closing);
  EXPECT_FALSE(world.forms.isLoaded("xyVoteRuntime"));
  EXPECT_TRUE(world.forms.isVisible("blankForm"));
}

TEST_F(EntryTest, TheDefaultTemplateBringsSettingsOnly) {
  const std::string folder = "/install/matrix/templates/processes/";
  world.files.files[folder + "my.mtt"] = exercise(3);
  world.files.files[folder + "default.txt"] = "\"" + folder + "my.mtt\"\r\n";
  Main("QRNMATRIX,SETUP");
  EXPECT_EQ(glo.listTitle, "Risks");
  EXPECT_EQ(glo.assessments[0].lbl_Risk.left, glo.PowerPointSlideShow_RECT.width() * 15 / 2)
      << "half of the show";
  EXPECT_EQ(glo.assessments[0].lbl_Risk.top, glo.PowerPointSlideShow_RECT.height() * 15 / 2);
  EXPECT_EQ(glo.itemCount(), 0);
  EXPECT_FALSE(glo.exerciseLoaded);
  world.files.files.erase(folder + "my.mtt");
  Main("QRNMATRIX,SETUP");
  EXPECT_EQ(glo.listTitle, "List Title");
  EXPECT_THAT(glo.remainingAssessments, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
}

}  // namespace
}  // namespace qrn

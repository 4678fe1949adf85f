#include "desktop/desktop.h"

#include <QLabel>
#include <QTimer>
#include <thread>

#include "base/errors.h"
#include "desktop/window_world.h"
#include "host/wait.h"

namespace {

using namespace qrn;

// A slide whose picture takes long enough for the person to do other things meanwhile.
class SlowSlide : public test::MemorySlide {
 public:
  using MemorySlide::MemorySlide;
  void Export(const std::string&, std::string_view, int, int) override {
    if (meanwhile)
      std::exchange(meanwhile, nullptr)();
    throw HostError(Fault::world, 0, "no picture");
  }
  std::function<void()> meanwhile;
};

// Opens a deck of five slides with exercises on 2 and 3.
std::unique_ptr<host::Presentation> madeDeck(const std::string& file) {
  if (file == "locked.pptx")
    throw HostError(Fault::world, 70, "locked.pptx is open in another program");
  auto deck = std::make_unique<test::MemoryPresentation>(5);
  for (const int slide : {2, 3}) deck->slide(slide).tagStore.Add("qrnMatrix", "exercise");
  return deck;
}

class Desktop : public ::testing::Test {
 protected:
  desktop::DesktopHooks hooks() {
    desktop::DesktopHooks made;
    made.openDeck = madeDeck;
    made.runExercise = [this](int slide) {
      runs += std::to_string(slide) + " ";
      if (onRun)
        onRun(slide);
    };
    made.room = [this] {
      host::RoomState room;
      room.page = "http://127.0.0.1:7878/join";
      room.phones = ++roomsAsked;
      return room;
    };
    return made;
  }
  host::PresentationProgram& program() { return desk.program(); }
  void turns(int count = 4) {
    for (int i = 0; i < count; ++i) desk.turn();
  }

  test::WindowWorld world;
  std::string runs;
  int roomsAsked = 0;
  std::function<void(int)> onRun;
  desktop::Desktop desk{hooks()};
};

TEST_F(Desktop, GivesTheLogicTheDeckAndTheShow) {
  EXPECT_EQ(program().ActivePresentation(), nullptr);
  ASSERT_TRUE(desk.openDeck("talk.pptx"));
  ASSERT_NE(program().ActivePresentation(), nullptr);
  EXPECT_EQ(program().ActiveWindowView()->SlideIndex(), 1);
  EXPECT_EQ(program().SlideShowWindowsCount(), 0);
  EXPECT_EQ(program().SlideShowView(), nullptr);
  desk.startShow(0);
  EXPECT_EQ(program().SlideShowWindowsCount(), 1);
  program().SlideShowView()->GotoSlide(4);
  EXPECT_EQ(program().SlideShowView()->SlideIndex(), 4);
}

TEST_F(Desktop, ShowsWhatARunHasMadeOfAnySlide) {
  ASSERT_TRUE(desk.openDeck("talk.pptx"));
  const auto facts = [] {
    for (const QWidget* widget : QApplication::allWidgets())
      if (const auto* label = qobject_cast<const QLabel*>(widget);
          label && label->text().startsWith("Slide 1 of"))
        return label->text().toStdString();
    return std::string();
  };
  EXPECT_EQ(facts(), "Slide 1 of 5 · no exercise");
  desk.run([this] {
    host::Presentation& deck = *program().ActivePresentation();
    deck.Slides(1).tags().Add("qrnMatrix", "exercise");
    deck.AddTitleOnlySlide(5);
  });
  EXPECT_EQ(facts(), "Slide 1 of 6 · exercise with 0 votes");
}

TEST_F(Desktop, RunsTheExerciseReachedAndGoesOnWithTheKeysItSent) {
  desk.openDeck("talk.pptx");
  onRun = [this](int slide) {
    EXPECT_EQ(program().SlideShowView()->SlideIndex(), slide) << "the show stands still during the run";
    program().SendKeysToShow("~");
    EXPECT_EQ(program().SlideShowView()->SlideIndex(), slide) << "keys wait for the end of the run";
  };
  desk.startShow(1);
  turns();
  EXPECT_EQ(runs, "");
  program().SendKeysToShow("~");
  turns(6);
  EXPECT_EQ(runs, "2 3 ");
  EXPECT_EQ(program().SlideShowView()->SlideIndex(), 4);
}

TEST_F(Desktop, TheListOfSlidesHasTheFocusAfterAShow) {
  desk.openDeck("talk.pptx");
  QWidget* window = nullptr;
  for (QWidget* one : QApplication::topLevelWidgets())
    if (one->objectName() == "deckWindow")
      window = one;
  ASSERT_NE(window, nullptr);
  window->show();
  desk.startShow(1);
  program().SendKeysToShow("~");
  turns();
  ASSERT_EQ(runs, "2 ");
  QTest::keyClick(desk.dialogParent(), Qt::Key_Escape);
  turns();
  EXPECT_EQ(program().SlideShowWindowsCount(), 0);
  ASSERT_NE(QApplication::focusWidget(), nullptr);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "slides");
}

TEST_F(Desktop, ARunThatFailsIsReportedAndTheDeskGoesOn) {
  desk.openDeck("talk.pptx");
  onRun = [](int) { throw HostError(Fault::world, 0, "the disk is full"); };
  desk.startShow(1);
  program().SendKeysToShow("~");
  world.expectMsgBox("the disk is full");
  turns();
  EXPECT_EQ(runs, "2 ");
  EXPECT_EQ(program().SlideShowWindowsCount(), 1);
}

TEST_F(Desktop, TheDeckStaysWhileOneOfItsPicturesIsBeingMade) {
  ASSERT_TRUE(desk.openDeck("talk.pptx"));
  auto& deck = dynamic_cast<test::MemoryPresentation&>(*program().ActivePresentation());
  auto slow = std::make_unique<SlowSlide>(256, 1);
  bool tried = false;
  slow->meanwhile = [&] {
    tried = true;
    EXPECT_FALSE(desk.openDeck("other.pptx"));
    EXPECT_EQ(program().ActivePresentation(), &deck);
    desk.startShow(1);
    program().SendKeysToShow("~");
    host::waitUntil([] { return false; }, 0.2);
    EXPECT_EQ(runs, "2 ") << "an exercise does not wait for the pictures";
  };
  deck.slides[0] = std::move(slow);
  QTest::qWait(350);  // nobody has touched a key for a while
  turns(12);
  EXPECT_TRUE(tried);
  EXPECT_TRUE(desk.openDeck("other.pptx"));
}

// Another thread and the first timer that is due bring the loop back, and nothing else does.
TEST_F(Desktop, RestsUntilSomethingIsDue) {
  int ticks = 0;
  host::Timer timer(100, [&] { ++ticks; }), later(10000, [] {});
  later.setEnabled(true);
  std::thread other;
  std::vector<int> yields;  // so far, at each stage
  const auto stage = [&](int milliseconds, std::function<void()> then) {
    QTimer::singleShot(milliseconds, [&, then] {
      yields.push_back(world.yields);
      then();
    });
  };
  stage(100, [] {});
  stage(300, [&] { other = std::thread([&] { world.loop.wake(); }); });
  stage(400, [&] { timer.setEnabled(true); });
  stage(700, [&] { desk.quit(); });
  desk.exec();
  other.join();
  EXPECT_LE(yields[1] - yields[0], 4) << "idle";
  EXPECT_GE(yields[2] - yields[1], 2) << "woken";
  EXPECT_GE(ticks, 2);
  EXPECT_LE(yields[3], 40);
}

TEST_F(Desktop, DoesNotRestOverARunThatIsWantedOrAPictureThatIsNotMade) {
  host::Timer later(10000, [] {});
  later.setEnabled(true);
  ASSERT_TRUE(desk.openDeck("talk.pptx"));
  bool made = false;
  auto slow = std::make_unique<SlowSlide>(256, 1);
  slow->meanwhile = [&] { made = true; };
  dynamic_cast<test::MemoryPresentation&>(*program().ActivePresentation()).slides[0] = std::move(slow);
  desk.startShow(1);
  QTimer::singleShot(500, [&] {
    EXPECT_TRUE(made);
    program().SendKeysToShow("~");
  });
  QTimer::singleShot(800, [&] {
    EXPECT_EQ(runs, "2 ");
    desk.quit();
  });
  desk.exec();
}

TEST_F(Desktop, TheKeypadsPageAsksAgainWhenItsControllerIsLost) {
  const auto window = [](const char* name) {
    for (QWidget* one : QApplication::topLevelWidgets())
      if (one->objectName() == name)
        return one;
    return static_cast<QWidget*>(nullptr);
  };
  window("deckWindow")->show();
  desk.roomChanged({});
  turns();
  EXPECT_EQ(roomsAsked, 0);
  QTest::keyClick(window("deckWindow"), Qt::Key_K, Qt::ControlModifier);
  EXPECT_EQ(roomsAsked, 1);
  ASSERT_NE(window("keypads"), nullptr);
  EXPECT_TRUE(window("keypads")->isVisible());
  desk.roomChanged({});
  turns();
  EXPECT_EQ(roomsAsked, 2);
  window("keypads")->close();
  desk.roomChanged({});
  turns();
  EXPECT_EQ(roomsAsked, 2) << "nobody looks at it";
}

TEST_F(Desktop, AWakeBeforeTheRestEndsIt) {
  world.loop.wake();
  for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();  // takes what the wake has sent
  const auto before = world.clock.micros;
  world.rest(1'000'000);
  EXPECT_LT(world.clock.micros - before, 500'000);
}

TEST_F(Desktop, ADeckThatCannotBeOpenedLeavesTheOneAtHand) {
  ASSERT_TRUE(desk.openDeck("talk.pptx"));
  host::Presentation* before = program().ActivePresentation();
  EXPECT_FALSE(desk.openDeck("locked.pptx"));
  EXPECT_EQ(program().ActivePresentation(), before);
}

TEST_F(Desktop, AsksBeforeItLeavesADeckWhoseFileLacksVotes) {
  for (const auto& [answer, leaves, saves] :
       {std::tuple{host::Answer::cancel, false, 0}, {host::Answer::yes, true, 1}}) {
    ASSERT_TRUE(desk.openDeck("talk.pptx"));
    auto& deck = dynamic_cast<test::MemoryPresentation&>(*program().ActivePresentation());
    deck.saved = false;
    world.expectMsgBox("Save the votes and settings into the deck?", answer);
    desk.quit();
    EXPECT_EQ(program().ActiveWindowView() == nullptr, leaves);
    EXPECT_EQ(deck.saves, saves);
  }
}

}  // namespace

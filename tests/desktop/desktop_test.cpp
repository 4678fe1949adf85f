#include "desktop/desktop.h"

#include <QLabel>
#include <QTimer>
#include <thread>

#include "base/errors.h"
#include "desktop/window_case.h"
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

class Desktop : public ::testing::Test {
 protected:
  desktop::DesktopHooks hooks() {
    desktop::DesktopHooks made;
    made.openDeck = test::deckOfFive;
    made.runExercise = [this](int slide) { runs += std::to_string(slide) + " "; };
    return made;
  }
  host::PresentationProgram& program() { return desk.program(); }
  void turns(int count = 4) {
    for (int i = 0; i < count; ++i) desk.turn();
  }

  test::WindowWorld world;
  std::string runs;
  desktop::Desktop desk{hooks()};
};

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

TEST_F(Desktop, AWakeBeforeTheRestEndsIt) {
  world.loop.wake();
  for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();  // takes what the wake has sent
  const auto before = world.clock.micros;
  world.rest(1'000'000);
  EXPECT_LT(world.clock.micros - before, 500'000);
}

}  // namespace

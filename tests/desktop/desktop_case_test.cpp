// The desk: decks, shows, runs of exercises, told as conversations, and what it does between them.
#include <QTimer>
#include <thread>

#include "base/errors.h"
#include "desktop/desktop.h"
#include "desktop/window_case.h"
#include "host/wait.h"

namespace qrn::test {
namespace {

// A slide whose picture takes long enough for the person to do other things meanwhile.
class SlowSlide : public MemorySlide {
 public:
  using MemorySlide::MemorySlide;
  void Export(const std::string&, std::string_view, int, int) override {
    if (meanwhile)
      std::exchange(meanwhile, nullptr)();
    throw HostError(Fault::world, 0, "no picture");
  }
  std::function<void()> meanwhile;
};

// Decks of five slides with exercises on 2 and 3.
class DesktopCase : public WindowCase {
 protected:
  DesktopCase() : WindowCase(3) {
    on("open", [this](const Words& words) {
      tell(desk.openDeck(words[0]) ? "" : "not opened");
      tell(deck() == nullptr ? "no deck" : "deck " + opened);
    });
    on("unsaved", [this](const Words&) { deck()->saved = false; });
    on("saves", [this](const Words&) { tell(std::to_string(deck()->saves)); });
    on("quit", [this](const Words&) { desk.quit(); });
    on("place", [this](const Words&) { tellPlace(); });
    on("show", [this](const Words& words) { desk.startShow(words.number(0)), tellPlace(); });
    on("goto", [this](const Words& words) {
      desk.program().SlideShowView()->GotoSlide(words.number(0)), tellPlace();
    });
    // send KEYS: to the show, as a run does at its end
    on("send", [this](const Words& words) { desk.program().SendKeysToShow(words[0]), tellPlace(); });
    on("turns", [this](const Words&) {
      for (int i = 0; i < 6; ++i) desk.turn();
      tellPlace();
    });
    on("runs", [this](const Words& words) { does = words[0]; });
    on("press", [this](const Words& words) {
      if (words.size() > 1)
        topLevel("deckWindow")->show();
      press(words.word(1) == "deck" ? *topLevel("deckWindow") : *desk.dialogParent(), words[0]);
    });
    // makes SLIDE: the next run an exercise there, and a slide behind the last
    on("makes", [this](const Words& words) {
      desk.run([this, &words] {
        deck()->Slides(words.number(0)).tags().Add("qrnMatrix", "exercise");
        deck()->AddTitleOnlySlide(deck()->SlideCount());
      });
    });
    on("facts", [this](const Words& words) {
      for (const QLabel* label : topLevel("deckWindow")->findChildren<QLabel*>())
        if (label->text().startsWith(QString::fromStdString(words.rest(0))))
          tell(label->text().toStdString());
    });
    on("deckwindow", [](const Words&) { topLevel("deckWindow")->show(); });
    on("focus", [this](const Words&) {
      tell(QApplication::focusWidget() ? QApplication::focusWidget()->objectName().toStdString() : "nothing");
    });
    on("roomchanged", [this](const Words&) {
      desk.roomChanged({});
      for (int i = 0; i < 4; ++i) desk.turn();
      tell("asked ", roomsAsked, " times");
    });
    on("keypads", [this](const Words& words) {
      if (words.word(0) == "close")
        topLevel("keypads")->close();
      tell(topLevel("keypads")->isVisible() ? "shown" : "hidden");
    });
  }
  MemoryPresentation* deck() {
    return dynamic_cast<MemoryPresentation*>(desk.program().ActivePresentation());
  }
  void tellPlace() {
    host::View *window = desk.program().ActiveWindowView(), *show = desk.program().SlideShowView();
    tell((window ? "window at " + std::to_string(window->SlideIndex()) : "no window"),
         (show ? ", show at " + std::to_string(show->SlideIndex()) : ""));
  }
  desktop::DesktopHooks hooks() {
    desktop::DesktopHooks made;
    made.openDeck = [this](const std::string& file) {
      if (file == "locked.pptx")
        throw HostError(Fault::world, 70, "locked.pptx is open in another program");
      opened = file;
      auto deck = std::make_unique<MemoryPresentation>(5);
      for (const int slide : {2, 3}) deck->slide(slide).tagStore.Add("qrnMatrix", "exercise");
      return std::unique_ptr<host::Presentation>(std::move(deck));
    };
    made.runExercise = [this](int slide) {
      tell("runs ", slide);
      if (does == "fails")
        throw HostError(Fault::world, 0, "the disk is full");
      if (does == "sends") {  // keys wait for the end of the run
        tellPlace();
        desk.program().SendKeysToShow("~");
        tellPlace();
      }
    };
    made.room = [this] {
      host::RoomState room;
      room.page = "http://127.0.0.1:7878/join";
      room.phones = ++roomsAsked;
      return room;
    };
    return made;
  }

  std::string opened, does;
  int roomsAsked = 0;
  desktop::Desktop desk{hooks()};
};

const bool kRegistered = registerCases<DesktopCase>("DesktopCase", QUORIN_CASES "/desktop.case");

using Desktop = DesktopCase;

TEST_F(Desktop, TheDeckStaysWhileOneOfItsPicturesIsBeingMade) {
  ASSERT_TRUE(desk.openDeck("talk.pptx"));
  MemoryPresentation* first = deck();
  auto slow = std::make_unique<SlowSlide>(256, 1);
  bool tried = false;
  slow->meanwhile = [&] {
    tried = true;
    EXPECT_FALSE(desk.openDeck("other.pptx"));
    EXPECT_EQ(deck(), first);
    desk.startShow(1);
    desk.program().SendKeysToShow("~");
    host::waitUntil([] { return false; }, 0.2);
    EXPECT_EQ(take(), "runs 2\n") << "an exercise does not wait for the pictures";
  };
  first->slides[0] = std::move(slow);
  QTest::qWait(350);  // nobody has touched a key for a while
  for (int i = 0; i < 12; ++i) desk.turn();
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
  deck()->slides[0] = std::move(slow);
  desk.startShow(1);
  QTimer::singleShot(500, [&] {
    EXPECT_TRUE(made);
    desk.program().SendKeysToShow("~");
  });
  QTimer::singleShot(800, [&] {
    EXPECT_EQ(take(), "runs 2\n");
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
}  // namespace qrn::test

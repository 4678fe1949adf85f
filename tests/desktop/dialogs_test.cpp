#include "adapters/qt/dialogs.h"

#include <QLineEdit>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>

#include "adapters/qt/question_box.h"
#include "desktop/window_world.h"
#include "host/wait.h"

namespace {

using namespace qrn;
using host::Answer;
using host::Buttons;

class Dialogs : public ::testing::Test {
 protected:
  // Types into the question once it stands.
  void whenAsked(std::function<void(QWidget& focus)> act) {
    world.at(0.05, [act = std::move(act)] {
      QWidget* dialog = QApplication::activeModalWidget();
      ASSERT_NE(dialog, nullptr);
      QWidget* focus = dialog->focusWidget();
      act(focus ? *focus : *dialog);
    });
  }
  static std::function<void(QWidget&)> key(Qt::Key which) {
    return [which](QWidget& focus) { QTest::keyClick(&focus, which); };
  }

  test::WindowWorld world;
  qt::QtDialogs qtDialogs;
  host::Dialogs& dialogs = qtDialogs;
};

TEST_F(Dialogs, EscGivesTheAnswerThatChangesLeast) {
  const std::pair<Buttons, Answer> cases[] = {{Buttons::ok, Answer::ok},
                                              {Buttons::okCancel, Answer::cancel},
                                              {Buttons::yesNo, Answer::no},
                                              {Buttons::yesNoCancel, Answer::cancel}};
  for (const auto& [buttons, answer] : cases) {
    whenAsked(key(Qt::Key_Escape));
    EXPECT_EQ(dialogs.MsgBox("Really?", "quorin matrix", buttons, host::Icon::question), answer);
    whenAsked([](QWidget& focus) { focus.window()->close(); });
    EXPECT_EQ(dialogs.MsgBox("Really?", "quorin matrix", buttons, host::Icon::none), answer) << "closed";
  }
}

TEST_F(Dialogs, EnterTakesWhatTheQuestionNamesElseTheSafeAnswerAndLettersTheirOwn) {
  const std::pair<std::optional<Answer>, Answer> cases[] = {
      {std::nullopt, Answer::no}, {Answer::no, Answer::no}, {Answer::yes, Answer::yes}};
  for (const auto& [named, answer] : cases) {
    whenAsked(key(Qt::Key_Return));
    EXPECT_EQ(dialogs.MsgBox("Really?", "", Buttons::yesNo, host::Icon::none, named), answer);
  }
  for (const Qt::KeyboardModifier modifier : {Qt::AltModifier, Qt::NoModifier}) {
    whenAsked([modifier](QWidget& focus) { QTest::keyClick(&focus, Qt::Key_N, modifier); });
    EXPECT_EQ(dialogs.MsgBox("Really?", "", Buttons::yesNoCancel, host::Icon::none), Answer::no);
  }
}

TEST_F(Dialogs, AHeldKeyAnswersNothing) {
  for (const auto& [which, text] : {std::pair{Qt::Key_Return, "\r"}, {Qt::Key_Y, "y"}}) {
    const auto held = [which = which, text = text](QWidget& focus) {
      QWidget* dialog = focus.window();
      QTest::simulateEvent(&focus, true, which, Qt::NoModifier, text, true);
      EXPECT_TRUE(dialog->isVisible());
      QTest::keyClick(&focus, Qt::Key_Escape);
    };
    whenAsked(held);
    EXPECT_EQ(dialogs.MsgBox("Really?", "", Buttons::yesNo, host::Icon::none, Answer::yes), Answer::no);
  }
}

TEST_F(Dialogs, TextIsShownAsItStands) {
  QString shown;
  whenAsked([&](QWidget& focus) {
    shown = dynamic_cast<qt::QuestionBox&>(*focus.window()).text();
    const auto& text = *focus.window()->findChild<QScrollArea*>();
    EXPECT_GE(text.viewport()->height(), text.widget()->heightForWidth(text.viewport()->width()));
    QTest::keyClick(&focus, Qt::Key_Escape);
  });
  dialogs.MsgBox("<b>Item & \"A\"</b>", "", Buttons::ok, host::Icon::none);
  EXPECT_EQ(shown, "<b>Item & \"A\"</b>");
}

TEST_F(Dialogs, ALongTextScrollsAndLeavesTheButtonsTheirRoom) {
  whenAsked([](QWidget& focus) {
    const auto& text = *focus.window()->findChild<QScrollArea*>();
    EXPECT_TRUE(focus.screen()->geometry().contains(focus.window()->frameGeometry()));
    EXPECT_LE(text.geometry().bottom(), focus.geometry().top());
    EXPECT_GE(focus.height(), focus.sizeHint().height());
    QTest::keyClick(&focus, Qt::Key_Down);
    EXPECT_GT(text.verticalScrollBar()->value(), 0);
    QTest::keyClick(&focus, Qt::Key_End);
    EXPECT_EQ(text.verticalScrollBar()->value(), text.verticalScrollBar()->maximum());
    QTest::keyClick(&focus, Qt::Key_Return);
  });
  dialogs.MsgBox(QString("Item\n").repeated(120).toStdString(), "", Buttons::ok, host::Icon::information);
}

TEST_F(Dialogs, InputComesBackOnEnterAndNothingOnEsc) {
  whenAsked([](QWidget& focus) {
    QTest::keyClicks(&focus, "Quay walls");
    QTest::keyClick(&focus, Qt::Key_Return);
  });
  EXPECT_EQ(dialogs.InputBox("Please enter the new item", "quorin matrix", "preset"), "Quay walls");
  whenAsked(key(Qt::Key_Return));
  EXPECT_EQ(dialogs.InputBox("Name", "", "preset"), "preset");
  whenAsked(key(Qt::Key_Escape));
  EXPECT_EQ(dialogs.InputBox("Name", "", "preset"), std::nullopt);
}

TEST_F(Dialogs, FileQuestionEndsOnEsc) {
  whenAsked(key(Qt::Key_Escape));
  EXPECT_EQ(dialogs.FileDialog({false, "/", "", "Presentations (*.pptx)|*.pptx", "Open"}), std::nullopt);
}

TEST_F(Dialogs, AFileThatMayNotBeWrittenIsAskedForAgain) {
  std::string told;
  qtDialogs.setWhyNotOverwritten([&](const std::string& file) { return told.empty() ? told = file : ""; });
  const auto save = [&] { return dialogs.FileDialog({true, "/nowhere", "deck.pptx", "All (*)|*", "Save"}); };
  whenAsked(key(Qt::Key_Return));
  world.at(0.1, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
  world.at(0.15, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
  EXPECT_EQ(save(), told);
}

TEST_F(Dialogs, AMenuIsDoneByKeysAndByMouseAndEscChoosesNothing) {
  using Act = std::function<void(QMenu&)>;
  const auto keys = [](std::vector<Qt::Key> which) -> Act {
    return [which](QMenu&) {
      for (const Qt::Key one : which) QTest::keyClick(QApplication::activePopupWidget(), one);
    };
  };
  const std::vector<host::MenuRow> rows{
      {.name = "all", .caption = "All plots & pairs", .key = "Ctrl+A"},
      {.name = "two", .caption = "Pair 2", .enabled = false},
      {.name = "lines", .caption = "Lines", .checkable = true, .checked = true},
      {.name = "up", .caption = "Ascending", .group = "Order"},
      {.name = "down", .caption = "Descending", .group = "Order"}};
  struct Case {
    Act act;
    std::optional<std::string> chosen;
  };
  const Case cases[] = {{keys({Qt::Key_Escape}), std::nullopt},
                        {keys({Qt::Key_Return}), "all"},
                        {keys({Qt::Key_Down, Qt::Key_Return}), "lines"},
                        {keys({Qt::Key_Up, Qt::Key_Right, Qt::Key_Down, Qt::Key_Return}), "down"},
                        {[](QMenu& menu) {
                           EXPECT_EQ(menu.actions()[0]->text(), "All plots && pairs\tCtrl+A");
                           EXPECT_TRUE(menu.actions()[2]->isChecked());
                           const QImage seen = menu.grab().toImage();
                           EXPECT_EQ(seen.pixel(0, 0), seen.pixel(seen.width() / 2, 0)) << "no bare corner";
                           QTest::mouseClick(&menu, Qt::LeftButton, {},
                                             menu.actionGeometry(menu.actions()[2]).center());
                         },
                         "lines"}};
  for (const Case& c : cases) {
    world.at(0.05, [&] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_NE(menu, nullptr);
      c.act(*menu);
    });
    EXPECT_EQ(dialogs.Menu(rows, false), c.chosen);
  }
}

TEST_F(Dialogs, TimersTickWhileAQuestionStands) {
  int ticks = 0;
  host::Timer timer(10, [&] { ++ticks; });
  timer.setEnabled(true);
  whenAsked(key(Qt::Key_Escape));
  dialogs.MsgBox("Wait", "", Buttons::ok, host::Icon::none);
  EXPECT_GE(ticks, 3);
}

TEST_F(Dialogs, ProgressIsToldToTheFacilitatorAndTheRoomSeesAThinLineAtMost) {
  std::string told;
  qtDialogs.setStatusLine([&](const std::string& line) { told += "[" + line + "]"; });
  const auto lines = [] {
    std::vector<QRect> places;
    for (const QWidget* widget : QApplication::topLevelWidgets())
      if (widget->isVisible())
        places.push_back(widget->geometry());
    return places;
  };
  const auto wait = [](double seconds) { host::waitUntil([] { return false; }, seconds); };
  const auto before = world.clock.micros;
  dialogs.Info("Matrix Loading");
  EXPECT_EQ(world.clock.micros, before) << "nobody waits for a line to be read";
  wait(0.3);
  EXPECT_TRUE(lines().empty());
  dialogs.Info("Drawing Matrix Graph");
  wait(0.2);
  ASSERT_EQ(lines().size(), 1U);
  EXPECT_LT(lines()[0].height(), 10);
  dialogs.Info("");
  wait(1);
  EXPECT_TRUE(lines().empty());
  EXPECT_EQ(told, "[Matrix Loading][Drawing Matrix Graph][]");
}

}  // namespace

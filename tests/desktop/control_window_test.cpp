#include "desktop/control_window.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTreeView>

#include "desktop/window_world.h"
#include "host/help.h"

namespace {

using namespace qrn;
using host::Control;

struct Settings : host::ControlForm {
  Settings() : ControlForm("settings") {
    title = "Weights";
    std::vector<host::PanelRow> rows(3);
    for (int i = 0; i < 3; ++i) {
      rows[static_cast<std::size_t>(i)].cells = {"item " + std::to_string(i)};
      rows[static_cast<std::size_t>(i)].id = i;
      rows[static_cast<std::size_t>(i)].checkable = true;
    }
    list.setRows(rows);
    list.activated = [this](int row) { opened = row; };
    controls = {{.kind = Control::Kind::number,
                 .name = "weight",
                 .caption = "Weight",
                 .value = host::number(weight),
                 .low = 1,
                 .high = 20},
                {.kind = Control::Kind::check, .name = "on", .caption = "It counts", .value = host::flag(on)},
                {.kind = Control::Kind::list, .name = "list", .caption = "Items", .panel = &list}};
  }
  void Form_KeyDown(int keyCode, int shift) override {
    if (keyCode == '7')
      digit = 7;
    ControlForm::Form_KeyDown(keyCode, shift);
  }
  int weight = 5, opened = -1, digit = 0;
  bool on = false;
  host::Panel list;
};

struct ControlWindowTest : ::testing::Test {
  ControlWindowTest() {
    world.forms.define("settings", [] { return std::make_unique<Settings>(); });
    world.forms.attach("settings", desktop::controlView(stack));
    world.forms.show("settings");
    form = &world.forms.as<Settings>("settings");
    window = stack.front();
    QTest::qWait(1);
  }
  void type(QWidget* where, const char* text) { QTest::keyClicks(where, text); }

  desktop::WindowStack stack;
  test::WindowWorld world;
  Settings* form = nullptr;
  QWidget* window = nullptr;
};

TEST_F(ControlWindowTest, EverythingIsDoneByKeys) {
  auto* edit = window->findChild<QLineEdit*>("weight");
  ASSERT_NE(edit, nullptr);
  edit->setFocus();
  edit->selectAll();
  type(edit, "17");
  EXPECT_EQ(form->weight, 17);
  auto* box = window->findChild<QCheckBox*>();
  box->setFocus();
  QTest::keyClick(box, Qt::Key_Space);
  EXPECT_TRUE(form->on);
  auto* list = window->findChild<QTreeView*>("list");
  list->setFocus();
  QTest::keyClick(list, Qt::Key_Down);
  QTest::keyClick(list, Qt::Key_Down);
  QTest::keyClick(list, Qt::Key_Space);
  EXPECT_EQ(form->list.current(), 1);
  EXPECT_TRUE(form->list.rows()[1].checked);
  QTest::keyClick(list, Qt::Key_7);
  EXPECT_EQ(form->digit, 7) << "a key that the list does not know is the dialog's";
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_EQ(form->opened, 1);
  EXPECT_TRUE(form->visible) << "the list took that Enter";
  QTest::keyClick(box, Qt::Key_Return);
  EXPECT_TRUE(form->accepted);
  EXPECT_FALSE(form->visible);
}

TEST_F(ControlWindowTest, WhatIsRefusedIsToldAndChangesNothing) {
  auto* edit = window->findChild<QLineEdit*>("weight");
  edit->setFocus();
  edit->selectAll();
  type(edit, "99");
  EXPECT_EQ(form->weight, 9);
  EXPECT_EQ(window->findChild<QLabel*>("problem")->text(), "Weight is a whole number from 1 to 20.");
  EXPECT_EQ(edit->text(), "99") << "what is being typed stays";
  QTest::keyClick(edit, Qt::Key_Return);
  EXPECT_TRUE(form->visible) << "and is not passed over";
  window->findChild<QTreeView*>("list")->setFocus();
  EXPECT_EQ(edit->text(), "9");
  EXPECT_TRUE(window->findChild<QLabel*>("problem")->isHidden());
  QTest::keyClick(edit, Qt::Key_Escape);
  EXPECT_FALSE(form->accepted);
  EXPECT_FALSE(form->visible);
}

TEST_F(ControlWindowTest, MouseTicksChoosesAndOpens) {
  auto* list = window->findChild<QTreeView*>("list");
  const QRect third = list->visualRect(list->model()->index(2, 0));
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, third.center());
  EXPECT_EQ(form->list.current(), 2);
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, third.center());
  EXPECT_EQ(form->opened, 2);
  window->close();
  EXPECT_FALSE(form->visible);
  EXPECT_FALSE(form->accepted);
}

TEST_F(ControlWindowTest, NothingIsCutAtTheSmallestScreen) {
  EXPECT_EQ(test::cutParts(*window), "");
  world.forms.define(host::kHelpForm, [] { return std::make_unique<host::formHelp>(); });
  world.forms.attach(host::kHelpForm, desktop::controlView(stack));
  const host::KeyHelp row{"Space, Enter, Right, Down, PageDown, N",
                          "Go to another item, go back, quit this vote"};
  world.forms.as<host::formHelp>(host::kHelpForm).tell(std::vector<host::KeyHelp>(40, row));
  world.forms.show(host::kHelpForm);
  QWidget& help = *stack.front();
  auto& list = *help.findChild<QTreeView*>("List1");
  EXPECT_EQ(test::cutParts(help), "");
  EXPECT_TRUE(help.findChild<QWidget*>("card")->rect().contains(list.parentWidget()->geometry()));
  const int high = list.visualRect(list.model()->index(0, 1)).height();
  EXPECT_GE(high, 2 * list.fontMetrics().height()) << "long rows are wrapped";
  EXPECT_LT(list.viewport()->height() % high, high / 2) << "and whole";
}

TEST_F(ControlWindowTest, ATickIsNotToldByColourAlone) {
  auto* box = window->findChild<QCheckBox*>();
  for (const bool ticked : {false, true}) {
    box->setChecked(ticked);
    const QImage line =
        box->grab(QRect(box->height() / 4, box->height() / 2, box->height() / 2, 1)).toImage();
    QSet<QRgb> colours;
    for (int x = 0; x < line.width(); ++x) colours.insert(line.pixel(x, 0));
    EXPECT_EQ(colours.size() > 2, ticked);
  }
}

TEST_F(ControlWindowTest, TheRestStandsWhereItStoodAndLettersReachEverythingOnce) {
  QWidget front;
  front.setGeometry(0, 50, 300, 200);
  front.show();
  stack.raise(&front);
  const QImage seen = stack.picture(QRect(0, 0, 300, 300), window).toImage();
  for (const int y : {40, 60, 240, 260})
    EXPECT_EQ(seen.pixelColor(150, y).alpha() > 0, y > 50 && y < 250) << y;
  QStringList texts;
  for (const auto* button : window->findChildren<QAbstractButton*>()) texts << button->text();
  for (const auto* label : window->findChildren<QLabel*>()) texts << label->text();
  texts.sort();
  EXPECT_EQ(texts.filter("&").join(" "), "&Cancel &It counts &OK &Weight I&tems");
}

}  // namespace

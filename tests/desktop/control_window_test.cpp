#include "desktop/control_window.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTreeView>

#include "desktop/window_world.h"

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
  EXPECT_EQ(window->findChild<QLabel*>("problem")->text(), "Weight is a number from 1 to 20.");
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
}

}  // namespace

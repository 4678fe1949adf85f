#include "desktop/surface_window.h"

#include <cmath>

#include "desktop/window_world.h"

namespace {

using namespace qrn;

struct GraphForm : host::Form {
  GraphForm() : Form("graph") {
    List1.setRows({{.cells = {"A: one"}, .id = 1}, {.cells = {"B: two"}, .id = 2}});
    List1.select(1);
    List1.selectionChanged = [this](int row) { tellRow("chosen", row); };
    List1.activated = [this](int row) { tellRow("opened", row); };
    List1.menuWanted = [this](int row) { tellRow("menu", row); };
  }
  host::ActionTable actions() override {
    const auto noting = [this](const char* what) { return [this, what] { done += what; }; };
    return host::ActionTable({{.name = "cmd_info",
                               .caption = "Without data",
                               .keys = {{'I', host::key::altMask}},
                               .perform = noting("info "),
                               .enabled = [this] { return lacksData; }},
                              {.name = "cmd_list",
                               .caption = "List",
                               .keys = {{'L', host::key::altMask}},
                               .menus = {host::kCommandBar},
                               .perform = noting("list "),
                               .checked = [] { return true; }},
                              {.name = "more", .caption = "R & D", .menus = {host::kCommandBar}}});
  }
  void Form_Load() override { widthAtLoad = ScaleWidth; }
  void Form_KeyDown(int keyCode, int shift) override {
    keys += "down " + std::to_string(keyCode) + "/" + std::to_string(shift) + " ";
    if (onKey)
      onKey(keyCode);
  }
  void Form_KeyPress(int keyAscii) override { keys += "press " + std::to_string(keyAscii) + " "; }
  void Form_Resize() override { ++resizes; }
  void Form_MouseDown(int button, double x, double y) override {
    tell("down" + std::to_string(button), x, y);
  }
  void Form_MouseMove(double x, double y) override { tell("move", x, y); }
  void Form_MouseUp(double x, double y) override { tell("up", x, y); }
  void Form_DblClick(double x, double y) override { tell("double", x, y); }
  void tell(const std::string& what, double x, double y) {
    mouse.push_back(what + " " + std::to_string(std::lround(x)) + "," + std::to_string(std::lround(y)));
  }
  bool Form_QueryUnload(bool byUser) override {
    askedByUser = byUser;
    return mayClose;
  }
  const host::Surface& surface() {
    ++surfacesAsked;
    shown.width = ScaleWidth;
    shown.height = ScaleHeight;
    return shown;
  }

  void tellRow(const std::string& what, int row) { rows += what + std::to_string(row) + " "; }

  host::Surface shown;
  std::string keys;
  std::vector<std::string> mouse;
  std::function<void(int)> onKey;
  double widthAtLoad = 0;
  int resizes = 0, surfacesAsked = 0;
  bool mayClose = true, askedByUser = false, listVisible = false;
  std::string rows, done;
  bool lacksData = false;
  host::Panel List1;
};

class SurfaceWindow : public ::testing::Test {
 protected:
  SurfaceWindow() {
    world.forms.define("graph", [] { return std::make_unique<GraphForm>(); });
    world.forms.attach("graph",
                       desktop::surfaceViewOf<GraphForm>(
                           world.forms, stack, [](GraphForm& form, desktop::SurfaceWindow::Source& source) {
                             source.list = {[&form] { return form.listVisible; }, &form.List1};
                             source.info = true;
                             source.barShown = [&form] { return form.listVisible; };
                           }));
  }
  GraphForm& form() { return world.forms.as<GraphForm>("graph"); }
  QWidget& window() { return *stack.formWindow("graph"); }

  desktop::WindowStack stack;
  test::WindowWorld world;
};

TEST_F(SurfaceWindow, TellsTheFormItsSizeInTwipsBeforeItLoads) {
  world.forms.show("graph");
  const QRect screen = stack.placeForForms();
  EXPECT_EQ(form().widthAtLoad, screen.width() * 15);
  EXPECT_EQ(form().resizes, 0) << "the size it was shown in is the size it was told";
  stack.placeForm("graph", QRect(10, 20, 640, 480));
  EXPECT_EQ(form().ScaleWidth, 9600);
  EXPECT_EQ(form().ScaleHeight, 7200);
  QCoreApplication::processEvents();
  EXPECT_EQ(form().resizes, 1);
}

TEST_F(SurfaceWindow, HandsKeysOverAsKeyDownAndKeyPress) {
  world.forms.show("graph");
  QTest::keyClick(&window(), Qt::Key_B);
  QTest::keyClick(&window(), Qt::Key_Tab);
  QTest::keyClick(&window(), Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(form().keys, "down 66/0 press 98 down 9/0 press 9 down 38/4 ");
}

TEST_F(SurfaceWindow, SendsNoKeyPressToAFormThatItsKeyDownHasUnloaded) {
  world.forms.show("graph");
  GraphForm& shown = form();
  shown.onKey = [&](int) { world.forms.unload("graph"); };
  QTest::keyClick(&window(), Qt::Key_Escape);
  EXPECT_EQ(shown.keys, "down 27/0 ");
  EXPECT_FALSE(world.forms.isLoaded("graph"));
}

TEST_F(SurfaceWindow, CloseButtonUnloadsUnlessTheFormRefuses) {
  world.forms.show("graph");
  QWidget& shown = window();
  form().mayClose = false;
  shown.close();
  EXPECT_TRUE(form().askedByUser);
  EXPECT_TRUE(shown.isVisible());
  form().mayClose = true;
  shown.close();
  EXPECT_FALSE(world.forms.isLoaded("graph"));
  EXPECT_FALSE(shown.isVisible());
}

TEST_F(SurfaceWindow, PaintsAgainOnlyWhenSomethingHasChanged) {
  world.forms.show("graph");
  window().grab();
  const int asked = form().surfacesAsked;
  window().grab();
  window().grab();
  EXPECT_EQ(form().surfacesAsked, asked);
  form().shown.background = host::RGB(0, 0, 200);
  world.forms.refresh("graph");
  EXPECT_EQ(window().grab().toImage().pixelColor(5, 5), QColor(0, 0, 200));
}

TEST_F(SurfaceWindow, HandsTheMouseOverInTwips) {
  world.forms.show("graph");
  const Qt::MouseButton left = Qt::LeftButton, right = Qt::RightButton;
  QTest::mousePress(&window(), left, {}, QPoint(10, 20));
  QTest::mouseMove(&window(), QPoint(30, 20));
  QTest::mouseRelease(&window(), left, {}, QPoint(40, 50));
  QTest::mouseMove(&window(), QPoint(60, 60));  // without a button the form is not told
  QTest::mouseClick(&window(), right, {}, QPoint(1, 2));
  QTest::mouseDClick(&window(), left, {}, QPoint(4, 4));
  const std::vector<std::string> told{"down1 150,300", "move 450,300", "up 600,750", "down2 15,30"};
  ASSERT_GE(form().mouse.size(), told.size());
  EXPECT_TRUE(std::equal(told.begin(), told.end(), form().mouse.begin()));
  EXPECT_EQ(std::count(form().mouse.begin(), form().mouse.end(), "double 60,60"), 1);
}

TEST_F(SurfaceWindow, TheListTakesItsShareAndTheGraphStaysWhole) {
  world.forms.load("graph");
  form().listVisible = true;
  world.forms.show("graph");
  QCoreApplication::processEvents();
  auto* list = window().findChild<desktop::PanelView*>("List1");
  ASSERT_TRUE(list->isVisible());
  EXPECT_EQ(list->currentIndex().data().toString(), "B: two");
  const int middle = static_cast<int>(form().ScaleHeight / 2 / 15);  // of what the buttons leave
  EXPECT_LT(middle, window().height() / 2);
  QTest::mouseClick(&window(), Qt::LeftButton, {}, QPoint(list->x(), middle));
  QTest::mouseClick(&window(), Qt::LeftButton, {}, QPoint(0, middle));
  const auto at = [&](double share) {
    return " " + std::to_string(std::lround(share * form().ScaleWidth)) + "," + std::to_string(middle * 15);
  };
  EXPECT_EQ(form().mouse,
            (std::vector<std::string>{"down1" + at(1), "up" + at(1), "down1" + at(0), "up" + at(0)}))
      << "the graph ends beside the list, with its proportions";
  const auto middleOf = [&](int row) { return list->visualRect(list->model()->index(row, 0)).center(); };
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, middleOf(0));
  QContextMenuEvent menu(QContextMenuEvent::Mouse, middleOf(0), list->viewport()->mapToGlobal(middleOf(0)));
  QApplication::sendEvent(list->viewport(), &menu);
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, middleOf(1));
  EXPECT_EQ(form().rows.substr(0, 13), "chosen0 menu0") << form().rows;
  EXPECT_NE(form().rows.find("opened1"), std::string::npos) << form().rows;
  QTest::keyClick(&window(), Qt::Key_L);
  EXPECT_EQ(form().keys, "down 76/0 press 108 ") << "the keys stay the form's";
}

TEST_F(SurfaceWindow, ButtonsComeFromTheActionTable) {
  world.forms.show("graph");
  QCoreApplication::processEvents();
  auto* bar = window().findChild<QWidget*>(host::kCommandBar);
  auto* info = window().findChild<QPushButton*>("cmd_info");
  EXPECT_TRUE(bar->isHidden() && info->isHidden());
  form().listVisible = form().lacksData = true;
  world.forms.refresh("graph");
  QCoreApplication::processEvents();
  EXPECT_EQ(info->toolTip(), "Without data (Alt+I)");
  std::string said;
  for (auto* button : bar->findChildren<QPushButton*>()) {
    said += "[" + button->text().toStdString() + (button->isChecked() ? " on" : "") +
            (button->isEnabled() ? "]" : " greyed]");
    QTest::mouseClick(button, Qt::LeftButton);
  }
  EXPECT_EQ(said, "[List  Alt+L on][R && D greyed]");
  QTest::mouseClick(info, Qt::LeftButton);
  EXPECT_EQ(form().done, "list info ");
}

}  // namespace

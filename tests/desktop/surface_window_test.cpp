#include "desktop/surface_window.h"

#include "desktop/window_world.h"

namespace {

using namespace qrn;

struct GraphForm : host::Form {
  GraphForm() : Form("graph") {}
  void Form_Load() override { widthAtLoad = ScaleWidth; }
  void Form_KeyDown(int keyCode, int shift) override {
    keys += "down " + std::to_string(keyCode) + "/" + std::to_string(shift) + " ";
    if (onKey)
      onKey(keyCode);
  }
  void Form_KeyPress(int keyAscii) override { keys += "press " + std::to_string(keyAscii) + " "; }
  void Form_Resize() override { ++resizes; }
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

  host::Surface shown;
  std::string keys;
  std::function<void(int)> onKey;
  double widthAtLoad = 0;
  int resizes = 0, surfacesAsked = 0;
  bool mayClose = true, askedByUser = false, listVisible = false;
  int row = -1;
};

class SurfaceWindow : public ::testing::Test {
 protected:
  SurfaceWindow() {
    world.forms.define("graph", [] { return std::make_unique<GraphForm>(); });
    world.forms.attach(
        "graph", desktop::surfaceViewOf<GraphForm>(
                     world.forms, stack, [this](GraphForm& form, desktop::SurfaceWindow::Source& source) {
                       source.clicked = [this](const host::Element& element) {
                         clicked.push_back(element.array + std::to_string(element.index));
                       };
                       source.list =
                           desktop::SideListSource{[&form] { return form.listVisible; },
                                                   [] {
                                                     return std::vector<std::string>{"A: one", "B: two"};
                                                   },
                                                   [] { return 1; }, [&form](int row) { form.row = row; }};
                     }));
  }
  GraphForm& form() { return world.forms.as<GraphForm>("graph"); }
  QWidget& window() { return *stack.formWindow("graph"); }

  desktop::WindowStack stack;
  test::WindowWorld world;
  std::vector<std::string> clicked;
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

TEST_F(SurfaceWindow, ModalShowReturnsWhenThePersonCloses) {
  world.at(0.1, [&] { window().close(); });
  world.forms.showModal("graph");
  EXPECT_FALSE(world.forms.isLoaded("graph"));
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

TEST_F(SurfaceWindow, ClicksReachTheFrontElementThere) {
  host::Element panel;
  panel.kind = host::Element::Kind::rectangle;
  panel.array = "panel";
  panel.width = panel.height = 3000;
  host::Element count = panel;
  count.array = "count";
  count.width = count.height = 1500;
  world.forms.load("graph");
  form().shown.add(panel);
  form().shown.add(count);
  world.forms.show("graph");
  QTest::mouseClick(&window(), Qt::LeftButton, {}, QPoint(50, 50));
  QTest::mouseClick(&window(), Qt::LeftButton, {}, QPoint(150, 150));
  QTest::mouseClick(&window(), Qt::LeftButton, {}, QPoint(300, 300));
  EXPECT_EQ(clicked, (std::vector<std::string>{"count0", "panel0"}));
}

TEST_F(SurfaceWindow, TheListTakesItsShareAndTheGraphStaysWhole) {
  world.forms.load("graph");
  host::Element all;
  all.kind = host::Element::Kind::rectangle;
  all.array = "all";
  all.width = form().ScaleWidth;
  all.height = form().ScaleHeight;
  form().shown.add(all);
  form().listVisible = true;
  world.forms.show("graph");
  auto* list = window().findChild<QListWidget*>("List1");
  ASSERT_TRUE(list->isVisible());
  EXPECT_EQ(list->currentItem()->text(), "B: two");
  const QSize size = window().size();
  QTest::mouseClick(&window(), Qt::LeftButton, {}, QPoint(list->x() - 5, size.height() / 2));
  QTest::mouseClick(&window(), Qt::LeftButton, {}, QPoint(list->x() - 5, 5));
  EXPECT_EQ(clicked, std::vector<std::string>{"all0"})
      << "the graph ends beside the list, with its proportions";
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
  EXPECT_EQ(form().row, 0);
  QTest::keyClick(&window(), Qt::Key_L);
  EXPECT_EQ(form().keys, "down 76/0 press 108 ") << "the keys stay the form's";
}

TEST_F(SurfaceWindow, TheWindowBeneathIsInFrontAgainWhenItGoes) {
  QWidget below;
  below.show();
  stack.raise(&below);
  world.forms.show("graph");
  EXPECT_EQ(stack.front(), &window());
  world.forms.hide("graph");
  EXPECT_EQ(stack.front(), &below);
  stack.drop(&below);
}

}  // namespace

#include "desktop/surface_window.h"

#include <cmath>

#include "desktop/window_case.h"

namespace qrn::test {
namespace {

// Tells what reaches it.
struct GraphForm : host::Form {
  using Told = std::function<void(const std::string&)>;
  explicit GraphForm(Told told) : Form("graph"), tell(std::move(told)) {
    List1.setRows({{.cells = {"A: one"}, .id = 1}, {.cells = {"B: two"}, .id = 2}});
    List1.select(1);
    List1.selectionChanged = [this](int row) { tell("chosen " + std::to_string(row)); };
    List1.activated = [this](int row) { tell("opened " + std::to_string(row)); };
    List1.menuWanted = [this](int row) { tell("menu " + std::to_string(row)); };
  }
  host::ActionTable actions() override {
    const auto noting = [this](const char* what) { return [this, what] { tell(what); }; };
    return host::ActionTable({{.name = "cmd_info",
                               .caption = "Without data",
                               .keys = {{'I', host::key::altMask}},
                               .perform = noting("info"),
                               .enabled = [this] { return lacksData; }},
                              {.name = "cmd_list",
                               .caption = "List",
                               .keys = {{'L', host::key::altMask}},
                               .menus = {host::kCommandBar},
                               .perform = noting("list"),
                               .checked = [] { return true; }},
                              {.name = "more", .caption = "R & D", .menus = {host::kCommandBar}}});
  }
  void Form_Load() override { tellPlace("loads", ScaleWidth, ScaleHeight); }
  void Form_Resize() override { tellPlace("resized", ScaleWidth, ScaleHeight); }
  void Form_KeyDown(int keyCode, int shift) override {
    tell("down " + std::to_string(keyCode) + "/" + std::to_string(shift));
    if (keyCode == host::key::escape)
      host::host().forms->unload("graph");
  }
  void Form_KeyPress(int keyAscii) override { tell("press " + std::to_string(keyAscii)); }
  void Form_MouseDown(int button, double x, double y) override {
    tellPlace("mouse down " + std::to_string(button), x, y);
  }
  void Form_MouseMove(double x, double y) override { tellPlace("move", x, y); }
  void Form_MouseUp(double x, double y) override { tellPlace("up", x, y); }
  void Form_DblClick(double x, double y) override { tellPlace("double", x, y); }
  void tellPlace(const std::string& what, double x, double y) const {
    tell(what + " " + std::to_string(std::lround(x)) + "," + std::to_string(std::lround(y)));
  }
  bool Form_QueryUnload(bool byUser) override {
    tell(byUser ? "asked by the person" : "asked");
    return mayClose;
  }
  const host::Surface& surface() {
    tell("painted");
    shown.width = ScaleWidth;
    shown.height = ScaleHeight;
    return shown;
  }

  Told tell;
  host::Surface shown;
  bool mayClose = true, listVisible = false, lacksData = false;
  host::Panel List1;
};

class SurfaceCase : public WindowCase {
 protected:
  SurfaceCase() {
    world.forms.define("graph", [this] {
      return std::make_unique<GraphForm>([this](const std::string& what) {
        if (what != "painted" || paints_)
          tell(what);
      });
    });
    world.forms.attach("graph",
                       desktop::surfaceViewOf<GraphForm>(
                           world.forms, stack, [](GraphForm& form, desktop::SurfaceWindow::Source& source) {
                             source.list = {[&form] { return form.listVisible; }, &form.List1};
                             source.info = true;
                             source.barShown = [&form] { return form.listVisible; };
                           }));
    on("load", [this](const Words&) { world.forms.load("graph"); });
    on("show", [this](const Words&) { world.forms.show("graph"), QCoreApplication::processEvents(); });
    on("place", [this](const Words& words) {
      stack.placeForm("graph", QRect(10, 20, words.number(0), words.number(1)));
      QCoreApplication::processEvents();
    });
    // form [list] [open] [missing]: with its list, not to be closed, without some data
    on("form", [this](const Words& words) {
      form().listVisible = words.has("list");
      form().mayClose = !words.has("open");
      form().lacksData = words.has("missing");
      world.forms.refresh("graph");
      QCoreApplication::processEvents();
    });
    // rows COUNT TEXT: the list has that many; how each is set
    on("rows", [this](const Words& words) {
      form().List1.setRows({std::stoul(words[0]), host::PanelRow{.cells = {words.rest(1)}}});
      world.forms.refresh("graph");
      QCoreApplication::processEvents();
      tell(dynamic_cast<desktop::SideList&>(part("List1")).lines(0).join(" / ").toStdString());
    });
    on("loaded", [this](const Words&) {
      tell(!world.forms.isLoaded("graph") ? "no" : window().isVisible() ? "in sight" : "hidden");
    });
    // grab [COLOUR]: of the ground from now on; the corner's is told
    on("grab", [this](const Words& words) {
      paints_ = true;
      if (!words.empty()) {
        form().shown.background = static_cast<std::int32_t>(std::stoul(words[0], nullptr, 16));
        world.forms.refresh("graph");
      }
      tell(window().grab().toImage().pixelColor(5, 5).name().toStdString());
    });
    mouseCommands();
  }
  GraphForm& form() { return world.forms.as<GraphForm>("graph"); }
  QWidget& window() override { return *stack.formWindow("graph"); }
  void mouseCommands() {
    // mouse press|move|release|click|double X Y [right]
    on("mouse", [this](const Words& words) {
      const Qt::MouseButton button = words.word(3) == "right" ? Qt::RightButton : Qt::LeftButton;
      const QPoint at(words.number(1), words.number(2));
      using Does = void (*)(QWidget*, Qt::MouseButton, Qt::KeyboardModifiers, QPoint, int);
      const std::map<std::string, Does> does{{"double", QTest::mouseDClick},
                                             {"click", QTest::mouseClick},
                                             {"press", QTest::mousePress},
                                             {"release", QTest::mouseRelease}};
      if (words[0] == "move")
        QTest::mouseMove(&window(), at);
      else
        does.at(words[0])(&window(), button, {}, at, -1);
    });
    // Where clicks halfway down fall, at the left edge and beside the list: in shares of the form.
    on("edges", [this](const Words&) {
      const int middle = static_cast<int>(form().ScaleHeight / 2 / 15);  // of what the buttons leave
      tell(middle < window().height() / 2 ? "buttons above" : "no buttons");
      for (const int x : {part("List1").x(), 0}) {
        QTest::mouseClick(&window(), Qt::LeftButton, {}, QPoint(x, middle));
        for (const double share : {0.0, 1.0})
          tell(replaceAll(take(),
                          " " + std::to_string(std::lround(share * form().ScaleWidth)) + "," +
                              std::to_string(middle * 15),
                          share > 0 ? " at the right end" : " at the left end"));
      }
    });
    on("buttons", [this](const Words&) {
      for (QPushButton* button : part(host::kCommandBar).findChildren<QPushButton*>()) {
        tell(button->text().toStdString(), button->isChecked() ? ", on" : "",
             button->isEnabled() ? "" : ", greyed");
        QTest::mouseClick(button, Qt::LeftButton);
      }
    });
    on("tip", [this](const Words& words) { tell(part(words[0]).toolTip().toStdString()); });
  }

 private:
  bool paints_ = false;  // are told
};

const bool kRegistered = registerCases<SurfaceCase>("SurfaceCase", QUORIN_CASES "/surface_window.case");

}  // namespace
}  // namespace qrn::test

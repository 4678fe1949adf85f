// What the logic and its windows share: action tables, controls, lists, surfaces; told as conversations.
#include "host/actions.h"
#include "host/controls.h"
#include "host/panel.h"
#include "host/surface.h"
#include "support/cases.h"
#include "support/test_host.h"

namespace qrn::host {
namespace {

using test::Words;

// A dialog of a number, a flag and a choice that stays open while the number is 13.
struct Settings : ControlForm {
  Settings() : ControlForm("settings") {
    controls = {{.kind = Control::Kind::number,
                 .name = "weight",
                 .caption = "Weight",
                 .value = number(weight),
                 .low = 1,
                 .high = 20},
                {.kind = Control::Kind::check, .name = "on", .caption = "Counts", .value = flag(on)},
                {.kind = Control::Kind::choice,
                 .name = "kind",
                 .caption = "Kind",
                 .value = number(kind),
                 .choices = {"plain", "cumulative"}}};
  }
  std::string take() override { return weight == 13 ? "Not 13." : ""; }
  int weight = 5, kind = 0;
  bool on = false;
};

class HostCase : public test::CaseTest {
 protected:
  HostCase() {
    panel.selectionChanged = [this](int) { ++told; };
    panel.activated = [this](int at) { tell("opens ", at); };
    panel.toggled = [this](int at) { tell("ticks ", at); };
    panelCommands();
    actionCommands();
    controlCommands();
    surfaceCommands();
    textCommands();
  }
  static int code(const std::string& key) { return readKeys(key).at(0).code; }
  // rows ROW ...: numbers, behind a dash those that are disabled, with + a box to tick, with > one below the
  // other
  void panelCommands() {
    on("rows", [this](const Words& words) {
      std::vector<PanelRow> rows;
      for (const std::string& word : words) {
        PanelRow row;
        row.enabled = word[0] != '-';
        row.checkable = word[0] == '+';
        row.depth = static_cast<int>(std::count(word.begin(), word.end(), '>'));
        row.id = std::stoi(word.substr(word.find_first_of("0123456789")));
        row.cells = {"row " + std::to_string(row.id)};
        rows.push_back(row);
      }
      panel.setRows(rows);
    });
    on("many", [this](const Words&) { panel.multiSelect = true; });
    on("key", [this](const Words& words) {
      for (const KeyStroke& stroke : readKeys(words.rest(0)))
        if (!panel.keyDown(stroke.code, stroke.shift))
          tell("not taken");
      tellPanel();
    });
    on("select", [this](const Words& words) {
      panel.select(words.number(0), words.word(1) == "range" ? Panel::How::range
                                    : words.word(1) == "add" ? Panel::How::add
                                                             : Panel::How::alone);
      tellPanel();
    });
    on("type",
       [this](const Words& words) { tell(panel.typeAhead(words.rest(0)) ? "" : "nothing"), tellPanel(); });
    on("close", [this](const Words& words) { panel.setOpen(words.number(0), false), tellPanel(); });
    on("told", [this](const Words&) { tell(told, " times"); });
  }
  void tellPanel() {
    std::string line = "at " + std::to_string(panel.current()) + ", selected";
    for (const int row : panel.selected()) line += " " + std::to_string(row);
    const int count = static_cast<int>(panel.rows().size());
    for (int row = 0; row < count; ++row)
      line += (panel.shown(row) ? "" : ", hidden " + std::to_string(row)) +
              (panel.rows()[static_cast<std::size_t>(row)].checked ? ", ticked " + std::to_string(row) : "");
    tell(line);
  }
  ActionTable table() {
    const auto does = [this](const char* what) { return [this, what] { tell(what); }; };
    return ActionTable({{.name = "zoomOut",
                         .caption = "Show all",
                         .keys = {{key::escape, kAnyShift}},
                         .perform = does("zooms out"),
                         .enabled = [this] { return zoomed; }},
                        {.name = "close",
                         .caption = "Close",
                         .keys = {{key::escape, kAnyShift}, {key::space, 0}},
                         .perform = does("closes")},
                        {.name = "list",
                         .caption = "List",
                         .keys = {{'L', key::altMask}},
                         .menus = {"menu"},
                         .perform = does("lists")},
                        {.name = "lines",
                         .caption = "Pair lines",
                         .menus = {"menu"},
                         .perform = does("lines"),
                         .checked = [] { return true; }},
                        {.name = "all",
                         .caption = "All",
                         .keys = {{key::multiply, key::ctrlMask}, {'A', key::ctrlMask}},
                         .menus = {"menu", "other"},
                         .perform = [] {},
                         .enabled = [] { return false; },
                         .separated = true},
                        {.name = "digits",
                         .caption = "Filter",
                         .keys = keyRange('0', '9'),
                         .performKey = [](int) {},
                         .help = "Show one group"}});
  }
  void actionCommands() {
    on("zoomed", [this](const Words&) { zoomed = true; });
    on("strike", [this](const Words& words) {
      for (const KeyStroke& stroke : readKeys(words.rest(0)))
        tell(table().performKey(stroke.code, stroke.shift) ? "" : "nothing");
    });
    on("do", [this](const Words& words) { tell(table().perform(words[0]) ? "" : "nothing"); });
    on("menu", [this](const Words& words) {
      for (const MenuRow& row : table().menu(words[0]))
        tell(std::string(row.separated ? "| " : "") + (row.enabled ? "" : "- ") +
             (row.checkable ? row.checked ? "[x] " : "[ ] " : "") + row.caption + "   " + row.key);
    });
    on("help", [this](const Words&) {
      for (const KeyHelp& row : table().help()) tell(row.keys + ": " + row.caption);
    });
    on("popup", [this](const Words& words) {
      struct Graph : Form {
        explicit Graph(ActionTable actions) : Form("graph"), actions_(std::move(actions)) {}
        ActionTable actions() override { return actions_; }
        ActionTable actions_;
      };
      world.forms.define("graph", [this] { return std::make_unique<Graph>(table()); });
      auto& form = world.forms.as<Graph>("graph");
      if (words[0] == "gone")
        world.forms.unload("graph");
      world.expectMenu("lines", words[0] != "nothing");
      popUp(form, "menu");
    });
    on("named", [this](const Words& words) {
      std::string names;
      for (const KeyStroke& stroke : readKeys(words.rest(0))) names += keyName(stroke) + " ";
      tell(names);
    });
    // names: each key that has a name is read by it
    on("names", [this](const Words&) {
      int named = 0;
      for (int code = 1; code < 256; ++code)
        for (int shift = 0; shift < 8; ++shift)
          if (const std::string name = keyName({code, shift}); !name.empty())
            readKeys(name) == std::vector<KeyStroke>{{code, shift}} ? void(++named)
                                                                    : tell(name + " is another");
      tell(named > 400 ? "many" : std::to_string(named));
    });
    // guard KEY MILLISECONDS: since the key before
    on("guard", [this](const Words& words) {
      world.clock.micros += 1000 * words.number(1);
      tell(guard.repeated(code(words[0])) ? "a repeat" : "a key");
    });
  }
  void controlCommands() {
    on("give", [this](const Words& words) {
      const std::string why = qrn::host::give(*form().find(words[0]), words.word(1));
      tell(why.empty() ? words[0] + " is " + valueOf(*form().find(words[0])) : why);
    });
    on("default", [this](const Words& words) { form().dismissIsDefault = words[0] == "dismiss"; });
    on("answer", [this](const Words& words) {
      world.forms.show("settings");
      if (words[0] == "close")
        tell(world.forms.unload("settings", true) ? "gone" : "stays loaded");
      else
        form().Form_KeyDown(code(words[0]), 0);
      tell(std::string(world.forms.isVisible("settings") ? "stands" : "hidden") +
           (form().accepted ? ", accepted" : "") + (form().problem.empty() ? "" : ": " + form().problem));
    });
  }
  Settings& form() {
    if (!world.forms.isLoaded("settings"))
      world.forms.define("settings", [] { return std::make_unique<Settings>(); });
    return world.forms.as<Settings>("settings");
  }
  static Layer layerOf(const std::string& name) {
    static const std::map<std::string, Layer> layers{{"grid", Layer::grid},
                                                     {"lines", Layer::lines},
                                                     {"keys", Layer::keys},
                                                     {"titles", Layer::titles},
                                                     {"menus", Layer::menus}};
    return layers.at(name);
  }
  void surfaceCommands() {
    on("array", [this](const Words& words) { surface.array(words[0], layerOf(words[1])), tellArrays(); });
    on("arrays", [this](const Words&) { tellArrays(); });
    // element ARRAY LAYER INDEX [rectangle|label|ellipse|line LEFT TOP WIDTH HEIGHT] [hidden]
    on("element", [this](const Words& words) {
      static const std::map<std::string, Element::Kind> kinds{{"rectangle", Element::Kind::rectangle},
                                                              {"label", Element::Kind::label},
                                                              {"ellipse", Element::Kind::ellipse},
                                                              {"line", Element::Kind::line}};
      Element made;
      if (words.size() > 4) {
        made.kind = kinds.at(words[3]);
        made.left = words.number(4);
        made.top = words.number(5);
        made.width = words.number(6);
        made.height = words.number(7);
      }
      made.visible = words.back() != "hidden";
      made.item = 10 * words.number(2);
      surface.add(layerOf(words[1]), words[0], words.number(2), made);
    });
    on("find", [this](const Words& words) {
      const Element* found = surface.find(words[0], words.number(1));
      tell(found == nullptr ? "nothing" : "item " + std::to_string(found->item));
    });
    on("remove", [this](const Words& words) {
      const Element* kept = surface.find("key", 7);
      surface.remove(words[0]);
      tell(kept == surface.find("key", 7) ? "" : "the others have moved");
      tellArrays();
    });
    // hit X Y [NOT]: the element in front there, but none of that array
    on("hit", [this](const Words& words) {
      const Hit hit =
          hitTest(surface, words.number(0), words.number(1),
                  [&](const ElementArray& array, const Element&) { return array.name() != words.word(2); });
      tell(hit ? hit.array->name() + " " + std::to_string(hit.element->index) : "nothing");
    });
  }
  void tellArrays() {
    std::string names;
    for (const ElementArray& array : surface.arrays())
      names += array.name() + " " + std::to_string(array.count()) + ", ";
    tell(names, surface.elementCount(), " elements");
  }
  // At ten points a character is 120 twips wide.
  void textCommands() {
    on("wrap", [this](const Words& words) {
      const SurfaceFont font{"Arial", 10};
      const auto balanced = wrapBalanced(words[1], font, words.number(0) * 120);
      for (const std::string& line : balanced) tell("'" + line + "'");
      if (wrapText(words[1], font, words.number(0) * 120).size() != balanced.size())
        tell("more lines than needed");
    });
  }

  test::TestHost world;
  Panel panel;
  Surface surface;
  KeyGuard guard;
  int told = 0;
  bool zoomed = false;
};

const bool kRegistered = test::registerCases<HostCase>("HostCase", QUORIN_CASES);

}  // namespace
}  // namespace qrn::host

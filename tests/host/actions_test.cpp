#include "host/actions.h"

#include <gtest/gtest.h>

#include "host/controls.h"
#include "host/forms.h"
#include "support/test_host.h"

namespace qrn::host {
namespace {

TEST(Actions, TheFirstRowThatIsEnabledTakesTheKey) {
  std::string done;
  bool zoomed = false;
  const auto noting = [&](const char* what) { return [&done, what] { done = what; }; };
  const ActionTable table({
      {.name = "zoomOut",
       .caption = "Show all",
       .keys = {{key::escape, kAnyShift}},
       .perform = noting("zoomOut"),
       .enabled = [&] { return zoomed; }},
      {.name = "close",
       .caption = "Close",
       .keys = {{key::escape, kAnyShift}, {key::space, 0}},
       .perform = noting("close")},
      {.name = "list", .caption = "List", .keys = {{'L', key::altMask}}, .perform = noting("list")},
  });
  EXPECT_TRUE(table.performKey(key::escape, key::shiftMask));
  EXPECT_EQ(done, "close");
  zoomed = true;
  EXPECT_TRUE(table.performKey(key::escape, 0));
  EXPECT_EQ(done, "zoomOut");
  EXPECT_FALSE(table.performKey('L', 0));
  EXPECT_FALSE(table.performKey(key::space, key::ctrlMask));
  EXPECT_TRUE(table.perform("list"));
  EXPECT_FALSE(table.perform("nothing"));
  EXPECT_EQ(done, "list");
}

TEST(Actions, MenusAndHelpSayWhatTheTableSays) {
  bool lines = true;
  const ActionTable table({
      {.name = "menuPairLines",
       .caption = "Pair lines",
       .menus = {"menuHideShow"},
       .perform = [] {},
       .checked = [&] { return lines; }},
      {.name = "all",
       .caption = "Show all",
       .keys = {{key::multiply, key::ctrlMask}, {'A', key::ctrlMask}},
       .menus = {"menuHideShow", "other"},
       .perform = [] {},
       .enabled = [] { return false; },
       .separated = true},
      {.name = "keyOnly", .caption = "Diversity", .keys = {{key::f3, kAnyShift}}, .perform = [] {}},
      {.name = "digits",
       .caption = "Filter",
       .keys = keyRange('0', '9'),
       .performKey = [](int) {},
       .help = "Show one group"},
  });
  const std::vector<MenuRow> rows = table.menu("menuHideShow");
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_TRUE(rows[0].checkable && rows[0].checked && rows[0].enabled);
  EXPECT_EQ(rows[1].key, "Ctrl+Num *");
  EXPECT_TRUE(!rows[1].enabled && !rows[1].checkable && rows[1].separated);
  const std::vector<KeyHelp> help = table.help();
  ASSERT_EQ(help.size(), 3U);
  EXPECT_EQ(help[0].keys + ": " + help[0].caption, "Ctrl+Num *, Ctrl+A: Show all");
  EXPECT_EQ(help[2].keys + ": " + help[2].caption, "0 to 9: Show one group");
}

TEST(Actions, KeysAreReadAsTheyAreNamed) {
  for (int code = 1; code < 256; ++code)
    for (int shift = 0; shift < 8; ++shift) {
      const std::string name = keyName({code, shift});
      if (!name.empty()) {
        EXPECT_EQ(readKeys(name), (std::vector<KeyStroke>{{code, shift}})) << name;
      }
    }
  EXPECT_EQ(readKeys("B, esc,ALT+shift+l ,F3"),
            (std::vector<KeyStroke>{
                {'B', 0}, {key::escape, 0}, {'L', key::altMask | key::shiftMask}, {key::f3, 0}}));
  for (const char* wrong : {"", "B,", "Ctrl+", "Escape", "F13", "B C"})
    EXPECT_THROW(readKeys(wrong), HostError) << wrong;
}

TEST(Actions, AKeyTooSoonAfterItselfIsARepeatAndRenewsTheGuard) {
  test::TestHost world;
  KeyGuard guard;
  struct Case {
    int keyCode, milliseconds;
    bool repeated;
  };
  for (const Case& c : {Case{'R', 0, false},
                        {'R', 60, true},
                        {'R', 60, true},
                        {'R', 100, false},
                        {'K', 1, false},
                        {'R', 1, false}}) {
    world.clock.micros += 1000 * c.milliseconds;
    EXPECT_EQ(guard.repeated(c.keyCode), c.repeated) << c.milliseconds;
  }
}

TEST(Actions, APopUpDoesWhatIsChosenUnlessItsFormHasGone) {
  test::TestHost world;
  struct Graph : Form {
    Graph() : Form("graph") {}
    ActionTable actions() override {
      return ActionTable({{.name = "lines", .menus = {"menuHideShow"}, .perform = [this] { ++toggled; }}});
    }
    int toggled = 0;
  };
  world.forms.define("graph", [] { return std::make_unique<Graph>(); });
  auto& form = world.forms.as<Graph>("graph");
  for (const bool chosen : {true, false}) {
    world.expectMenu("lines", chosen);
    popUp(form, "menuHideShow");
    EXPECT_EQ(form.toggled, 1) << chosen;
  }
  world.forms.unload("graph");
  world.expectMenu("lines");
  popUp(form, "menuHideShow");
  EXPECT_EQ(form.toggled, 1);
}

// A dialog of one number and one flag that stays open while the number is 13.
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

TEST(Controls, ValuesOutOfBoundsAreRefusedAndNothingChanges) {
  test::TestHost world;
  Settings form;
  const auto given = [&](const char* name, const char* value) { return give(*form.find(name), value); };
  EXPECT_EQ(given("weight", "20"), "");
  for (const char* wrong : {"21", "0", "", "1.5", "x", "1e9"}) EXPECT_NE(given("weight", wrong), "") << wrong;
  EXPECT_EQ(given("weight", "21"), "Weight is a number from 1 to 20.");
  EXPECT_EQ(form.weight, 20);
  EXPECT_EQ(given("on", "1"), "");
  EXPECT_EQ(valueOf(*form.find("on")), "-1");
  EXPECT_NE(given("on", "true"), "");
  EXPECT_NE(given("kind", "2"), "");
  EXPECT_EQ(given("kind", "1"), "");
}

TEST(Controls, EnterTakesOverEscLeavesAndTheSafeAnswerIsTheDefaultWhereToldSo) {
  test::TestHost world;
  world.forms.define("settings", [] { return std::make_unique<Settings>(); });
  auto& form = world.forms.as<Settings>("settings");
  const auto keyOnShown = [&](int keyCode) {
    world.forms.show("settings");
    form.Form_KeyDown(keyCode, 0);
    return !world.forms.isVisible("settings");
  };
  form.weight = 13;
  EXPECT_FALSE(keyOnShown(key::enter));
  EXPECT_EQ(form.problem, "Not 13.");
  form.weight = 3;
  EXPECT_TRUE(keyOnShown(key::enter) && form.accepted);
  EXPECT_TRUE(keyOnShown(key::escape) && !form.accepted);
  form.dismissIsDefault = true;
  EXPECT_TRUE(keyOnShown(key::enter) && !form.accepted);
  world.forms.show("settings");
  EXPECT_FALSE(world.forms.unload("settings", true));
  EXPECT_FALSE(form.accepted);
}

}  // namespace
}  // namespace qrn::host

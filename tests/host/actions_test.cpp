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
  });
  const std::vector<MenuRow> rows = table.menu("menuHideShow");
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_TRUE(rows[0].checkable && rows[0].checked && rows[0].enabled);
  EXPECT_EQ(rows[1].keys, "Ctrl+Num *, Ctrl+A");
  EXPECT_TRUE(!rows[1].enabled && !rows[1].checkable && rows[1].separated);
  const std::vector<KeyHelp> help = table.help();
  ASSERT_EQ(help.size(), 2U);
  EXPECT_EQ(help[1].keys, "F3");
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

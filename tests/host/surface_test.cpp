#include "host/surface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/test_host.h"

namespace qrn::host {
namespace {

Element shape(Element::Kind kind, double left, double top, double width, double height) {
  Element made;
  made.kind = kind;
  made.left = left;
  made.top = top;
  made.width = width;
  made.height = height;
  return made;
}

std::string order(const Surface& surface) {
  std::string names;
  for (const ElementArray& array : surface.arrays()) names += array.name() + " ";
  return names;
}

TEST(Surface, PaintsByLayerThenByTheOrderOfComing) {
  Surface surface;
  surface.array("key", Layer::keys);
  surface.array("grid", Layer::grid);
  surface.array("key2", Layer::keys);
  surface.array("line", Layer::lines);
  EXPECT_EQ(order(surface), "grid line key key2 ");
  surface.array("key", Layer::menus);  // there already
  EXPECT_EQ(order(surface), "grid line key key2 ");
}

TEST(Surface, ArraysComeAndGoWhileOthersStay) {
  Surface surface;
  Element& kept = surface.add(Layer::keys, "key", 7, {});
  ElementArray& lines = surface.array("line", Layer::lines);
  lines.add(3, {}).item = 30;
  lines.add(1, {}).item = 10;
  EXPECT_EQ(lines.count(), 4);
  EXPECT_EQ(surface.find("line", 3)->item, 30);
  EXPECT_EQ(surface.find("line", 1)->item, 10);
  for (const int none : {-1, 0, 2, 4}) EXPECT_EQ(lines.find(none), nullptr) << none;
  surface.remove("line");
  surface.remove("never there");
  EXPECT_EQ(surface.find("line", 1), nullptr);
  EXPECT_EQ(&kept, surface.find("key", 7));
  EXPECT_EQ(surface.elementCount(), 1U);
}

TEST(HitTest, FindsTheVisibleElementInFront) {
  Surface surface;
  surface.add(Layer::titles, "front", 0, shape(Element::Kind::ellipse, 0, 0, 200, 100));
  surface.add(Layer::keys, "back", 0, shape(Element::Kind::rectangle, 0, 0, 400, 400));
  surface.add(Layer::keys, "back", 1, shape(Element::Kind::label, 300, 300, 100, 100));
  surface.add(Layer::menus, "line", 0, shape(Element::Kind::line, 0, 0, 400, 400));
  surface.add(Layer::menus, "hidden", 0, shape(Element::Kind::label, 0, 0, 400, 400)).visible = false;
  struct Case {
    double x, y;
    const char* array;
    int index;
  };
  for (const Case& c : {Case{100, 50, "front", 0}, Case{5, 5, "back", 0} /* beside the ellipse */,
                        Case{350, 350, "back", 1}, Case{400, 0, "back", 0}, Case{401, 0, "", 0}}) {
    const Hit hit = hitTest(surface, c.x, c.y);
    ASSERT_EQ(static_cast<bool>(hit), *c.array != '\0') << c.x;
    if (!hit)
      continue;
    EXPECT_EQ(hit.array->name(), c.array) << c.x;
    EXPECT_EQ(hit.element->index, c.index) << c.x;
  }
  const Hit below = hitTest(
      surface, 100, 50, [](const ElementArray& array, const Element&) { return array.name() != "front"; });
  EXPECT_EQ(below.array->name(), "back");
}

// At ten points a character is 120 twips wide.
TEST(WrapBalanced, EvensTheLinesWithoutAddingAny) {
  const test::TestHost world;
  struct Case {
    const char* text;
    int characters;
    std::vector<std::string> lines;
  };
  for (const Case& c : {Case{"one two three four", 14, {"one two", "three four"}},
                        Case{"one two three four", 18, {"one two three four"}},
                        Case{"a b\nlonger line that breaks", 19, {"a b", "longer line", "that breaks"}},
                        Case{"incomprehensible no", 12, {"incomprehensible", "no"}}, Case{"", 5, {""}}}) {
    EXPECT_EQ(wrapBalanced(c.text, {"Arial", 10}, c.characters * 120), c.lines) << c.text << c.characters;
    EXPECT_EQ(wrapText(c.text, {"Arial", 10}, c.characters * 120).size(), c.lines.size()) << c.text;
  }
}

}  // namespace
}  // namespace qrn::host

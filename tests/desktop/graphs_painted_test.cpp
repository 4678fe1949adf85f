// What the painter makes of both graphs and of the vote in every state, measured on the pixels: text 4.5 to
// 1, shapes 3 to 1, also for people who lack a kind of cone; nothing below the smallest projected type.
#include <QImage>
#include <algorithm>
#include <cmath>
#include <optional>
#include <set>

#include "adapters/qt/text_measure.h"
#include "charts/graph_fixture.h"
#include "charts/look/graph_look.h"
#include "charts/xy_vote_average_graph.h"
#include "desktop/pictures/states/vote_states.h"
#include "desktop/window_world.h"
#include "look/colour.h"
#include "matrixgraph/xy_vote_graph.h"
#include "render/render.h"
#include "support/memory_presentation.h"

namespace qrn {
namespace {

using host::Element;
using look::Deficiency;

constexpr QSize kScreen(1920, 1080);
constexpr double kRounding = 0.02;  // of eight-bit channels

struct Eyes {
  const char* name;
  std::optional<Deficiency> lacks;
  std::int32_t see(std::int32_t colour) const { return lacks ? look::seenWith(*lacks, colour) : colour; }
};
constexpr Eyes kEyes[] = {{"all cones", std::nullopt},
                          {"protanopia", Deficiency::protanopia},
                          {"deuteranopia", Deficiency::deuteranopia},
                          {"tritanopia", Deficiency::tritanopia}};

std::int32_t at(const QImage& image, int x, int y) {
  const QRgb pixel = image.pixel(x, y);
  return host::RGB(qRed(pixel), qGreen(pixel), qBlue(pixel));
}

int distance(std::int32_t a, std::int32_t b) {
  int most = 0;
  for (const int shift : {0, 8, 16})
    most = std::max(most, std::abs(((a >> shift) & 0xff) - ((b >> shift) & 0xff)));
  return most;
}

// The pixel in a box that comes nearest to a colour, and what else was painted in its place.
struct Measured {
  std::int32_t nearest = 0;
  int off = 256;  // of the colour itself
  std::set<std::int32_t> behind;
  double contrast(const Eyes& eyes) const {
    double worst = 21;
    for (const std::int32_t colour : behind)
      worst = std::min(worst, look::contrastRatio(eyes.see(nearest), eyes.see(colour)));
    return worst;
  }
};

class GraphsPainted : public test::GraphWorld {
 protected:
  GraphsPainted() {
    test::needApplication();
    host::host().textMeasure = &measure_;
    registerGraphForms();
    glo.oPresentation = &presentation_;
  }
  ~GraphsPainted() override { glo.oPresentation = nullptr; }
  void fill(int items) {
    addItems(items);
    for (int a = 1; a <= 4; ++a) addScale(a, "Name" + std::to_string(a), 5);
    for (int item = 0; item < items; ++item)
      for (int a = 1; a <= 4; ++a)
        vote(item, a,
             std::to_string(1 + (item * 7 + a * 3) % 5) + ";" + std::to_string(1 + (item * a) % 5) + ";");
  }
  static QRect boxOf(const Element& e) {
    const QRectF box(e.left / 15, e.top / 15, e.width / 15, e.height / 15);
    return box.toAlignedRect() & QRect(QPoint(0, 0), kScreen);
  }
  static Measured measured(const QImage& image, const QImage& behind, const QRect& box, std::int32_t colour) {
    Measured found;
    for (int y = box.top(); y <= box.bottom(); ++y)
      for (int x = box.left(); x <= box.right(); ++x) {
        found.behind.insert(at(behind, x, y));
        if (const int off = distance(at(image, x, y), colour); off < found.off)
          found.off = off, found.nearest = at(image, x, y);
      }
    return found;
  }
  static bool partlyBehindKey(const host::Surface& surface, const Element& e) {
    for (const host::ElementArray& array : surface.arrays())
      for (const Element& key : array)
        if (&key != &e && key.visible && key.isBadge() && e.kind == Element::Kind::ellipse &&
            boxOf(key).intersects(boxOf(e)))
          return true;
    return false;
  }
  static bool isData(const host::ElementArray& array, const Element& e) {
    return array.layer() == host::Layer::bars || array.name().starts_with("dot") ||
           array.name() == "averageMark" || (array.name() == "track" && e.index > 0) ||
           (array.layer() == host::Layer::keys && array.name() != "optionKey" && array.name() != "joinCode");
  }
  // Every text and shape that has something to say, against the picture without texts and data.
  void check(const host::Surface& surface, const std::string& where) {
    const QImage image = render::surfaceImage(surface, kScreen);
    host::Surface bare = surface;
    for (host::ElementArray& array : bare.arrays())
      for (Element& e : array)
        e.visible = e.visible && !isData(array, e) &&
                    ((array.layer() <= host::Layer::grid && array.name() != "verticalLine" &&
                      array.name() != "horizontalLine") ||
                     e.kind == Element::Kind::rectangle);
    const QImage behind = render::surfaceImage(bare, kScreen);  // with the grid, which texts may cross
    for (host::ElementArray& array : bare.arrays())
      for (Element& e : array) e.visible = e.visible && array.layer() < host::Layer::grid;
    const QImage ground = render::surfaceImage(bare, kScreen);
    for (const host::ElementArray& array : surface.arrays())
      for (const Element& e : array) {
        const bool data = isData(array, e);
        if (!e.visible || array.layer() == host::Layer::ghosts || boxOf(e).isEmpty())
          continue;
        const bool text = e.kind == Element::Kind::label && !e.caption.empty();
        const std::string what = where + " " + array.name() + " " + std::to_string(e.index);
        const auto standsOut = [&](std::int32_t colour, const QImage& on, double ratio, int tolerance) {
          const Measured one = measured(image, on, boxOf(e), colour);
          EXPECT_LE(one.off, tolerance) << what << " is not painted in its colour";
          for (const Eyes& eyes : kEyes)
            EXPECT_GE(one.contrast(eyes), ratio - kRounding) << what << ", " << eyes.name;
        };
        if (text && e.isBadge()) {
          QImage disc(kScreen, QImage::Format_RGB32);
          disc.fill(QColor(e.backColour & 0xff, (e.backColour >> 8) & 0xff, (e.backColour >> 16) & 0xff));
          standsOut(e.colour, disc, look::kTextContrast, 30);
        } else if (text) {
          standsOut(e.colour, behind, look::kTextContrast, 30);
        }
        if (data && (e.isBadge() || e.kind != Element::Kind::label) && !partlyBehindKey(surface, e))
          standsOut(e.backColour, ground, look::kShapeContrast, 4);
        texts_ += text ? 1 : 0;
        shapes_ += data ? 1 : 0;
        EXPECT_FALSE(text && e.font.size < look::points(look::Size::floor, surface.height) - 1e-6)
            << where << array.name();
      }
  }

  int texts_ = 0, shapes_ = 0;
  qt::QtTextMeasure measure_;
  test::MemoryPresentation presentation_{1};
};

struct Slide {
  const char* name;
  std::int32_t ground, accent;
};
constexpr Slide kSlides[] = {{"dark", 0x3a2313, -1},
                             {"light", 0xfafcfb, -1},
                             {"navy with orange", 0x5a2d12, 0x2080f0},
                             {"middle grey", 0x808080, -1},
                             {"white with pale accent", 0xffffff, 0xc0f0f0}};

TEST_F(GraphsPainted, TextAndDataStandOutOnEverySlide) {
  for (const Slide& slide : kSlides) {
    presentation_.scheme = {{1, slide.ground}, {5, slide.accent}};
    for (const int items : {4, 20, 100}) {
      const std::string where = std::string(slide.name) + " " + std::to_string(items);
      fill(items);
      drawMatrixGraph({1, 2, 3, 4, -1, -1, -1, -1}, kScreen.width(), kScreen.height());
      auto& matrix = host::host().forms->as<xyVoteGraph>("xyVoteGraph");
      matrix.view.covering = true;
      matrix.menuHideShowAllPlots();
      check(matrix.surface(), where + " matrix");
      drawAverageGraph(1, kScreen.width(), kScreen.height());
      auto& average = host::host().forms->as<xyVoteAverageGraph>("xyVoteAverageGraph");
      average.request.onOnePage = false;
      average.redraw();
      average.selectItem(1);
      check(average.surface(), where + " average");
    }
  }
  EXPECT_GT(texts_, 700);
  EXPECT_GT(shapes_, 1000);
}

TEST_F(GraphsPainted, TheVoteStandsOutInEveryState) {
  for (const bool dark : {true, false})
    for (const pictures::VoteState& state :
         pictures::voteStates(pictures::plainGround(dark), kScreen.width(), kScreen.height()))
      check(state.surface, state.name + (dark ? " dark" : " light"));
  EXPECT_GT(texts_, 500);
  EXPECT_GT(shapes_, 150);
}

// The bar or key that is picked differs from the others in lightness or hue for everybody.
TEST_F(GraphsPainted, WhatIsPickedIsToldApartWithoutACone) {
  for (const Slide& slide : kSlides) {
    const look::Theme theme = look::themeFor({slide.ground, slide.accent});
    for (const Eyes& eyes : kEyes)
      for (const std::int32_t other : {theme.data, theme.dataRest})
        EXPECT_GE(distance(eyes.see(theme.highlight), eyes.see(other)), 40) << slide.name << " " << eyes.name;
  }
}

}  // namespace
}  // namespace qrn

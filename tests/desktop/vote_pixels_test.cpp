// The vote screen as it is painted, in every state, measured in its pixels: contrast as everybody sees it,
// and the height of its letters.
#include <algorithm>
#include <map>
#include <optional>

#include "desktop/pictures/states/vote_states.h"
#include "desktop/window_world.h"
#include "look/colour.h"
#include "render/render.h"

namespace {

using namespace qrn;
using host::Element;

constexpr double kApart = 1.35;           // contrast between the longest bar and the others
constexpr double kCapitalOfFloor = 0.66;  // of the size of the type, a pixel of smoothing allowed
constexpr double kInk = 2;                // contrast of what counts as a letter
constexpr const char* kEyes[] = {"all colours", "protanopia", "deuteranopia", "tritanopia"};

std::int32_t colourAt(const QImage& image, QPoint place) {
  const QRgb pixel = image.pixel(place);
  return host::RGB(qRed(pixel), qGreen(pixel), qBlue(pixel));
}

// Contrast of two colours for those eyes.
double contrast(std::int32_t a, std::int32_t b, int eyes) {
  if (eyes > 0) {
    const auto kind = static_cast<look::Deficiency>(eyes - 1);
    a = look::seenWith(kind, a);
    b = look::seenWith(kind, b);
  }
  return look::contrastRatio(a, b);
}

class Painted {
 public:
  Painted(const pictures::VoteState& state, QSize size)
      : name(state.name), surface(state.surface), image(render::surfaceImage(state.surface, size)) {}

  QRect boxOf(const Element& e) const {
    return QRect(QPoint(pixel(e.left), pixel(e.top)), QPoint(pixel(e.right()), pixel(e.bottom()))) &
           image.rect();
  }
  std::int32_t middleOf(const Element& e) const { return colourAt(image, boxOf(e).center()); }

  const std::string name;
  const host::Surface& surface;
  const QImage image;

 private:
  static int pixel(double twips) { return static_cast<int>(twips / 15); }
};

// The ground of a text is what most of its box is; its ink what stands out most from that.
struct Ink {
  std::int32_t ground = 0, colour = 0;
  int height = 0;
};
Ink inkOf(const Painted& painted, const Element& e) {
  const QRect box = painted.boxOf(e);
  struct Of {
    int count = 0, first = 0, last = 0;  // rows
  };
  std::map<std::int32_t, Of> colours;
  for (int y = box.top(); y <= box.bottom(); ++y)
    for (int x = box.left(); x <= box.right(); ++x) {
      Of& of = colours[colourAt(painted.image, {x, y})];
      of.first = of.count++ == 0 ? y : of.first;
      of.last = y;
    }
  Ink ink;
  ink.ground = std::max_element(colours.begin(), colours.end(), [](const auto& a, const auto& b) {
                 return a.second.count < b.second.count;
               })->first;
  double most = 0;
  int first = box.bottom(), last = box.top();
  for (const auto& [colour, of] : colours) {
    const double ratio = look::contrastRatio(colour, ink.ground);
    if (ratio > most) {
      most = ratio;
      ink.colour = colour;
    }
    if (ratio > kInk) {
      first = std::min(first, of.first);
      last = std::max(last, of.last);
    }
  }
  ink.height = last - first + 1;
  return ink;
}

bool hasCapital(const std::string& text) {
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); });
}

class VotePixels : public ::testing::Test {
 protected:
  // Every state on a dark and on a light slide, small and large.
  static int forEach(const std::function<void(const Painted&)>& look) {
    int seen = 0;
    for (const QSize size : {QSize(1024, 768), QSize(1920, 1080)})
      for (const bool dark : {true, false})
        for (const pictures::VoteState& state :
             pictures::voteStates(pictures::plainGround(dark), size.width(), size.height())) {
          SCOPED_TRACE(state.name + (dark ? " dark " : " light ") + std::to_string(size.width()));
          look(Painted(state, size));
          ++seen;
        }
    return seen;
  }

  test::WindowWorld world;
};

TEST_F(VotePixels, EveryTextIsReadByEveryoneFromTheLastRow) {
  int texts = 0;
  EXPECT_GT(forEach([&](const Painted& painted) {
              const double least =
                  look::partOfHeight(look::Size::floor) * kCapitalOfFloor * painted.image.height();
              for (const host::ElementArray& array : painted.surface.arrays())
                for (const Element& e : array) {
                  if (e.kind != Element::Kind::label || e.caption.empty())
                    continue;
                  ++texts;
                  const Ink ink = inkOf(painted, e);
                  for (int eyes = 0; eyes < 4; ++eyes)
                    EXPECT_GE(contrast(ink.colour, ink.ground, eyes), look::kTextContrast)
                        << array.name() << e.index << " " << kEyes[eyes];
                  EXPECT_GE(hasCapital(e.caption) ? ink.height : least, least)
                      << array.name() << e.index << ": " << e.caption;
                }
            }),
            90);
  EXPECT_GT(texts, 1000);
}

TEST_F(VotePixels, BarsAndMarksAreSeenByEveryone) {
  int shapes = 0;
  forEach([&](const Painted& painted) {
    const std::int32_t ground = colourAt(painted.image, {painted.image.width() / 2, 2});
    std::optional<std::int32_t> most, rest;
    double longest = 0;
    for (const char* name : {"bar", "track", "averageMark"}) {
      const host::ElementArray* array = painted.surface.find(name);
      if (array == nullptr)
        continue;
      for (const Element& e : *array) {
        if (std::string(name) == "track" && e.index == 0)
          continue;  // the empty part only shows how far there is to go; the words say it
        ++shapes;
        const std::int32_t colour = painted.middleOf(e);
        for (int eyes = 0; eyes < 4; ++eyes)
          EXPECT_GE(contrast(colour, ground, eyes), look::kShapeContrast) << name << e.index << kEyes[eyes];
        if (std::string(name) == "bar" && e.width > longest) {
          longest = e.width;
          most = colour;
        }
      }
      if (std::string(name) == "bar")
        for (const Element& e : *array)
          if (e.width < longest - 1)
            rest = painted.middleOf(e);
    }
    for (int eyes = 0; most && rest && eyes < 4; ++eyes)
      EXPECT_GE(contrast(*most, *rest, eyes), kApart) << kEyes[eyes];
  });
  EXPECT_GT(shapes, 300);
}

}  // namespace

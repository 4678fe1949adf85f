#include "render/render.h"

#include <QFile>
#include <QFontDatabase>
#include <QGlyphRun>
#include <QRawFont>
#include <QTemporaryDir>
#include <QTextLayout>

#include "base/errors.h"
#include "desktop/window_world.h"
#include "render/fonts.h"

namespace {

using namespace qrn;
using host::Element;

constexpr std::int32_t kRed = host::RGB(200, 0, 0), kBlue = host::RGB(0, 0, 200), kWhite = 0xffffff,
                       kBlack = 0;

host::Surface surface(int widthPx, int heightPx, std::int32_t background = kWhite) {
  host::Surface made;
  made.width = widthPx * 15;
  made.height = heightPx * 15;
  made.background = background;
  return made;
}

// In front of what is there already.
void put(host::Surface& shown, Element element) {
  host::ElementArray& parts = shown.array("parts", host::Layer::keys);
  parts.add(parts.count(), std::move(element));
}

Element rectangle(int left, int top, int width, int height, std::int32_t fill) {
  Element element;
  element.kind = Element::Kind::rectangle;
  element.left = left * 15;
  element.top = top * 15;
  element.width = width * 15;
  element.height = height * 15;
  element.backColour = fill;
  element.bordered = false;
  return element;
}

Element label(int left, int top, int width, const std::string& caption, double size = 24) {
  Element element;
  element.left = left * 15;
  element.top = top * 15;
  element.width = width * 15;
  element.caption = caption;
  element.font.size = size;
  return element;
}

// The box of everything that is not the white ground.
QRect inkOf(const QImage& image) {
  QRect ink;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qGray(image.pixel(x, y)) < 128)
        ink |= QRect(x, y, 1, 1);
  return ink;
}

class Render : public ::testing::Test {
 protected:
  test::WindowWorld world;
};

TEST_F(Render, ShapesStandWhereTheSurfaceSays) {
  host::Surface shown = surface(200, 100);
  put(shown, rectangle(20, 10, 40, 30, kRed));
  Element round = rectangle(100, 10, 40, 40, kBlue);
  round.kind = Element::Kind::ellipse;
  put(shown, round);
  Element hidden = rectangle(150, 60, 30, 30, kRed);
  hidden.visible = false;
  put(shown, hidden);
  Element veil = rectangle(20, 60, 40, 30, kBlack);
  veil.opacity = 0.5;
  put(shown, veil);
  const QImage image = render::surfaceImage(shown, {200, 100});
  EXPECT_EQ(image.pixelColor(21, 11), QColor(200, 0, 0));
  EXPECT_EQ(image.pixelColor(58, 38), QColor(200, 0, 0));
  EXPECT_EQ(image.pixelColor(18, 11), QColor(Qt::white));
  EXPECT_EQ(image.pixelColor(62, 38), QColor(Qt::white));
  EXPECT_EQ(image.pixelColor(120, 30), QColor(0, 0, 200));
  EXPECT_EQ(image.pixelColor(102, 12), QColor(Qt::white)) << "the corner of an ellipse is empty";
  EXPECT_EQ(image.pixelColor(165, 75), QColor(Qt::white)) << "hidden elements are not drawn";
  EXPECT_NEAR(image.pixelColor(40, 75).red(), 128, 2);
}

TEST_F(Render, CornersAreRoundAndTrianglesPoint) {
  host::Surface shown = surface(200, 100);
  Element bar = rectangle(10, 10, 80, 40, kRed);
  bar.cornerRadius = 400 * 15;  // more than there is: half of the height
  put(shown, bar);
  Element mark = rectangle(120, 10, 40, 40, kBlue);
  mark.kind = Element::Kind::triangle;
  put(shown, mark);
  Element& shownMark = *shown.find("parts", 1);
  const QColor red(200, 0, 0), blue(0, 0, 200), white(Qt::white);
  QImage image = render::surfaceImage(shown, {200, 100});
  EXPECT_EQ(image.pixelColor(13, 13), white);
  EXPECT_EQ(image.pixelColor(32, 10), red) << "the straight side begins";
  EXPECT_EQ(image.pixelColor(11, 30), red);
  struct Case {
    host::Toward toward;
    QPoint tip, beside;  // the middle of the side it points to, and a corner of that side
  };
  for (const Case& c :
       {Case{host::Toward::right, {156, 30}, {157, 13}}, Case{host::Toward::down, {140, 46}, {123, 47}},
        Case{host::Toward::left, {123, 30}, {123, 13}}, Case{host::Toward::up, {140, 14}, {123, 13}}}) {
    shownMark.toward = c.toward;
    image = render::surfaceImage(shown, {200, 100});
    EXPECT_EQ(image.pixelColor(c.tip), blue) << static_cast<int>(c.toward);
    EXPECT_EQ(image.pixelColor(c.beside), white) << static_cast<int>(c.toward);
  }
}

TEST_F(Render, LaterElementsLieInFront) {
  host::Surface shown = surface(50, 50);
  put(shown, rectangle(0, 0, 50, 50, kRed));
  put(shown, rectangle(10, 10, 30, 30, kBlue));
  EXPECT_EQ(render::surfaceImage(shown, {50, 50}).pixelColor(25, 25), QColor(0, 0, 200));
}

TEST_F(Render, LinesAreSolidOrDottedAndNeverThinnerThanAPixel) {
  for (const int width : {200, 50}) {
    host::Surface shown = surface(200, 200);
    Element line;
    line.kind = Element::Kind::line;
    line.x2 = 200 * 15;
    line.y1 = line.y2 = 100 * 15;
    put(shown, line);
    const int y = width / 2;
    int dark = 0;
    const QImage image = render::surfaceImage(shown, {width, width});
    for (int x = 0; x < width; ++x)
      dark += qGray(image.pixel(x, y)) < 64 || qGray(image.pixel(x, y - 1)) < 64;
    EXPECT_EQ(dark, width) << width;
    shown.find("parts", 0)->borderStyle = 3;
    const QImage dotted = render::surfaceImage(shown, {width, width});
    dark = 0;
    for (int x = 0; x < width; ++x)
      dark += qGray(dotted.pixel(x, y)) < 64 || qGray(dotted.pixel(x, y - 1)) < 64;
    EXPECT_GT(dark, width / 5) << width;
    EXPECT_LT(dark, width * 4 / 5) << width;
  }
}

TEST_F(Render, EqualLinesLookEqualWhereverTheyStand) {
  host::Surface shown = surface(200, 200);
  for (int i = 0; i < 8; ++i) {
    Element line;
    line.kind = Element::Kind::line;
    line.x2 = 200 * 15;
    line.y1 = line.y2 = (10.3 + 20.27 * i) * 15;
    line.borderWidth = 1.4 * 15;
    put(shown, line);
  }
  const QImage image = render::surfaceImage(shown, {200, 200});
  int rows = 0;
  for (int y = 0; y < 200; ++y) rows += qGray(image.pixel(100, y)) < 64;
  EXPECT_EQ(rows, 8);
}

TEST_F(Render, LabelsAlignInTheirWidth) {
  struct Case {
    host::Align align;
    int left, right;  // where the ink of "Hi" may begin and end in a label from 50 to 250
  };
  for (const Case& one : {Case{host::Align::left, 50, 90}, Case{host::Align::right, 210, 250},
                          Case{host::Align::centre, 130, 170}}) {
    host::Surface shown = surface(300, 80);
    Element text = label(50, 20, 200, "Hi");
    text.align = one.align;
    put(shown, text);
    const QRect ink = inkOf(render::surfaceImage(shown, {300, 80}));
    EXPECT_GE(ink.left(), one.left);
    EXPECT_LE(ink.right(), one.right);
    EXPECT_GE(ink.top(), 20);
    EXPECT_LE(ink.bottom(), 20 + 37) << "a line of 24 points is 35.8 pixels high";
  }
}

TEST_F(Render, WrappedTextStaysInItsWidthAndAmpersandsStandAsWritten) {
  host::Surface shown = surface(300, 300);
  Element text = label(20, 10, 120, "one two three four");
  text.wordWrap = true;
  put(shown, text);
  const QRect ink = inkOf(render::surfaceImage(shown, {300, 300}));
  EXPECT_LE(ink.right(), 140);
  EXPECT_GT(ink.height(), 70) << "it takes several lines";

  const auto widthOf = [&](const std::string& caption) {
    host::Surface one = surface(300, 60);
    put(one, label(10, 5, 200, caption));
    return inkOf(render::surfaceImage(one, {300, 60})).width();
  };
  EXPECT_GT(widthOf("A && B"), widthOf("A & B"));
}

TEST_F(Render, AnotherSizeKeepsProportionsInTheMiddleAndTheGroundFillsAll) {
  host::Surface shown = surface(100, 100, kBlue);
  put(shown, rectangle(0, 0, 100, 100, kRed));
  const QImage image = render::surfaceImage(shown, {400, 200});
  EXPECT_EQ(image.pixelColor(50, 100), QColor(0, 0, 200));
  EXPECT_EQ(image.pixelColor(102, 2), QColor(200, 0, 0));
  EXPECT_EQ(image.pixelColor(297, 197), QColor(200, 0, 0));
  EXPECT_EQ(image.pixelColor(350, 100), QColor(0, 0, 200));
}

TEST_F(Render, GroundsAreColoursGradientsOrPictures) {
  host::Surface barred = surface(100, 100);
  Element bar = rectangle(10, 10, 20, 80, kRed);
  bar.gradient = true;
  bar.backColourEnd = kBlue;
  put(barred, bar);
  const QImage bars = render::surfaceImage(barred, {100, 100});
  EXPECT_GT(bars.pixelColor(20, 12).red(), 180);
  EXPECT_GT(bars.pixelColor(20, 88).blue(), 180);
  host::Surface shown = surface(60, 60, host::RGB(255, 0, 0));
  shown.gradient = true;
  shown.backgroundEnd = host::RGB(0, 0, 255);
  const QImage gradient = render::surfaceImage(shown, {60, 60});
  EXPECT_GT(gradient.pixelColor(30, 1).red(), 240);
  EXPECT_GT(gradient.pixelColor(30, 58).blue(), 240);

  const QTemporaryDir folder;
  QImage halves(2, 1, QImage::Format_RGB32);
  halves.setPixelColor(0, 0, Qt::green);
  halves.setPixelColor(1, 0, Qt::black);
  ASSERT_TRUE(halves.save(folder.filePath("ground.png")));
  shown.backgroundFile = folder.filePath("ground.png").toStdString();
  const QImage picture = render::surfaceImage(shown, {60, 60});
  EXPECT_EQ(picture.pixelColor(3, 3), QColor(Qt::green));
  EXPECT_EQ(picture.pixelColor(57, 57), QColor(Qt::black));
  shown.backgroundFile = folder.filePath("missing.png").toStdString();
  EXPECT_EQ(render::surfaceImage(shown, {60, 60}), gradient) << "a missing picture leaves the colours";
}

TEST_F(Render, SystemColoursArePlainOnes) {
  EXPECT_EQ(render::toColour(static_cast<std::int32_t>(0x80000005)), QColor(Qt::white));
  EXPECT_EQ(render::toColour(static_cast<std::int32_t>(0x80000008)), QColor(Qt::black));
}

TEST_F(Render, TheEndingOfTheNameTellsTheFormat) {
  const QTemporaryDir folder;
  host::Surface shown = surface(200, 100);
  put(shown, rectangle(20, 10, 40, 30, kRed));
  put(shown, label(80, 10, 100, "Quay"));
  for (const char* name : {"a.png", "b.jpg", "c.JPEG"}) {
    const QString file = folder.filePath(name);
    render::saveSurface(shown, file.toStdString(), 400, 200);
    const QImage image(file);
    ASSERT_EQ(image.size(), QSize(400, 200)) << name;
    EXPECT_NEAR(image.pixelColor(80, 50).red(), 200, 6) << name;
  }
  render::saveSurface(shown, folder.filePath("d.svg").toStdString(), 400, 200);
  QFile svg(folder.filePath("d.svg"));
  ASSERT_TRUE(svg.open(QIODevice::ReadOnly));
  EXPECT_TRUE(svg.readAll().contains("Quay")) << "text stays text";
  const std::string unknown = folder.filePath("e.gif").toStdString();
  EXPECT_THROW(render::saveSurface(shown, unknown, 400, 200), HostError);
  EXPECT_THROW(render::saveSurface(shown, "/nowhere/at/all.png", 400, 200), HostError);
  EXPECT_THROW(render::saveSurface(shown, folder.filePath("f.png").toStdString(), 0, 200), HostError);
}

TEST_F(Render, WidthsGrowEvenlyWithTheSize) {
  const double small = render::textWidth("Which proposal?", "Arial", 10, false, false);
  EXPECT_GT(small, 0);
  EXPECT_NEAR(render::textWidth("Which proposal?", "Arial", 37.5, false, false), small * 3.75, 0.01);
  EXPECT_DOUBLE_EQ(render::textWidth("Which proposal?\r\nno", "Arial", 10, false, false), small);
  EXPECT_GT(render::textWidth("Which proposal?", "Arial", 10, true, false), small);
  EXPECT_NEAR(render::lineHeight("Arial", 20), 20 * 20 * 1.117, 2);
  EXPECT_TRUE(render::fontInstalled("Arial"));
  EXPECT_FALSE(render::fontInstalled("No Such Face"));
}

TEST_F(Render, TheLabelIsAsWideAsItWasMeasured) {
  host::Surface shown = surface(600, 100);
  put(shown, label(10, 10, 500, "HHHHHHHHHHHH", 30));
  const double measured = render::textWidth("HHHHHHHHHHHH", "Arial", 30, false, false) / 15;
  EXPECT_NEAR(inkOf(render::surfaceImage(shown, {600, 100})).width(), measured, 8);
  EXPECT_NEAR(inkOf(render::surfaceImage(shown, {1800, 300})).width(), 3 * measured, 24);
}

// Two characters of a script are two shapes, neither of them that of a character without a glyph, and the
// face that we chose draws them.
TEST_F(Render, EveryScriptIsDrawn) {
  const auto picture = [](const std::string& text) {
    host::Surface shown = surface(100, 60);
    put(shown, label(10, 10, 80, text, 30));
    return render::surfaceImage(shown, {100, 60});
  };
  const auto faceOf = [](const std::string& text) {
    QTextLayout layout(render::toQt(text), render::deviceFont({"Arial", 30, false, false, false}, 1, 96));
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    return layout.glyphRuns().first().rawFont().familyName().toLower().left(13).toStdString();
  };
  const QImage box = picture("\U0010FF00"), nothing = picture("");
  struct Script {
    const char *face, *first, *second;
  };
  QStringList absent;
  for (const Script& script : {Script{"Noto Sans CJK SC", "骨", "直"}, Script{"Noto Sans Thai", "ก", "ภ"},
                               Script{"Noto Sans Devanagari", "क", "ह"}, Script{"Noto Sans Arabic", "ع", "س"},
                               Script{"Noto Sans Hebrew", "ע", "ב"}, Script{"Noto Color Emoji", "⚓", "😀"}}) {
    if (!QFontDatabase::hasFamily(script.face)) {
      absent << script.face;
      continue;
    }
    const QImage first = picture(script.first), second = picture(script.second);
    EXPECT_TRUE(first != second && first != box && second != box && first != nothing) << script.face;
    // The last letters of the Chinese face name the country's forms, which follow the machine's language.
    EXPECT_EQ(faceOf(script.first), QString(script.face).toLower().left(13).toStdString());
  }
  if (!absent.isEmpty())
    GTEST_SKIP() << "not installed: " << absent.join(", ").toStdString();
}

TEST_F(Render, TextWithoutBlanksBreaksWhereItsScriptMay) {
  const auto wrapped = [](const std::string& text) { return host::wrapText(text, {"Arial", 20}, 15 * 150); };
  const auto lines = wrapped("我们应该先做什么，为什么？请投票。Yes, first-rate 你好");
  ASSERT_GT(lines.size(), 3U);
  std::string all;
  for (const std::string& line : lines) {
    EXPECT_LE(render::textWidth(line, "Arial", 20, false, false), 15 * 150) << line;
    for (const char* mark : {"，", "？", "。"}) EXPECT_FALSE(line.starts_with(mark)) << line;
    all += line;
  }
  EXPECT_NE(all.find("first-rate"), std::string::npos) << all;
  EXPECT_EQ(wrapped("first-rate/second-rate/third-rate").size(), 1U) << "other words stay whole";
}

}  // namespace

#include "render/surface_canvas.h"

#include <QPainter>
#include <QTemporaryDir>
#include <cmath>
#include <cstring>
#include <random>

#include "desktop/window_world.h"
#include "render/render.h"
#include "render/thick_line.h"

namespace {

using namespace qrn;
using host::Element;
using host::Layer;

constexpr QSize kSize(640, 480);
constexpr Layer kLayers[] = {Layer::overlays, Layer::grid, Layer::lines, Layer::keys, Layer::titles};

// The largest difference of one channel; the toolkit rounds by where its runs of pixels begin.
int farthest(const QImage& a, const QImage& b) {
  int most = a.size() == b.size() ? 0 : 256;
  for (int y = 0; y < a.height() && most < 256; ++y)
    if (std::memcmp(a.constScanLine(y), b.constScanLine(y), static_cast<std::size_t>(4 * a.width())) != 0)
      for (int i = 0; i < 4 * a.width(); ++i)
        most = std::max(most, std::abs(a.constScanLine(y)[i] - b.constScanLine(y)[i]));
  return most;
}

class SurfaceCanvas : public ::testing::Test {
 protected:
  SurfaceCanvas() {
    shown.width = kSize.width() * 15;
    shown.height = kSize.height() * 15;
    shown.background = host::RGB(10, 30, 60);
  }
  int random(int below) { return static_cast<int>(numbers() % static_cast<unsigned>(below)); }
  void scatter(Element& e) {
    e.left = random(9600);
    e.top = random(7200);
    e.width = 150 + random(900);
    e.height = 100 + random(400);
    e.x1 = random(9600);
    e.y1 = random(7200);
    e.x2 = e.x1 + random(1500) - 700;
    e.y2 = e.y1 + random(1500) - 700;
  }
  Element any() {
    Element e;
    e.kind = static_cast<Element::Kind>(random(4));
    scatter(e);
    e.caption = e.kind == Element::Kind::label
                    ? "K" + std::to_string(random(50)) + (random(9) == 0 ? "\nsecond" : "")
                    : "";
    e.align = static_cast<host::Align>(random(3));
    e.fill = static_cast<host::Fill>(random(8));
    e.opaque = random(5) == 0;
    e.colour = random(0xffffff);
    e.backColour = random(0xffffff);
    e.opacity = random(2) == 0 ? 1 : 0.5;
    e.borderWidth = 15 + random(40);
    e.visible = random(4) != 0;
    return e;
  }
  void fill(int elements) {
    for (int i = 0; i < elements; ++i) add(random(5));
  }
  void add(int array) {
    host::ElementArray& to = shown.array("array" + std::to_string(array), kLayers[array % 5]);
    to.add(to.count(), any());
  }
  Element& pick() {
    const auto wanted = static_cast<std::size_t>(random(static_cast<int>(shown.arrays().size())));
    auto array = std::next(shown.arrays().begin(), static_cast<std::ptrdiff_t>(wanted));
    return *std::next(array->begin(), random(static_cast<int>(array->size())));
  }
  void change() {
    switch (random(8)) {
      case 0:
        pick().visible = random(2) != 0;
        break;
      case 1:
        scatter(pick());
        break;
      case 2:
        pick().caption = "N" + std::to_string(random(99));
        break;
      case 3:
        pick().colour = pick().backColour = random(0xffffff);
        pick().borderWidth += 15;
        break;
      case 4:
        add(random(9));
        break;
      case 5:
        if (const int arrays = static_cast<int>(shown.arrays().size()); arrays > 4)
          shown.remove(std::next(shown.arrays().begin(), random(arrays))->name());
        break;
      case 6:
        for (host::ElementArray& array : shown.arrays())  // a zoom and back
          for (Element& e : array) e.visible = array.layer() < Layer::lines || random(30) == 0;
        break;
      default:
        for (host::ElementArray& array : shown.arrays())
          for (Element& e : array) e.visible = true;
    }
  }

  test::WindowWorld world;
  std::mt19937 numbers{5};
  host::Surface shown;
  render::SurfaceCanvas canvas;
};

TEST_F(SurfaceCanvas, ARepaintShowsWhatAFreshPaintingShows) {
  fill(700);
  canvas.update(shown, kSize);
  QImage screen = canvas.image().copy();
  for (int step = 0; step < 100; ++step) {
    change();
    const QRegion told = canvas.update(shown, kSize);
    ASSERT_LE(farthest(canvas.image(), render::surfaceImage(shown, kSize)), 2) << step;
    QPainter window(&screen);
    for (const QRect& part : told) window.drawImage(part.topLeft(), canvas.image(), part);
    window.end();
    ASSERT_EQ(farthest(screen, canvas.image()), 0) << "step " << step << " leaves the old on the screen";
  }
}

// What has been kept aside comes back only for the look that it has.
TEST_F(SurfaceCanvas, ShowingAllAgainShowsWhatChangedMeanwhile) {
  fill(700);
  shown.add(Layer::keys, "moved", 0, any()).visible = true;
  Element& moved = *shown.find("moved", 0);
  const auto show = [&](bool all) {
    for (host::ElementArray& array : shown.arrays())
      for (Element& e : array) e.visible = all || &e == &moved;
    canvas.update(shown, kSize);
  };
  const std::int32_t first = moved.colour = moved.backColour = host::RGB(250, 250, 0);
  show(true);
  moved.colour = moved.backColour = 0;
  show(true);
  show(false);
  moved.colour = moved.backColour = first;
  show(true);
  EXPECT_LE(farthest(canvas.image(), render::surfaceImage(shown, kSize)), 2);
  show(false);
  shown.background = host::RGB(200, 0, 0);
  show(false);
  show(true);
  EXPECT_LE(farthest(canvas.image(), render::surfaceImage(shown, kSize)), 2);
}

TEST_F(SurfaceCanvas, ALabelThatMovesTouchesItsTwoPlacesOnly) {
  fill(700);
  Element label;
  label.caption = "B2";
  label.width = label.height = 300;
  shown.add(Layer::keys, "key", 1, label);
  canvas.update(shown, kSize);
  EXPECT_TRUE(canvas.update(shown, kSize).isEmpty()) << "nothing has changed";
  shown.find("key", 1)->left = 6000;
  int area = 0;
  for (const QRect& part : canvas.update(shown, kSize)) area += part.width() * part.height();
  EXPECT_GT(area, 100);
  EXPECT_LT(area, 4000);
}

TEST_F(SurfaceCanvas, ANewGroundOrSizePaintsAll) {
  const QTemporaryDir folder;
  const QString file = folder.filePath("ground.png");
  const auto save = [&](Qt::GlobalColor colour) {
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(colour);
    ASSERT_TRUE(picture.save(file));
  };
  fill(20);
  canvas.update(shown, kSize);
  save(Qt::green);
  shown.backgroundFile = file.toStdString();
  const auto paintsAll = [&](QSize size) {
    EXPECT_EQ(canvas.update(shown, size), QRegion(QRect(QPoint(0, 0), size)));
    EXPECT_EQ(canvas.image(), render::surfaceImage(shown, size));
  };
  paintsAll(kSize);
  save(Qt::red);  // another picture of the same name
  QFile changed(file);
  ASSERT_TRUE(changed.open(QIODevice::Append));
  changed.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime);
  changed.close();
  paintsAll(kSize);
  paintsAll({320, 300});
}

// Close to the toolkit's own smooth lines in every direction, and nothing outside of the clip.
TEST_F(SurfaceCanvas, SlantingLinesAreSmoothAndStayInTheClip) {
  for (int degrees = 3; degrees < 360; degrees += 17) {
    QImage own(200, 200, QImage::Format_RGB32), plain;
    own.fill(Qt::black);
    plain = own.copy();
    const double angle = degrees * M_PI / 180;
    const QPointF from(100.3, 99.6), to = from + 140 * QPointF(std::cos(angle), std::sin(angle));
    const render::Pixels pixels{reinterpret_cast<QRgb*>(own.bits()), own.bytesPerLine() / 4, own.rect()};
    const QRect clip(20, 30, 150, 140);
    render::drawThickLine(pixels, clip, from, to, 2.6, 0xffffffff);
    QPainter painter(&plain);
    painter.setClipRect(clip);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, 2.6, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(from, to);
    painter.end();
    double ownInk = 0, plainInk = 0, apart = 0;
    for (int y = 0; y < 200; ++y)
      for (int x = 0; x < 200; ++x) {
        const int a = qRed(own.pixel(x, y)), b = qRed(plain.pixel(x, y));
        ownInk += a;
        plainInk += b;
        apart += std::abs(a - b);
      }
    EXPECT_NEAR(ownInk / plainInk, 1, 0.03) << degrees;
    EXPECT_LT(apart / plainInk, 0.12) << degrees;
  }
}

}  // namespace

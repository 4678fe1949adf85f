#include "render/thick_line.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace qrn::render {

namespace {

constexpr double kOne = 65536;  // fixed point
constexpr int kWhole = 256;     // of a pixel's coverage

QRgb blended(QRgb under, QRgb over, int coverage) {
  const auto share = static_cast<QRgb>(coverage);
  const QRgb rb = under & 0xff00ff, g = under & 0x00ff00;
  const QRgb newRb = (rb + ((((over & 0xff00ff) - rb) * share) >> 8)) & 0xff00ff;
  const QRgb newG = (g + ((((over & 0x00ff00) - g) * share) >> 8)) & 0x00ff00;
  return 0xff000000 | newRb | newG;
}

// The line as seen along its longer side: `along` steps with it, `across` stands upright on that.
struct Way {
  double a1, c1, a2, c2;  // along and across at both ends, a1 < a2
  int aFirst, aLast, cFirst, cLast;
  qsizetype aStep, cStep;
};

Way wayOf(const Pixels& pixels, const QRect& clip, QPointF from, QPointF to) {
  Way way{from.x(),     from.y(),   to.x(),        to.y(), clip.left(),
          clip.right(), clip.top(), clip.bottom(), 1,      pixels.stride};
  if (std::fabs(to.y() - from.y()) > std::fabs(to.x() - from.x())) {
    std::swap(way.a1, way.c1);
    std::swap(way.a2, way.c2);
    std::swap(way.aFirst, way.cFirst);
    std::swap(way.aLast, way.cLast);
    std::swap(way.aStep, way.cStep);
  }
  if (way.a1 > way.a2) {
    std::swap(way.a1, way.a2);
    std::swap(way.c1, way.c2);
  }
  return way;
}

// One step of the way: the pixels from `begin` to `end` across, in fixed point.
void drawStep(QRgb* at, const Way& way, std::int64_t begin, std::int64_t end, QRgb colour) {
  const auto first = static_cast<int>(begin >> 16), last = static_cast<int>(end >> 16);
  const auto put = [&](int c, int coverage) {
    if (c >= way.cFirst && c <= way.cLast)
      at[c * way.cStep] = blended(at[c * way.cStep], colour, coverage);
  };
  if (first == last) {
    put(first, static_cast<int>((end - begin) >> 8));
    return;
  }
  put(first, kWhole - static_cast<int>((begin >> 8) & 255));
  const int wholeLast = std::min(last - 1, way.cLast);
  for (int c = std::max(first + 1, way.cFirst); c <= wholeLast; ++c) at[c * way.cStep] = colour;
  put(last, static_cast<int>((end >> 8) & 255));
}

}  // namespace

void drawThickLine(const Pixels& pixels, const QRect& clip, QPointF from, QPointF to, double width,
                   QRgb colour) {
  const Way way = wayOf(pixels, clip & pixels.all, from, to);
  const double length = way.a2 - way.a1;
  if (length <= 0)
    return;
  const double slope = (way.c2 - way.c1) / length;
  const double thick = std::max(1.0, width) * std::sqrt(1 + slope * slope);
  const int first = std::max(way.aFirst, static_cast<int>(std::ceil(way.a1 - 0.5)));
  const int last = std::min(way.aLast, static_cast<int>(std::floor(way.a2 - 0.5)));
  const double begin = way.c1 + (first + 0.5 - way.a1) * slope - thick / 2;
  auto edge = static_cast<std::int64_t>(std::floor(begin * kOne));
  const auto step = static_cast<std::int64_t>(slope * kOne), span = static_cast<std::int64_t>(thick * kOne);
  QRgb* at = pixels.bits + first * way.aStep;
  for (int a = first; a <= last; ++a, edge += step, at += way.aStep)
    drawStep(at, way, edge, edge + span, colour);
}

}  // namespace qrn::render

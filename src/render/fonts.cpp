#include "render/fonts.h"

#include <QFontDatabase>
#include <QStringList>
#include <map>
#include <tuple>

namespace qrn::render {

namespace {

// Families that fontconfig answers with one of equal widths.
bool hasEqualInWidth(const QString& name) {
  static const QStringList known{"arial", "helvetica", "times new roman", "times", "courier new", "courier"};
  return known.contains(name.toLower());
}

double perMetricsPixel(double size) {
  return size * kTwipsPerPoint / kMetricsPixels;
}

double widestLine(const QString& text, const QFontMetricsF& metrics) {
  double widest = 0;
  qsizetype start = 0;
  for (qsizetype at = 0; at <= text.size(); ++at) {
    if (at < text.size() && text[at] != '\n' && text[at] != '\r')
      continue;
    if (at > start)
      widest = std::max(widest, metrics.horizontalAdvance(text.mid(start, at - start)));
    start = at + 1;
  }
  return widest;
}

}  // namespace

QString toQt(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string fromQt(const QString& text) {
  return text.toStdString();
}

QFont deviceFont(const host::SurfaceFont& font, int dotsPerInch) {
  QFont result(toQt(font.name));
  const double pixels = font.size * kTwipsPerPoint / kTwipsPerPixel;
  result.setPointSizeF(std::max(0.1, pixels * 72.0 / dotsPerInch));
  result.setBold(font.bold);
  result.setItalic(font.italic);
  result.setUnderline(font.underline);
  result.setHintingPreference(QFont::PreferNoHinting);
  result.setStyleStrategy(QFont::PreferAntialias);
  return result;
}

const QFontMetricsF& faceMetrics(const std::string& name, bool bold, bool italic) {
  using Face = std::tuple<std::string, bool, bool>;
  static std::map<Face, QFontMetricsF> known;
  const Face face{name, bold, italic};
  const auto found = known.find(face);
  if (found != known.end())
    return found->second;
  QFont font(toQt(name));
  font.setPixelSize(kMetricsPixels);
  font.setBold(bold);
  font.setItalic(italic);
  font.setHintingPreference(QFont::PreferNoHinting);
  return known.emplace(face, QFontMetricsF(font)).first->second;
}

double textWidth(std::string_view text, const std::string& name, double size, bool bold, bool italic) {
  return widestLine(toQt(text), faceMetrics(name, bold, italic)) * perMetricsPixel(size);
}

double lineHeight(const std::string& name, double size) {
  return faceMetrics(name, false, false).height() * perMetricsPixel(size);
}

double ascent(const std::string& name, double size, bool bold, bool italic) {
  return faceMetrics(name, bold, italic).ascent() * perMetricsPixel(size);
}

bool fontInstalled(const std::string& name) {
  const QString family = toQt(name);
  return QFontDatabase::hasFamily(family) || hasEqualInWidth(family);
}

}  // namespace qrn::render

#include "render/fonts.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QLocale>
#include <QStringList>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <deque>
#include <set>
#include <unordered_map>

namespace qrn::render {

namespace {

constexpr int kMetricsPixels = 200;

// Families that fontconfig answers with one of equal widths.
bool hasEqualInWidth(const QString& name) {
  static const QStringList known{"arial", "helvetica", "times new roman", "times", "courier new", "courier"};
  return known.contains(name.toLower());
}

// The forms of Chinese characters differ between countries; without a hint the simplified ones are taken.
QString chineseForms() {
  const QLocale locale = QLocale::system();
  switch (locale.language()) {
    case QLocale::Japanese:
      return "Noto Sans CJK JP";
    case QLocale::Korean:
      return "Noto Sans CJK KR";
    default:
      return locale.script() == QLocale::TraditionalChineseScript ? "Noto Sans CJK TC" : "Noto Sans CJK SC";
  }
}

// Emoji first: other families draw some of them as outlines, and take composed ones apart.
const QStringList& fallbackFamilies() {
  static const QStringList installed = [] {
    QStringList families{"Noto Color Emoji", chineseForms()};
    for (const char* script :
         {"Thai", "Devanagari", "Arabic", "Hebrew", "Bengali", "Gujarati", "Gurmukhi", "Kannada", "Malayalam",
          "Sinhala", "Tamil", "Telugu", "Khmer", "Lao", "Myanmar", "Ethiopic", "Georgian", "Armenian"})
      families << QString("Noto Sans %1").arg(script);
    families.removeIf([](const QString& family) { return !QFontDatabase::hasFamily(family); });
    return families;
  }();
  return installed;
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

bool setsNoBlanks(QChar c) {
  switch (c.script()) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Bopomofo:
    case QChar::Script_Thai:
    case QChar::Script_Lao:
    case QChar::Script_Khmer:
    case QChar::Script_Myanmar:
      return true;
    default:
      return c.unicode() >= 0x3000 && c.unicode() <= 0x303F;  // their punctuation
  }
}

// One face at kMetricsPixels, with the widths of what has been measured: graphs measure the same captions at
// every draw.
struct Face {
  std::string name;
  bool bold, italic;
  QFontMetricsF metrics;
  std::unordered_map<std::string, double> widths;

  double width(std::string_view text) {
    key.assign(text);
    const auto known = widths.find(key);
    if (known != widths.end())
      return known->second;
    if (widths.size() > kMostWidths)
      widths.clear();
    return widths[key] = widestLine(toQt(text), metrics);
  }

  static constexpr std::size_t kMostWidths = 20000;
  std::string key;
};

Face& faceOf(const std::string& name, bool bold, bool italic) {
  static std::deque<Face> known;
  for (Face& face : known)
    if (face.bold == bold && face.italic == italic && face.name == name)
      return face;
  addFallbacks(toQt(name));
  QFont font(toQt(name));
  font.setPixelSize(kMetricsPixels);
  font.setBold(bold);
  font.setItalic(italic);
  font.setHintingPreference(QFont::PreferNoHinting);
  return known.emplace_back(Face{name, bold, italic, QFontMetricsF(font), {}, {}});
}

}  // namespace

QString toQt(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string fromQt(const QString& text) {
  return text.toStdString();
}

// By substitution, which keeps the font's own name: a picture in SVG names the face that the exercise names.
void addFallbacks(const QString& name) {
  static std::set<QString> known;
  if (!known.insert(name).second)
    return;
  const QString drawn = QFontInfo(QFont(name)).family();  // what stands in where the face itself is missing
  QFont::insertSubstitutions(name, QStringList(drawn) + fallbackFamilies());
}

QFont deviceFont(const host::SurfaceFont& font, double scale, int dotsPerInch) {
  addFallbacks(toQt(font.name));
  QFont result(toQt(font.name));
  const double pixels = font.size * kTwipsPerPoint * scale;
  result.setPointSizeF(std::max(0.1, pixels * 72.0 / dotsPerInch));
  result.setBold(font.bold);
  result.setItalic(font.italic);
  result.setUnderline(font.underline);
  result.setHintingPreference(QFont::PreferNoHinting);
  result.setStyleStrategy(QFont::PreferAntialias);
  return result;
}

double textWidth(std::string_view text, const std::string& name, double size, bool bold, bool italic) {
  return faceOf(name, bold, italic).width(text) * perMetricsPixel(size);
}

double lineHeight(const std::string& name, double size) {
  return faceOf(name, false, false).metrics.height() * perMetricsPixel(size);
}

double ascent(const std::string& name, double size, bool bold, bool italic) {
  return faceOf(name, bold, italic).metrics.ascent() * perMetricsPixel(size);
}

double capHeight(const std::string& name, double size, bool bold, bool italic) {
  return faceOf(name, bold, italic).metrics.capHeight() * perMetricsPixel(size);
}

bool fontInstalled(const std::string& name) {
  const QString family = toQt(name);
  return QFontDatabase::hasFamily(family) || hasEqualInWidth(family);
}

std::vector<std::size_t> breaksInside(std::string_view word) {
  std::vector<std::size_t> breaks;
  const QString text = toQt(word);
  if (std::none_of(text.begin(), text.end(), setsNoBlanks))
    return breaks;
  QTextBoundaryFinder finder(QTextBoundaryFinder::Line, text);
  std::size_t bytes = 0;
  for (qsizetype from = 0, to = finder.toNextBoundary(); to > 0 && to < text.size();
       to = finder.toNextBoundary()) {
    bytes += static_cast<std::size_t>(text.mid(from, to - from).toUtf8().size());
    from = to;
    if (setsNoBlanks(text[to - 1]) || setsNoBlanks(text[to]))
      breaks.push_back(bytes);
  }
  return breaks;
}

}  // namespace qrn::render

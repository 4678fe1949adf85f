#include "desktop/keyed_rows.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <numeric>

#include "charts/look/graph_look.h"
#include "charts/vote_screen/set_text.h"
#include "render/colours.h"
#include "render/fonts.h"

namespace qrn::desktop {

namespace {

constexpr double kRow = 1.65;                    // of the ascent: a row of one line
constexpr double kDisc = 0.84, kKeyType = 0.56;  // of such a row
constexpr double kWidestKey = 0.4;               // of the list
constexpr int kMostLines = 3, kLinesOfMany = 2;
constexpr int kEdge = 2;  // pixels beside a row; half of it above and below

}  // namespace

void KeyedRows::set(const std::vector<host::PanelRow>& rows, const QFont& font, Room room) {
  std::vector<std::string> said;
  said.reserve(rows.size());
  for (const host::PanelRow& row : rows) said.push_back(row.cells.empty() ? "" : row.cells.front());
  if (said == said_ && room == room_ && font.pixelSize() == font_.pixelSize() &&
      font.family() == font_.family())
    return;
  said_ = std::move(said);
  room_ = room;
  font_ = keyFont_ = font;
  font_.setHintingPreference(QFont::PreferNoHinting);  // as texts are measured
  const QFontMetrics metrics(font_);
  gap_ = 0;
  row_ = static_cast<int>(kRow * metrics.ascent());
  line_ = metrics.lineSpacing();
  keyFont_.setBold(true);
  keyFont_.setPixelSize(std::max(1, static_cast<int>(row_ * kKeyType)));
  split();
  key_ = std::min(key_, room.width * kWidestKey);
  if (static_cast<int>(rows.size()) * row_ <= room.height)
    for (const int most : {kMostLines, kLinesOfMany}) {
      setTexts(room.width, most);
      if (const int left = room.height - height(); left >= 0) {
        gap_ = std::min(row_ / 3, left / std::max(1, static_cast<int>(rows.size())));
        return;
      }
    }
  setTexts(room.width - room.bar, kLinesOfMany);
}

void KeyedRows::split() {
  const QFontMetrics metrics(keyFont_);
  const double disc = row_ * kDisc;
  rows_.clear();
  key_ = disc * 1.5;  // the column is no narrower
  for (const std::string& one : said_) {
    const QString line = render::toQt(one).simplified();
    const auto colon = line.indexOf(':');
    Row& made = rows_.emplace_back();
    made.key = line.left(std::max<qsizetype>(0, colon));
    made.text = line.mid(colon + 1).trimmed();
    made.keyWidth = std::max(disc, metrics.horizontalAdvance(made.key) + disc / 2);
    key_ = std::max(key_, made.keyWidth);
  }
}

void KeyedRows::setTexts(int width, int most) {
  host::SurfaceFont type;
  type.name = render::fromQt(font_.family());
  type.size = font_.pixelSize() * render::kTwipsPerPixel / render::kTwipsPerPoint;
  const double room = (width - 2 * kEdge - textLeft() - row_ / 5.0) * render::kTwipsPerPixel;
  for (Row& row : rows_) {
    const SetText text =
        setText(render::fromQt(row.text), type, {type.size}, room, most * qrn::lineHeight(type));
    row.lines = render::toQt(text.caption).split('\n');
    row.rightToLeft = text.rightToLeft;
  }
}

int KeyedRows::heightOf(const QStringList& lines) const {
  return row_ + (static_cast<int>(lines.size()) - 1) * line_ + gap_;
}

int KeyedRows::height() const {
  return std::accumulate(rows_.begin(), rows_.end(), 0,
                         [&](int sum, const Row& row) { return sum + heightOf(row.lines); });
}

const QStringList& KeyedRows::lines(int row) const {
  static const QStringList none{QString()};
  return row < 0 || row >= static_cast<int>(rows_.size()) ? none : rows_[static_cast<std::size_t>(row)].lines;
}

double KeyedRows::textLeft() const {
  return row_ * 0.4 + key_;
}

QSize KeyedRows::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const {
  return {0, heightOf(lines(index.row()))};
}

void KeyedRows::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  if (index.row() >= static_cast<int>(rows_.size()))
    return;
  const Row& row = rows_[static_cast<std::size_t>(index.row())];
  const bool chosen = option.state.testFlag(QStyle::State_Selected);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(Qt::NoPen);
  const QRectF box = QRectF(option.rect).adjusted(kEdge, kEdge / 2, -kEdge, -kEdge / 2 - gap_);
  if (chosen) {
    painter->setBrush(render::toColour(theme_.data));
    painter->drawRoundedRect(box, row_ / 4.0, row_ / 4.0);
  }
  const QRectF first(box.left(), box.top(), box.width(), row_ - kEdge);
  paintKey(*painter, first, row, chosen, index.data(Qt::FontRole).isValid());
  painter->setFont(font_);
  painter->setPen(render::toColour(chosen ? theme_.onData : theme_.text));
  QRectF text(first.left() + textLeft(), first.center().y() - line_ / 2.0,
              first.width() - textLeft() - row_ / 5.0, line_);
  for (const QString& line : row.lines) {
    painter->drawText(
        text, (row.rightToLeft ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter | Qt::TextDontClip, line);
    text.translate(0, line_);
  }
  painter->restore();
}

// Beside the first line, in the middle of the column of keys.
void KeyedRows::paintKey(QPainter& painter, const QRectF& line, const Row& row, bool chosen,
                         bool marked) const {
  if (row.key.isEmpty())
    return;
  painter.setFont(keyFont_);
  const std::int32_t disc = chosen ? theme_.onData : marked ? theme_.highlight : theme_.data;
  const double height = row_ * kDisc, width = std::min(row.keyWidth, key_);
  const QRectF box(line.left() + row_ * 0.2 + (key_ - width) / 2, line.center().y() - height / 2, width,
                   height);
  painter.setBrush(render::toColour(disc));
  painter.drawRoundedRect(box, height / 2, height / 2);
  painter.setPen(render::toColour(look::inkOn(disc)));
  painter.drawText(box, Qt::AlignCenter, row.key);
}

}  // namespace qrn::desktop

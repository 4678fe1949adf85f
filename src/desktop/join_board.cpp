#include "desktop/join_board.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "desktop/style.h"
#include "render/fonts.h"
#include "render/qr_code.h"

namespace qrn::desktop {

namespace {

// In the board's unit: 1.25 % of the height, less on a board that is not as wide as a screen.
constexpr double kCode = 56, kGap = 6, kTitle = 8, kBody = 3.4, kAddress = 6, kCount = 6, kCounted = 4,
                 kTold = 4.2, kMargin = 4, kTextWidth = 69;

QString keypads(long count) {
  return count == 1 ? QString("1 keypad votes by itself.")
                    : QString("%1 keypads vote by themselves.").arg(count);
}

// Writes from the top down; each block stands beneath the one before.
class Column {
 public:
  Column(QPainter& painter, const QRectF& place, double unit)
      : painter_(painter), place_(place), unit_(unit) {}

  void gap(double units) { place_.setTop(place_.top() + units * unit_); }
  void block(const QString& text, double units, const QColor& ink, bool bold) {
    if (text.isEmpty())
      return;
    painter_.setFont(font(text, units, bold));
    painter_.setPen(ink);
    QRectF taken;
    painter_.drawText(place_, static_cast<int>(Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap), text,
                      &taken);
    place_.setTop(taken.bottom());
  }
  // One line whose first part stands out.
  void line(const QString& first, const QString& rest) {
    painter_.setFont(font(first, kCount, true));
    const double ascent = QFontMetricsF(painter_.font()).ascent();
    const double width = QFontMetricsF(painter_.font()).horizontalAdvance(first + " ");
    painter_.setPen(look::boardWell);
    painter_.drawText(QPointF(place_.left(), place_.top() + ascent), first);
    const double height = QFontMetricsF(painter_.font()).height();
    painter_.setFont(font(rest, kCounted, false));
    painter_.setPen(look::boardInk);
    painter_.drawText(QPointF(place_.left() + width, place_.top() + ascent), rest);
    place_.setTop(place_.top() + height);
  }
  double top() const { return place_.top(); }

 private:
  // Shrinks until the longest word has room.
  QFont font(const QString& text, double units, bool bold) const {
    QFont made("Arial");
    made.setBold(bold);
    made.setPixelSize(std::max(1, static_cast<int>(units * unit_)));
    const QStringList words = text.split(' ');
    const auto widest = [&] {
      double width = 0;
      for (const QString& word : words) width = std::max(width, QFontMetricsF(made).horizontalAdvance(word));
      return width;
    };
    while (made.pixelSize() > 8 && widest() > place_.width()) made.setPixelSize(made.pixelSize() - 1);
    return made;
  }

  QPainter& painter_;
  QRectF place_;
  double unit_;
};

// Draws the texts; returns where they end.
double writeTexts(QPainter& painter, const JoinText& text, const QRectF& place, double unit) {
  const bool open = !text.address.isEmpty();
  Column column(painter, place, unit);
  column.block(text.title, kTitle, look::boardInk, true);
  column.gap(3);
  for (const QString& line : text.lines) {
    column.block(line, open ? kBody : kTold, look::boardQuiet, false);
    column.gap(1);
  }
  if (open) {
    column.gap(1);
    column.block(text.address, kAddress, look::boardMark, true);
    column.gap(3);
    column.line(text.count, text.counted);
  }
  column.block(text.remark, kBody, look::boardQuiet, false);
  return column.top();
}

// The height that the texts take in a column of that width.
double heightOf(const JoinText& text, double width, double unit) {
  QImage nowhere(1, 1, QImage::Format_RGB32);
  QPainter painter(&nowhere);
  return writeTexts(painter, text, QRectF(0, 0, width, 1e6), unit);
}

void drawCode(QPainter& painter, const QRectF& place, const QString& address, double unit) {
  QPainterPath card;
  card.addRoundedRect(place, 3 * unit, 3 * unit);
  painter.fillPath(card, Qt::white);
  const double ratio = painter.device()->devicePixelRatioF();
  const QImage code =
      render::qrCode("http://" + address + "/", static_cast<int>((place.width() - 2 * unit) * ratio));
  const QSizeF size = QSizeF(code.size()) / ratio;
  painter.drawImage(QRectF(place.center() - QPointF(size.width() / 2, size.height() / 2), size), code);
}

}  // namespace

JoinText joinText(const host::RoomState& room) {
  JoinText text;
  if (!room.takesPhones) {
    text.title = "This is a rehearsal";
    text.lines = {keypads(room.rehearse) + " Phones cannot join.",
                  "Start quorin matrix without --rehearse to vote with phones."};
    return text;
  }
  if (room.address.empty()) {
    text.title = "Phones cannot reach this computer";
    text.lines = {"Connect it to the Wi-Fi that the phones are in, or switch on its own hotspot.",
                  "The code then appears here by itself."};
    return text;
  }
  text.title = "Join the vote";
  text.lines = {"1.  Be in the same Wi-Fi as this computer.", "2.  Scan the code, or type the address:"};
  text.address = render::toQt(room.address);
  text.count = QString::number(room.phones);
  text.counted = room.phones == 1 ? "phone has joined" : "phones have joined";
  text.remark = room.rehearse > 0 ? keypads(room.rehearse) : QString();
  return text;
}

JoinText noControllerText(const QString& why) {
  JoinText text;
  text.title = "No controller is running";
  text.lines = {why, "Phones and keypads cannot vote until it runs. The keyboard can stand in for them."};
  return text;
}

JoinBoard::JoinBoard(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void JoinBoard::setText(const JoinText& text) {
  text_ = text;
  setAccessibleName(text.title);
  setAccessibleDescription(
      (text.lines + QStringList{text.address, text.count + " " + text.counted, text.remark})
          .join("\n")
          .trimmed());
  update();
}

void JoinBoard::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), look::board);
  const bool open = !text_.address.isEmpty();
  const bool upright = height() > width();
  const double unit =
      upright ? std::min(height() * 0.0072, width() * 0.0105) : std::min(height() * 0.0125, width() * 0.0068);
  const QRectF inside =
      QRectF(rect()).adjusted(kMargin * unit, kMargin * unit, -kMargin * unit, -kMargin * unit);
  const double side = open ? kCode * unit : 0;
  const double room = upright || !open ? inside.width() : inside.width() - side - kGap * unit;
  const double width = std::min(room, (open ? kTextWidth : 110) * unit);
  const double textHeight = heightOf(text_, width, unit);
  if (upright) {
    const double top = inside.top() + std::max(0.0, inside.height() - side - kGap * unit - textHeight) / 2;
    const QRectF code(inside.center().x() - side / 2, top, side, side);
    if (open)
      drawCode(painter, code, text_.address, unit);
    writeTexts(painter, text_,
               QRectF(inside.center().x() - width / 2, code.bottom() + kGap * unit, width, 1e6), unit);
    return;
  }
  const double whole = width + (open ? side + kGap * unit : 0);
  double left = inside.center().x() - whole / 2;
  if (open) {
    drawCode(painter, QRectF(left, inside.center().y() - side / 2, side, side), text_.address, unit);
    left += side + kGap * unit;
  }
  writeTexts(painter, text_, QRectF(left, inside.center().y() - textHeight / 2, width, 1e6), unit);
}

}  // namespace qrn::desktop

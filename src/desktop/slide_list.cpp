#include "desktop/slide_list.h"

#include <QPainter>
#include <QTextLayout>

#include "core/vote_record_text.h"
#include "desktop/style.h"
#include "host/names.h"
#include "render/fonts.h"

namespace qrn::desktop {

namespace {

constexpr int kRowHeight = 13 * look::grid;
constexpr int kThumbWidth = 18 * look::grid;
constexpr int kNumberWidth = 6 * look::grid;
constexpr int kNarrowRow = 36 * look::grid;  // below this a row has no thumbnail

QString counted(int count, const char* one, const char* many) {
  return QString::number(count) + " " + (count == 1 ? one : many);
}

QFont type(int pixels, bool bold = false) {
  QFont font("Arial");
  font.setPixelSize(pixels);
  font.setBold(bold);
  return font;
}

QString toolTip(const SlideRow& row) {
  QString text = QString("Slide %1: %2").arg(row.slide).arg(row.title);
  if (!row.damage.isEmpty())
    text += "\n" + row.damage;
  if (row.hidden)
    text += "\nHidden: the slide show leaves it out.";
  if (row.exercise)
    text += "\nExercise: " + factsLine(*row.exercise) + "\nEnter runs it.";
  return text;
}

void paintCard(QPainter& painter, const QRect& row, QStyle::State state) {
  const bool selected = state & QStyle::State_Selected;
  const bool focused = selected && (state & QStyle::State_HasFocus);
  const QRectF card = QRectF(row).adjusted(4.5, 3.5, -4.5, -3.5);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(selected ? look::accentSoft : look::card);
  painter.setPen(QPen(selected ? look::accent : look::line, focused ? 3 : 1));
  painter.drawRoundedRect(card, 6, 6);
}

void paintThumbnail(QPainter& painter, const QRect& place, const QImage& image, bool hidden) {
  const QSize size = image.size().scaled(place.size(), Qt::KeepAspectRatio);
  const QRect box(place.left(), place.top() + (place.height() - size.height()) / 2, size.width(),
                  size.height());
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(box, image);
  if (hidden)
    painter.fillRect(box, QColor(243, 245, 248, 170));
  painter.setBrush(Qt::NoBrush);
  painter.setPen(look::line);
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.drawRect(box.adjusted(0, 0, -1, -1));
}

// Up to two lines, the second cut with "…". Returns the height taken.
int paintTitle(QPainter& painter, const QRect& place, const QString& title) {
  painter.setPen(look::ink);
  painter.setFont(type(look::bodyType, true));
  const QFontMetrics metrics = painter.fontMetrics();
  QTextLayout layout(title, painter.font());
  layout.beginLayout();
  QTextLine first = layout.createLine();
  first.setLineWidth(place.width());
  layout.endLayout();
  const int cut = first.textLength();
  painter.drawText(place.left(), place.top() + metrics.ascent(), title.left(cut).trimmed());
  if (cut >= title.size())
    return metrics.height();
  painter.drawText(place.left(), place.top() + metrics.height() + metrics.ascent(),
                   metrics.elidedText(title.mid(cut).trimmed(), Qt::ElideRight, place.width()));
  return 2 * metrics.height();
}

// A label with its own ground. Returns its width.
int paintBadge(QPainter& painter, QPoint at, const QString& text, const QColor& ink, const QColor& ground) {
  painter.setFont(type(12, true));
  const QFontMetrics metrics = painter.fontMetrics();
  const QRect box(at, QSize(metrics.horizontalAdvance(text) + 12, metrics.height() + 4));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(ink, 1));
  painter.setBrush(ground);
  painter.drawRoundedRect(QRectF(box).adjusted(.5, .5, -.5, -.5), 4, 4);
  painter.drawText(box, Qt::AlignCenter, text);
  return box.width();
}

void paintQuietLine(QPainter& painter, const QRect& place, const QString& text) {
  painter.setPen(look::quietInk);
  painter.setFont(type(13));
  painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
                   painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
}

// "" when the contents are not known.
QString contentsLine(const ExerciseFacts& facts) {
  if (facts.items == 0 && facts.assessments == 0)
    return {};
  return counted(facts.items, "item", "items") + " · " +
         counted(facts.assessments, "assessment", "assessments");
}

QString votesLine(const ExerciseFacts& facts) {
  return facts.due > 0 ? QString("%1 of %2 voted").arg(facts.voted).arg(facts.due)
                       : counted(facts.votes, "vote", "votes");
}

}  // namespace

QString factsLine(const ExerciseFacts& facts) {
  const QString contents = contentsLine(facts);
  const QString votes = votesLine(facts);
  return contents.isEmpty() ? votes : contents + " · " + votes;
}

ExerciseFacts factsFromTags(host::Slide& slide) {
  ExerciseFacts facts;
  VoteRecordText records;
  records.assign(slide.tags().Item(tagName::votes));
  facts.votes = static_cast<int>(records.recordCount());
  return facts;
}

SlideListModel::SlideListModel(SlidePictures& pictures, ExerciseFactsOf factsOf)
    : pictures_(pictures), factsOf_(std::move(factsOf)) {}

void SlideListModel::setDeck(host::Presentation* deck) {
  beginResetModel();
  deck_ = deck;
  rows_.assign(deck ? static_cast<std::size_t>(deck->SlideCount()) : 0, std::nullopt);
  endResetModel();
}

void SlideListModel::slidesChanged() {
  if (!deck_)
    return;
  if (deck_->SlideCount() != rowCount())
    return setDeck(deck_);
  rows_.assign(rows_.size(), std::nullopt);
  if (!rows_.empty())
    emit dataChanged(index(0), index(rowCount() - 1));
}

void SlideListModel::pictureArrived(int slide) {
  if (slide >= 1 && slide <= rowCount())
    emit dataChanged(index(slide - 1), index(slide - 1), {Qt::DecorationRole});
}

const SlideRow& SlideListModel::row(int slide) const {
  std::optional<SlideRow>& kept = rows_.at(static_cast<std::size_t>(slide - 1));
  if (!kept) {
    host::Slide& source = deck_->Slides(slide);
    SlideRow made;
    made.slide = slide;
    made.title = render::toQt(source.Title()).replace('\v', ' ').simplified();
    if (made.title.isEmpty())
      made.title = source.Damage().empty() ? "Slide without a title" : "Damaged slide";
    made.damage = render::toQt(source.Damage());
    made.hidden = source.Hidden();
    if (holdsExercise(source))
      made.exercise = factsOf_(source).value_or(factsFromTags(source));
    kept = made;
  }
  return *kept;
}

int SlideListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant SlideListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount())
    return {};
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole && role != Qt::AccessibleTextRole)
    return {};
  const SlideRow& shown = row(index.row() + 1);
  return role == Qt::DisplayRole ? shown.title : toolTip(shown);
}

SlideListDelegate::SlideListDelegate(const SlideListModel& model, QObject* parent)
    : QStyledItemDelegate(parent), model_(model) {}

QSize SlideListDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
  return {kNumberWidth + kThumbWidth + 16 * look::grid, kRowHeight};
}

void SlideListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
  const SlideRow& row = model_.row(index.row() + 1);
  painter->save();
  paintCard(*painter, option.rect, option.state);
  const QRect inside = option.rect.adjusted(look::grid, 10, -2 * look::grid, -10);
  painter->setPen(look::quietInk);
  painter->setFont(type(look::bodyType, true));
  painter->drawText(QRect(inside.left(), inside.top(), kNumberWidth - look::grid, inside.height()),
                    Qt::AlignRight | Qt::AlignVCenter, QString::number(row.slide));
  const bool narrow = option.rect.width() < kNarrowRow;
  const QRect thumb(inside.left() + kNumberWidth, inside.top(), kThumbWidth, inside.height());
  if (!narrow)
    paintThumbnail(*painter, thumb, model_.thumbnail(row.slide), row.hidden);
  const QRect text = inside.adjusted(kNumberWidth + (narrow ? 0 : kThumbWidth + 2 * look::grid), 0, 0, 0);
  const int taken = paintTitle(*painter, text, row.title);
  QPoint at(text.left(), text.top() + taken + 3);
  if (row.exercise)
    at.rx() += paintBadge(*painter, at, "Exercise", look::mark, look::markSoft) + look::grid;
  if (!row.damage.isEmpty())
    at.rx() += paintBadge(*painter, at, "Damaged", look::bad, look::badSoft) + look::grid;
  if (row.hidden)
    at.rx() += paintBadge(*painter, at, "Hidden", look::quietInk, look::ground) + look::grid;
  if (row.exercise) {
    const QRect first(at.x(), at.y() + 1, text.right() - at.x(), 18);
    paintQuietLine(*painter, first, votesLine(*row.exercise));
    paintQuietLine(*painter, QRect(text.left(), at.y() + 21, text.width(), 18), contentsLine(*row.exercise));
  }
  painter->restore();
}

}  // namespace qrn::desktop

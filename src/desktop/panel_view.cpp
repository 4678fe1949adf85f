#include "desktop/panel_view.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QStyledItemDelegate>
#include <algorithm>

#include "desktop/keys.h"
#include "render/fonts.h"

namespace qrn::desktop {

namespace {

// Everything of a row that the view shows but its box.
std::string said(const host::PanelRow& row) {
  std::string text = std::to_string(row.id) + "/" + std::to_string(row.depth) + (row.checkable ? "c" : "") +
                     (row.enabled ? "e" : "") + (row.marked ? "m" : "");
  for (const std::string& cell : row.cells) text += "\t" + cell;
  return text;
}

// A row that is as high as its longest cell needs in the width of the column.
class WrappedRow : public QStyledItemDelegate {
 public:
  explicit WrappedRow(QTreeView& view) : QStyledItemDelegate(&view), view_(view) {}
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem unbound(option);
    unbound.rect = QRect();
    const QString text = index.data(Qt::DisplayRole).toString();
    QSize size = QStyledItemDelegate::sizeHint(unbound, index);
    const int frame = size.width() - option.fontMetrics.horizontalAdvance(text);
    const QRect room(0, 0, view_.columnWidth(index.column()) - frame - 2, 1 << 20);
    const int wrapped = option.fontMetrics.boundingRect(room, Qt::TextWordWrap, text).height();
    size.rheight() += std::max(0, wrapped - option.fontMetrics.height());
    return size;
  }

 private:
  const QTreeView& view_;
};

}  // namespace

void PanelModel::takeRows() {
  beginResetModel();
  const std::size_t count = panel_.rows().size();
  children_.assign(count + 1, {});
  parents_.assign(count, -1);
  places_.assign(count, 0);
  std::vector<int> above;  // the last row of each depth
  for (std::size_t row = 0; row < count; ++row) {
    const auto depth =
        std::min(static_cast<std::size_t>(std::max(0, panel_.rows()[row].depth)), above.size());
    above.resize(depth);
    const int parent = above.empty() ? -1 : above.back();
    std::vector<int>& siblings = children_[static_cast<std::size_t>(parent + 1)];
    parents_[row] = parent;
    places_[row] = static_cast<int>(siblings.size());
    siblings.push_back(static_cast<int>(row));
    above.push_back(static_cast<int>(row));
  }
  endResetModel();
}

int PanelModel::rowOf(const QModelIndex& index) {
  return index.isValid() ? static_cast<int>(index.internalId()) : -1;
}

const std::vector<int>& PanelModel::below(const QModelIndex& parent) const {
  static const std::vector<int> none;
  const auto at = static_cast<std::size_t>(rowOf(parent) + 1);
  return at < children_.size() ? children_[at] : none;
}

QModelIndex PanelModel::indexOf(int row) const {
  if (row < 0 || row >= static_cast<int>(places_.size()))
    return {};
  return createIndex(places_[static_cast<std::size_t>(row)], 0, static_cast<quintptr>(row));
}

QModelIndex PanelModel::index(int row, int column, const QModelIndex& parent) const {
  const std::vector<int>& rows = below(parent);
  if (row < 0 || row >= static_cast<int>(rows.size()) || column < 0 || column >= columnCount(parent))
    return {};
  return createIndex(row, column, static_cast<quintptr>(rows[static_cast<std::size_t>(row)]));
}

QModelIndex PanelModel::parent(const QModelIndex& child) const {
  const int row = rowOf(child);
  return row < 0 ? QModelIndex() : indexOf(parents_[static_cast<std::size_t>(row)]);
}

int PanelModel::rowCount(const QModelIndex& parent) const {
  return parent.column() > 0 ? 0 : static_cast<int>(below(parent).size());
}

int PanelModel::columnCount(const QModelIndex&) const {
  return std::max(1, static_cast<int>(panel_.columns.size()));
}

QVariant PanelModel::data(const QModelIndex& index, int role) const {
  const host::PanelRow& row = panel_.rows()[static_cast<std::size_t>(rowOf(index))];
  const auto column = static_cast<std::size_t>(index.column());
  switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
      return column < row.cells.size() ? render::toQt(row.cells[column]).simplified() : QString();
    case Qt::CheckStateRole:
      return row.checkable && column == 0 ? QVariant(row.checked ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::TextAlignmentRole: {
      const bool right = column < panel_.columns.size() && panel_.columns[column].atRight;
      return static_cast<int>((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    case Qt::FontRole: {
      QFont font;
      font.setBold(true);
      return row.marked ? QVariant(font) : QVariant();
    }
    default:
      return {};
  }
}

QVariant PanelModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const auto column = static_cast<std::size_t>(section);
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || column >= panel_.columns.size())
    return {};
  return render::toQt(panel_.columns[column].title);
}

Qt::ItemFlags PanelModel::flags(const QModelIndex& index) const {
  const int at = rowOf(index);
  if (at < 0)
    return panel_.canDrag ? Qt::ItemIsDropEnabled : Qt::NoItemFlags;
  const host::PanelRow& row = panel_.rows()[static_cast<std::size_t>(at)];
  if (!row.enabled)
    return Qt::NoItemFlags;
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (row.checkable)
    flags |= Qt::ItemIsUserCheckable;
  return panel_.canDrag ? flags | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled : flags;
}

PanelView::PanelView(host::Panel& panel, const QString& name, QWidget* parent)
    : QTreeView(parent), panel_(panel), model_(new PanelModel(panel, this)) {
  setObjectName(name);
  setModel(model_);
  setUniformRowHeights(panel.columns.empty());
  if (!panel.columns.empty()) {
    setWordWrap(true);
    setItemDelegate(new WrappedRow(*this));
  }
  setHeaderHidden(panel.columns.empty());
  setSelectionMode(panel.multiSelect ? QAbstractItemView::ExtendedSelection
                                     : QAbstractItemView::SingleSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setTextElideMode(Qt::ElideRight);
  setDragDropMode(panel.canDrag ? QAbstractItemView::InternalMove : QAbstractItemView::NoDragDrop);
  connect(this, &QTreeView::expanded, this,
          [this](const QModelIndex& index) { panel_.setOpen(PanelModel::rowOf(index), true); });
  connect(this, &QTreeView::collapsed, this,
          [this](const QModelIndex& index) { panel_.setOpen(PanelModel::rowOf(index), false); });
  sync();
}

void PanelView::sync() {
  const auto& rows = panel_.rows();
  std::vector<std::string> now;
  now.reserve(rows.size());
  std::transform(rows.begin(), rows.end(), std::back_inserter(now), said);
  if (now != seen_) {
    model_->takeRows();
    seen_ = std::move(now);
    setRootIsDecorated(
        std::any_of(rows.begin(), rows.end(), [](const host::PanelRow& row) { return row.depth > 0; }));
    setWidths();
  }
  for (int row = 0; row < static_cast<int>(rows.size()); ++row)
    if (model_->rowCount(model_->indexOf(row)) > 0)
      setExpanded(model_->indexOf(row), rows[static_cast<std::size_t>(row)].open);
  QItemSelection selection;
  for (const int row : panel_.selected()) selection.select(model_->indexOf(row), model_->indexOf(row));
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  const QModelIndex current = model_->indexOf(panel_.current());
  selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
  if (current.isValid())
    scrollTo(current);
  viewport()->update();
}

int PanelView::textWidth() const {
  double width = panel_.columns.empty() ? sizeHintForColumn(0) : 0, left = 1;
  for (const host::PanelColumn& column : panel_.columns) left -= column.width;
  for (std::size_t at = 0; at < panel_.columns.size(); ++at) {
    const double share = panel_.columns[at].width > 0 ? panel_.columns[at].width : std::max(left, 0.1);
    width = std::max(width, sizeHintForColumn(static_cast<int>(at)) / share);
  }
  return static_cast<int>(width);
}

int PanelView::heightOf(int rows, int room) {
  doItemsLayout();
  int height = this->height() - viewport()->height();
  const int count = std::min(rows, static_cast<int>(panel_.rows().size()));
  for (int row = 0; row < count; ++row) {
    const int next = height + indexRowSizeHint(model_->indexOf(row));
    if (next > room)
      break;
    height = next;
  }
  return height;
}

void PanelView::setWish(QSize wish) {
  wish_ = wish;
  updateGeometry();
}

// Rows that go from one to the next are whole or not there.
void PanelView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  const QRect& row = option.rect;
  if (verticalScrollMode() == ScrollPerPixel || row.top() <= 0 || row.bottom() < viewport()->height())
    QTreeView::drawRow(painter, option, index);
}

void PanelView::setWidths() {
  int last = 0;
  for (std::size_t column = 0; column < panel_.columns.size(); ++column) {
    const double share = panel_.columns[column].width;
    if (share > 0)
      setColumnWidth(static_cast<int>(column), static_cast<int>(viewport()->width() * share));
    else
      last = static_cast<int>(column);
  }
  header()->setStretchLastSection(panel_.columns.empty());
  if (!panel_.columns.empty())
    header()->setSectionResizeMode(last, QHeaderView::Stretch);
  if (wordWrap())
    scheduleDelayedItemsLayout();  // rows may wrap elsewhere now
}

void PanelView::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  setWidths();
}

// A held arrow goes on through the rows, though it is no key to anybody else. What the panel does may end the
// form, and this view with it.
void PanelView::keyPressEvent(QKeyEvent* event) {
  const bool moves = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down ||
                     event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
  const QKeyEvent once(event->type(), event->key(), event->modifiers(), event->text());
  const KeyStroke stroke = classicKey(moves ? once : *event);
  const int page = viewport()->height() / std::max(1, sizeHintForRow(0));
  const QPointer<PanelView> self(this);
  const bool taken = panel_.keyDown(stroke.keyCode, stroke.shift, std::max(1, page - 1));
  if (self && taken)
    afterChange();
  else if (self)
    event->ignore();  // the dialog may know it
}

bool PanelView::ticks(const QModelIndex& index, QPoint at) {
  const int row = PanelModel::rowOf(index);
  if (row < 0 || index.column() != 0 || !panel_.rows()[static_cast<std::size_t>(row)].checkable)
    return false;
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.rect = visualRect(index);
  option.features |= QStyleOptionViewItem::HasCheckIndicator;
  return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this).contains(at);
}

void PanelView::mousePressEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint();
  const QModelIndex index = indexAt(at);
  QTreeView::mousePressEvent(event);  // opens and closes rows, begins a drag
  const int row = PanelModel::rowOf(index);
  if (row < 0)
    return sync();
  using How = host::Panel::How;
  const How how = event->modifiers() & Qt::ShiftModifier     ? How::range
                  : event->modifiers() & Qt::ControlModifier ? How::add
                                                             : How::alone;
  const QPointer<PanelView> self(this);
  if (event->button() == Qt::LeftButton && ticks(index, at))
    panel_.toggle(row);
  else if (event->button() == Qt::LeftButton || !panel_.isSelected(row))
    panel_.select(row, how);
  if (self)
    afterChange();
}

void PanelView::mouseDoubleClickEvent(QMouseEvent* event) {
  const int row = PanelModel::rowOf(indexAt(event->position().toPoint()));
  const QPointer<PanelView> self(this);
  if (row >= 0 && panel_.rows()[static_cast<std::size_t>(row)].enabled && panel_.activated)
    panel_.activated(row);
  if (self)
    afterChange();
}

void PanelView::contextMenuEvent(QContextMenuEvent* event) {
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  const int row = byKey ? panel_.current() : PanelModel::rowOf(indexAt(event->pos()));
  const QPointer<PanelView> self(this);
  if (panel_.menuWanted)
    panel_.menuWanted(row);
  if (self)
    afterChange();
}

void PanelView::dropEvent(QDropEvent* event) {
  const int from = panel_.current(), target = PanelModel::rowOf(indexAt(event->position().toPoint()));
  const DropIndicatorPosition where = dropIndicatorPosition();
  event->setDropAction(Qt::IgnoreAction);  // the owner of the panel moves, not the view
  event->accept();
  if (!panel_.dropped || from < 0)
    return;
  const int to = target < 0 ? static_cast<int>(panel_.rows().size()) : target + (where == BelowItem ? 1 : 0);
  panel_.dropped(from, to, where == OnItem);
  afterChange();
}

}  // namespace qrn::desktop

// Shows a host::Panel as list, grid or tree and turns keys and mouse into its calls. The panel holds the
// state; the view follows it.
#pragma once

#include <QAbstractItemModel>
#include <QTreeView>
#include <functional>

#include "host/panel.h"

namespace qrn::desktop {

class PanelModel : public QAbstractItemModel {
 public:
  PanelModel(host::Panel& panel, QObject* parent) : QAbstractItemModel(parent), panel_(panel) {}
  void takeRows();  // the panel has other rows
  QModelIndex indexOf(int row) const;
  static int rowOf(const QModelIndex& index);  // -1: none

  QModelIndex index(int row, int column, const QModelIndex& parent) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent) const override;
  int columnCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  const std::vector<int>& below(const QModelIndex& parent) const;

  host::Panel& panel_;
  std::vector<std::vector<int>> children_;  // by row + 1; the rows at the root come first
  std::vector<int> parents_, places_;       // by row: the row above it (-1: none), its place below that
};

class PanelView : public QTreeView {
 public:
  PanelView(host::Panel& panel, const QString& name, QWidget* parent);
  void sync();                    // shows what the panel holds
  std::function<void()> changed;  // somebody did something to the panel; left out: sync
  int rowHeight() const { return sizeHintForRow(0); }
  int textWidth() const;  // pixels in which no row is cut
  // The height of the first rows as they are wrapped now, of as many as there is room for.
  int heightOf(int rows, int room);
  void setWish(QSize wish);  // the room that it asks its layout for
  QSize sizeHint() const override { return wish_.isValid() ? wish_ : QTreeView::sizeHint(); }

 protected:
  void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void setWidths();
  void afterChange() { changed ? changed() : sync(); }
  bool ticks(const QModelIndex& index, QPoint at);  // the press hit a check box

  host::Panel& panel_;
  PanelModel* model_;
  QSize wish_;
  std::vector<std::string> seen_;  // what the rows said at the last sync
};

}  // namespace qrn::desktop

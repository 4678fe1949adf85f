// The rows "key: text" of the list beside a graph: the key on a disc, as on the graph, and the text beside it
// in as many lines as it needs. They are set once for a room; layout and painting measure nothing.
#pragma once

#include <QFont>
#include <QStringList>
#include <QStyledItemDelegate>
#include <vector>

#include "host/panel.h"
#include "look/theme.h"

namespace qrn::desktop {

class KeyedRows : public QStyledItemDelegate {
 public:
  explicit KeyedRows(QObject* list) : QStyledItemDelegate(list) {}
  void setTheme(const look::Theme& theme) { theme_ = theme; }

  // Pixels: what the rows have before a scroll bar takes `bar` of the width.
  struct Room {
    int width = 0, height = 0, bar = 0;
    bool operator==(const Room&) const = default;
  };
  // Few items may take three lines each, more of them two. What is longer ends at a whole word.
  void set(const std::vector<host::PanelRow>& rows, const QFont& font, Room room);
  const QStringList& lines(int row) const;  // of the text, as it is set

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  struct Row {
    QString key, text;
    double keyWidth = 0;  // pixels, with the disc
    QStringList lines;
    bool rightToLeft = false;
  };
  void split();
  void setTexts(int width, int most);
  int heightOf(const QStringList& lines) const;
  int height() const;
  double textLeft() const;
  void paintKey(QPainter& painter, const QRectF& line, const Row& row, bool chosen, bool marked) const;

  look::Theme theme_;
  std::vector<Row> rows_;
  std::vector<std::string> said_;  // by the rows, when they were set
  Room room_;                      // then
  QFont font_, keyFont_;
  int row_ = 0, line_ = 0;  // pixels of a row of one line, and of each line more
  int gap_ = 0;             // below a row, where there is room for it
  double key_ = 0;          // of the widest key, with its disc
};

}  // namespace qrn::desktop

#pragma once

#include <QLayout>
#include <QList>

namespace qrn::desktop {

// Widgets side by side; those that find no room go on in the next row.
class FlowRow : public QLayout {
 public:
  explicit FlowRow(int gap, Qt::Alignment alignment = Qt::AlignLeft);
  ~FlowRow() override;
  void addItem(QLayoutItem* item) override { items_ << item; }
  int count() const override { return static_cast<int>(items_.size()); }
  QLayoutItem* itemAt(int index) const override { return items_.value(index); }
  QLayoutItem* takeAt(int index) override { return index < items_.size() ? items_.takeAt(index) : nullptr; }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override { return arrange(QRect(0, 0, width, 0), false); }
  QSize sizeHint() const override;
  QSize minimumSize() const override;
  void setGeometry(const QRect& place) override;

 private:
  // Returns the height taken.
  int arrange(const QRect& place, bool move) const;
  int gap_;
  Qt::Alignment alignment_;
  QList<QLayoutItem*> items_;
};

}  // namespace qrn::desktop

// What the style sheets of cards and menus cannot draw: a tick in a box, the arrow of a list to choose from.
#pragma once

#include <QCheckBox>
#include <QColor>
#include <QComboBox>

namespace qrn::qt {

void drawTick(QPainter& painter, const QRect& box, const QColor& colour);

class TickBox : public QCheckBox {
 public:
  TickBox(const QColor& tick, QWidget* parent) : QCheckBox(parent), tick_(tick) {}

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QColor tick_;
};

class ChoiceBox : public QComboBox {
 public:
  using QComboBox::QComboBox;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace qrn::qt

#include "adapters/qt/staged_dialog.h"

#include <QLayout>
#include <QPainter>
#include <QPushButton>

#include "adapters/qt/themed.h"
#include "adapters/qt/type_scale.h"
#include "core/windows/slide_theme.h"
#include "render/render.h"

namespace qrn::qt {

namespace {

constexpr double kDim = 0.72;                            // how much of what is behind the ground takes away
constexpr double kTextShare = 0.5, kTextTallest = 0.64;  // of the screen's width and height
constexpr int kText = 20, kTextWidth = 640, kButton = 16, kButtonWidth = 104;  // pixels, over a window

constexpr const char* kSheet = R"(
  #card { background: @card; border-radius: 16px; }
  QWidget { color: @text; font-size: @labelpx; background: transparent; border: none; }
  QLabel#title { font-weight: bold; font-size: @wordpx; }
  QLabel#help, QLabel#problem { font-size: @floorpx; color: @quiet; }
  QLabel#problem { color: @alarm; }
  QPushButton { background: @field; border: 2px solid @line; border-radius: 8px; padding: @gappx @halfpx; }
  QPushButton#primary { background: @data; color: @onData; border-color: @data; font-weight: bold; }
  QPushButton:focus, QPushButton#primary:focus, QLineEdit:focus, QComboBox:focus, QTreeView:focus { border: 3px solid @highlight; }
  QPushButton:disabled, QCheckBox:disabled, QRadioButton:disabled, QLabel:disabled { color: @quiet; }
  QLineEdit, QComboBox { background: @field; border: 2px solid @line; border-radius: 8px; padding: @gappx @halfpx; }
  QCheckBox, QRadioButton { spacing: @halfpx; border: 3px solid transparent; border-radius: 8px; padding: 2px @gappx; }
  QCheckBox:focus, QRadioButton:focus { border-color: @highlight; }
  QCheckBox::indicator, QRadioButton::indicator { width: @labelpx; height: @labelpx; background: @field; border: 2px solid @line; }
  QCheckBox::indicator { border-radius: 6px; }
  QRadioButton::indicator { border-radius: @halfpx; }
  QCheckBox::indicator:checked { background: @data; border-color: @data; }
  QRadioButton::indicator:checked { background: @data; border: 4px solid @onData; }
  QComboBox::drop-down { border: none; width: @wordpx; }
  QComboBox::down-arrow { image: none; }
  QComboBox QAbstractItemView { background: @card; selection-background-color: @data; selection-color: @onData; }
  QTreeView { background: @field; border: 2px solid @line; border-radius: 8px; outline: none; padding: 4px; }
  QTreeView::item { padding: 6px 8px; border-radius: 6px; }
  QTreeView::item:selected { background: @data; color: @onData; }
  QHeaderView::section { background: @field; border: none; padding: 6px 8px; color: @quiet; }
  QScrollBar:vertical { background: @field; width: 14px; }
  QScrollBar::handle:vertical { background: @line; border-radius: 5px; min-height: 40px; margin: 2px; }
  QScrollBar::add-line, QScrollBar::sub-line { height: 0; width: 0; }
)";

}  // namespace

QString cardSheet(const look::Theme& theme, int height) {
  return themed(kSheet, theme, height);
}

void Scrim::paint(QWidget& on) const {
  QPainter painter(&on);
  QColor veil = render::toColour(theme_.ground);
  painter.fillRect(on.rect(), veil);
  painter.drawPixmap(on.rect(), behind_);
  veil.setAlphaF(static_cast<float>(kDim));
  painter.fillRect(on.rect(), veil);
}

StagedDialog::StagedDialog(QWidget* over)
    : QDialog(over),
      staged_(over && over->isVisible() && over->windowFlags().testFlag(Qt::FramelessWindowHint)),
      theme_(slideTheme()),
      scrim_(theme_),
      card_(staged_ ? new QWidget(this) : this) {
  if (!staged_)
    return;
  setWindowFlag(Qt::FramelessWindowHint);
  card_->setObjectName("card");
  setGeometry(placeOf(*over));
  setStyleSheet(cardSheet(theme_, height()));
  scrim_.take(over->grab(over->contentsRect()));
}

int StagedDialog::type() const {
  return staged_ ? pixels(look::Size::label, height()) : static_cast<int>(kText * typeScale(parentWidget()));
}

int StagedDialog::textWidth() const {
  return static_cast<int>(staged_ ? width() * kTextShare : kTextWidth * typeScale(parentWidget()));
}

int StagedDialog::textHeight() const {
  return static_cast<int>((staged_ ? height() : screenHeight(parentWidget())) * kTextTallest);
}

QPushButton* StagedDialog::makeButton(const QString& caption, bool primary) {
  auto* button = new QPushButton(caption, card_);
  button->setAutoDefault(true);
  if (!staged_) {
    const double scale = typeScale(parentWidget());
    button->setMinimumWidth(static_cast<int>(kButtonWidth * scale));
    button->setStyleSheet(QString("font-size: %1px; min-height: %2px;")
                              .arg(static_cast<int>(kButton * scale))
                              .arg(static_cast<int>(kText * scale)));
  }
  if (primary) {
    button->setObjectName("primary");
    button->setDefault(true);
    button->setFocus();
  }
  return button;
}

void StagedDialog::standInTheMiddle() {
  if (!staged_) {
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    return;
  }
  card_->ensurePolished();
  const QSize size = card_->layout()->sizeHint().boundedTo(this->size());
  card_->setGeometry(QRect(QPoint((width() - size.width()) / 2, (height() - size.height()) / 2), size));
}

void StagedDialog::paintEvent(QPaintEvent* event) {
  staged_ ? scrim_.paint(*this) : QDialog::paintEvent(event);
}

}  // namespace qrn::qt

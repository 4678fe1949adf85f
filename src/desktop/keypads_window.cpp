#include "desktop/keypads_window.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/qr_code.h"
#include "desktop/style.h"

namespace qrn::desktop {

namespace {

QLabel* centred(QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setAlignment(Qt::AlignCenter);
  label->setTextFormat(Qt::PlainText);
  return label;
}

void setType(QLabel& label, int pixels, bool bold) {
  QFont font("Arial");
  font.setPixelSize(pixels);
  font.setBold(bold);
  label.setFont(font);
}

}  // namespace

KeypadsWindow::KeypadsWindow(QWidget* parent)
    : QDialog(parent),
      heading_(centred(this)),
      code_(centred(this)),
      text_(centred(this)),
      hint_(centred(this)),
      buttons_(new QWidget(this)) {
  setObjectName("keypads");
  setWindowTitle("Keypads");
  setStyleSheet("#keypads { background: #ffffff; }");
  auto* row = new QHBoxLayout(buttons_);
  row->setContentsMargins(0, 0, 0, 0);
  const auto button = [&](const QString& caption, const QString& tip, auto action) {
    auto* made = new QPushButton(caption, buttons_);
    made->setToolTip(tip);
    made->setAutoDefault(false);
    connect(made, &QPushButton::clicked, this, action);
    row->addWidget(made);
  };
  row->addStretch();
  button("&Full screen", "Show the code to the room (F11)", [this] { toggleFullScreen(); });
  button("&Copy address", "Ctrl+C", [this] { QGuiApplication::clipboard()->setText(address_); });
  button("Open in &browser", "Try a phone's page on this machine",
         [this] { QDesktopServices::openUrl(QUrl(address_)); });
  button("Close", "Esc", [this] { close(); });
  row->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(32, 32, 32, 24);
  layout->setSpacing(16);
  layout->addStretch(1);
  layout->addWidget(heading_);
  layout->addWidget(code_);
  layout->addWidget(text_);
  layout->addWidget(hint_);
  layout->addStretch(1);
  layout->addWidget(buttons_);
  setMinimumSize(640, 560);
  resize(760, 720);
}

void KeypadsWindow::showAddress(const QString& address) {
  address_ = address;
  const bool known = !address.isEmpty();
  heading_->setText(known ? "Join with your phone" : "No controller is running");
  text_->setText(address);
  code_->setVisible(known);
  text_->setVisible(known);
  hint_->setText(
      known
          ? "Point the camera at the code, or type the address into a browser."
          : "Phones and keypads cannot vote until the controller runs.\nThe keyboard can stand in for them.");
  for (auto* button : buttons_->findChildren<QPushButton*>())
    button->setEnabled(known || button->text() == "Close");
  fit();
  show();
  raise();
  activateWindow();
}

void KeypadsWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F11)
    toggleFullScreen();
  else if (event->matches(QKeySequence::Copy))
    QGuiApplication::clipboard()->setText(address_);
  else if (event->key() == Qt::Key_Escape && isFullScreen())
    toggleFullScreen();
  else
    QDialog::keyPressEvent(event);
}

void KeypadsWindow::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  fit();
}

void KeypadsWindow::fit() {
  const int height = std::max(1, this->height());
  setType(*heading_, std::clamp(height / 16, 24, 96), true);
  setType(*hint_, std::clamp(height / 36, 16, 48), false);
  int pixels = std::clamp(height / 14, 22, 140);
  for (setType(*text_, pixels, true);
       pixels > 18 && text_->fontMetrics().horizontalAdvance(address_) > width() - 80;)
    setType(*text_, --pixels, true);
  const QImage code = qrCode(address_, std::min(width() - 80, height * 58 / 100));
  code_->setPixmap(QPixmap::fromImage(code));
  code_->setMinimumSize(1, 1);
}

void KeypadsWindow::toggleFullScreen() {
  isFullScreen() ? showNormal() : showFullScreen();
  buttons_->setVisible(!isFullScreen());
}

}  // namespace qrn::desktop

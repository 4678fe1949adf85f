#include "desktop/notice_bar.h"

#include <QHBoxLayout>
#include <QPushButton>

#include "desktop/style.h"

namespace qrn::desktop {

NoticeBar::NoticeBar(QWidget* parent) : QFrame(parent), word_(new QLabel(this)), text_(new QLabel(this)) {
  setObjectName("notice");
  text_->setWordWrap(true);
  text_->setTextFormat(Qt::PlainText);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* close = new QPushButton("Dismiss", this);
  connect(close, &QPushButton::clicked, this, [this] { hide(); });
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(2 * look::grid, look::grid, look::grid, look::grid);
  layout->setSpacing(2 * look::grid);
  layout->addWidget(word_);
  layout->addWidget(text_, 1);
  layout->addWidget(close);
  hide();
}

void NoticeBar::say(Kind kind, const QString& text) {
  const bool error = kind == Kind::error;
  const QColor ink = error ? look::bad : look::accent;
  const QColor ground = error ? look::badSoft : look::accentSoft;
  setStyleSheet(
      QString("#notice { background: %1; border-left: 8px solid %2; }").arg(ground.name(), ink.name()));
  word_->setStyleSheet(QString("color: %1; font-weight: bold;").arg(ink.name()));
  word_->setText(error ? "Problem" : "Note");
  text_->setText(text);
  setVisible(!text.isEmpty());
}

}  // namespace qrn::desktop

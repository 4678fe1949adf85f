#include "adapters/qt/question_box.h"

#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

#include "adapters/qt/type_scale.h"

namespace qrn::qt {

namespace {

int px(int pixels, double scale) {
  return static_cast<int>(pixels * scale);
}

struct Choice {
  const char* caption;
  host::Answer answer;
};

std::vector<Choice> choicesOf(host::Buttons buttons) {
  const Choice ok{"OK", host::Answer::ok}, cancel{"Cancel", host::Answer::cancel},
      yes{"&Yes", host::Answer::yes}, no{"&No", host::Answer::no};
  switch (buttons) {
    case host::Buttons::okCancel:
      return {ok, cancel};
    case host::Buttons::yesNo:
      return {yes, no};
    case host::Buttons::yesNoCancel:
      return {yes, no, cancel};
    case host::Buttons::ok:
      break;
  }
  return {ok};
}

struct Sign {
  const char *letter, *colour;
};

Sign signOf(host::Icon icon) {
  switch (icon) {
    case host::Icon::information:
      return {"i", "#0b57a4"};
    case host::Icon::question:
      return {"?", "#0b57a4"};
    case host::Icon::exclamation:
      return {"!", "#9a4a00"};
    case host::Icon::critical:
      return {"×", "#a31a1a"};
    case host::Icon::none:
      break;
  }
  return {"", ""};
}

QLabel* signLabel(host::Icon icon, double scale, QWidget* parent) {
  const Sign sign = signOf(icon);
  auto* label = new QLabel(QString::fromUtf8(sign.letter), parent);
  const int side = px(48, scale);
  label->setFixedSize(side, side);
  label->setAlignment(Qt::AlignCenter);
  label->setStyleSheet(
      QString("background: %1; color: #ffffff; border-radius: %2px; font-size: %3px; font-weight: bold;")
          .arg(sign.colour)
          .arg(side / 2)
          .arg(px(30, scale)));
  return label;
}

QLabel* textLabel(const QString& text, double scale, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setTextFormat(Qt::PlainText);
  label->setStyleSheet(QString("font-size: %1px;").arg(px(20, scale)));
  label->ensurePolished();
  label->setWordWrap(true);
  const QRect needed = label->fontMetrics().boundingRect(
      QRect(0, 0, px(QuestionBox::kTextWidth, scale), 1 << 20), Qt::TextWordWrap | Qt::AlignLeft, text);
  label->setMinimumSize(std::max(px(320, scale), needed.width() + 4),
                        std::max(px(48, scale), needed.height() + 4));
  label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  return label;
}

}  // namespace

QuestionBox::QuestionBox(const QString& text, host::Buttons buttons, host::Icon icon, host::Answer enter,
                         QWidget* parent)
    : QDialog(parent), text_(text), answer_(host::safeAnswer(buttons)) {
  setObjectName("question");
  text_.replace("\r\n", "\n").replace('\r', '\n');
  const double scale = typeScale(parent);
  auto* upper = new QHBoxLayout;
  upper->setSpacing(px(24, scale));
  if (icon != host::Icon::none)
    upper->addWidget(signLabel(icon, scale, this), 0, Qt::AlignTop);
  upper->addWidget(textLabel(text_, scale, this), 1);
  auto* lower = new QHBoxLayout;
  lower->setSpacing(px(8, scale));
  lower->addStretch();
  for (const Choice& choice : choicesOf(buttons)) {
    QPushButton* button = makeButton(choice.caption, choice.answer, scale);
    if (choice.answer == enter) {
      button->setDefault(true);
      button->setFocus();
    }
    lower->addWidget(button);
  }
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(px(32, scale), px(24, scale), px(32, scale), px(24, scale));
  layout->setSpacing(px(24, scale));
  layout->addLayout(upper, 1);
  layout->addLayout(lower);
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

QPushButton* QuestionBox::makeButton(const char* caption, host::Answer answer, double scale) {
  auto* button = new QPushButton(caption, this);
  button->setMinimumWidth(px(104, scale));
  button->setStyleSheet(QString("font-size: %1px; min-height: %2px;").arg(px(16, scale)).arg(px(20, scale)));
  button->setAutoDefault(true);
  connect(button, &QPushButton::clicked, this, [this, answer] {
    answer_ = answer;
    accept();
  });
  if (caption[0] == '&') {  // the letter answers without Alt too
    auto* letter = new QShortcut(QKeySequence(QString(QLatin1Char(caption[1]))), this);
    letter->setAutoRepeat(false);
    connect(letter, &QShortcut::activated, button, &QPushButton::click);
  }
  return button;
}

}  // namespace qrn::qt

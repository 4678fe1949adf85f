#include "adapters/qt/question_box.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace qrn::qt {

namespace {

struct Choice {
  const char* caption;
  host::Answer answer;
};

// The first is taken by Enter, the last by Esc and the close button.
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

QLabel* signLabel(host::Icon icon, QWidget* parent) {
  const Sign sign = signOf(icon);
  auto* label = new QLabel(QString::fromUtf8(sign.letter), parent);
  label->setFixedSize(48, 48);
  label->setAlignment(Qt::AlignCenter);
  label->setStyleSheet(
      QString("background: %1; color: #ffffff; border-radius: 24px; font-size: 30px; font-weight: bold;")
          .arg(sign.colour));
  return label;
}

QLabel* textLabel(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setTextFormat(Qt::PlainText);
  label->setStyleSheet("font-size: 20px;");
  label->ensurePolished();
  label->setWordWrap(true);
  const QRect needed = label->fontMetrics().boundingRect(QRect(0, 0, QuestionBox::kTextWidth, 1 << 20),
                                                         Qt::TextWordWrap | Qt::AlignLeft, text);
  label->setMinimumSize(std::max(320, needed.width() + 4), std::max(48, needed.height() + 4));
  label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  return label;
}

}  // namespace

QuestionBox::QuestionBox(const QString& text, host::Buttons buttons, host::Icon icon, QWidget* parent)
    : QDialog(parent), text_(text), answer_(choicesOf(buttons).back().answer) {
  setObjectName("question");
  text_.replace("\r\n", "\n").replace('\r', '\n');
  auto* upper = new QHBoxLayout;
  upper->setSpacing(24);
  if (icon != host::Icon::none)
    upper->addWidget(signLabel(icon, this), 0, Qt::AlignTop);
  upper->addWidget(textLabel(text_, this), 1);
  auto* lower = new QHBoxLayout;
  lower->setSpacing(8);
  lower->addStretch();
  for (const Choice& choice : choicesOf(buttons)) {
    auto* button = new QPushButton(choice.caption, this);
    button->setMinimumWidth(104);
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, this, [this, taken = choice.answer] {
      answer_ = taken;
      accept();
    });
    if (choice.answer == choicesOf(buttons).front().answer) {
      button->setDefault(true);
      button->setFocus();
    }
    lower->addWidget(button);
  }
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(32, 24, 32, 24);
  layout->setSpacing(24);
  layout->addLayout(upper, 1);
  layout->addLayout(lower);
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace qrn::qt

#include "adapters/qt/question_box.h"

#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "adapters/qt/scroll_text.h"
#include "render/render.h"

namespace qrn::qt {

namespace {

struct Choice {
  const char* caption;
  host::Answer answer;
};

std::vector<Choice> choicesOf(host::Buttons buttons) {
  const Choice ok{"&OK", host::Answer::ok}, cancel{"&Cancel", host::Answer::cancel},
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
  const char* letter = "";
  std::int32_t colour = 0, ink = 0;
};

Sign signOf(host::Icon icon, const look::Theme& theme) {
  switch (icon) {
    case host::Icon::information:
      return {"i", theme.data, theme.onData};
    case host::Icon::question:
      return {"?", theme.data, theme.onData};
    case host::Icon::exclamation:
      return {"!", theme.highlight, theme.onHighlight};
    case host::Icon::critical:
      return {"×", theme.alarm, look::inkOn(theme.alarm)};
    case host::Icon::none:
      break;
  }
  return {};
}

QLabel* signLabel(const Sign& sign, int type, QWidget* parent) {
  auto* label = new QLabel(QString::fromUtf8(sign.letter), parent);
  const int side = type * 12 / 5;
  label->setFixedSize(side, side);
  label->setAlignment(Qt::AlignCenter);
  label->setStyleSheet(
      QString("background: %1; color: %2; border-radius: %3px; font-size: %4px; font-weight: bold;")
          .arg(render::toColour(sign.colour).name(), render::toColour(sign.ink).name())
          .arg(side / 2)
          .arg(type * 3 / 2));
  return label;
}

QString withPlainLineEnds(QString text) {
  return text.replace("\r\n", "\n").replace('\r', '\n');
}

QVBoxLayout* layOut(QWidget* card, int type) {
  auto* layout = new QVBoxLayout(card);
  layout->setContentsMargins(type * 8 / 5, type * 6 / 5, type * 8 / 5, type * 6 / 5);
  layout->setSpacing(type * 6 / 5);
  return layout;
}

QHBoxLayout* buttonRow(int type) {
  auto* row = new QHBoxLayout;
  row->setSpacing(type * 2 / 5);
  row->addStretch();
  return row;
}

}  // namespace

QuestionBox::QuestionBox(const QString& text, host::Buttons buttons, host::Icon icon, host::Answer enter,
                         QWidget* parent)
    : StagedDialog(parent), text_(withPlainLineEnds(text)), answer_(host::safeAnswer(buttons)) {
  setObjectName("question");
  auto* upper = new QHBoxLayout;
  upper->setSpacing(type() * 6 / 5);
  if (icon != host::Icon::none)
    upper->addWidget(signLabel(signOf(icon, theme()), type(), card()), 0, Qt::AlignTop);
  upper->addWidget(new ScrollText(text_, type(), textWidth(), textHeight(), card()), 1);
  QHBoxLayout* lower = buttonRow(type());
  for (const Choice& choice : choicesOf(buttons))
    lower->addWidget(answerButton(choice.caption, choice.answer, choice.answer == enter));
  QVBoxLayout* layout = layOut(card(), type());
  layout->addLayout(upper, 1);
  layout->addLayout(lower);
  standInTheMiddle();
}

QPushButton* QuestionBox::answerButton(const char* caption, host::Answer answer, bool primary) {
  QPushButton* button = makeButton(caption, primary);
  connect(button, &QPushButton::clicked, this, [this, answer] {
    answer_ = answer;
    accept();
  });
  auto* letter = new QShortcut(QKeySequence(QString(QLatin1Char(caption[1]))), this);  // without Alt too
  letter->setAutoRepeat(false);
  connect(letter, &QShortcut::activated, button, &QPushButton::click);
  return button;
}

InputCard::InputCard(const QString& prompt, const QString& preset, QWidget* parent) : StagedDialog(parent) {
  setObjectName("input");
  QHBoxLayout* lower = buttonRow(type());
  for (const bool taken : {true, false}) {
    QPushButton* button = makeButton(taken ? "OK" : "Cancel", taken);
    connect(button, &QPushButton::clicked, this, taken ? &QDialog::accept : &QDialog::reject);
    lower->addWidget(button);
  }
  edit_ = new QLineEdit(preset, card());
  edit_->setMinimumWidth(textWidth());
  if (!staged())
    edit_->setStyleSheet(QString("font-size: %1px;").arg(type()));
  edit_->selectAll();
  edit_->setFocus();
  QVBoxLayout* layout = layOut(card(), type());
  layout->addWidget(new ScrollText(withPlainLineEnds(prompt), type(), textWidth(), textHeight(), card()));
  layout->addWidget(edit_);
  layout->addLayout(lower);
  standInTheMiddle();
}

QString InputCard::text() const {
  return edit_->text();
}

}  // namespace qrn::qt

#include "desktop/control_window.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "core/windows/slide_theme.h"
#include "desktop/keys.h"
#include "desktop/panel_view.h"
#include "host/host.h"
#include "look/colour.h"
#include "render/fonts.h"
#include "render/render.h"

namespace qrn::desktop {

namespace {

constexpr double kDim = 0.72;       // how much of what is behind the ground takes away
constexpr double kCardLift = 0.06;  // the card stands out of the ground by this much of the text's colour
constexpr double kWidest = 0.8, kTallest = 0.9, kWidestList = 0.36;  // of the screen
constexpr int kMostRows = 5;                                         // that a list asks room for
constexpr int kFrame = 8, kScrollBar = 18;                           // pixels

QString hex(std::int32_t colour) {
  return render::toColour(colour).name();
}

QString sheetOf(const look::Theme& theme, int label, int quiet) {
  const std::int32_t card = look::blend(theme.ground, theme.text, kCardLift);
  const std::int32_t field = look::blend(theme.ground, theme.text, 2 * kCardLift);
  const std::int32_t line = look::tintUntil(theme.grid, theme.text, card, look::kShapeContrast);
  QString sheet = R"(
    #card { background: CARD; border-radius: 16px; }
    QWidget { color: TEXT; font-size: LABELpx; background: transparent; border: none; }
    QLabel#title { font-weight: bold; }
    QLabel#help, QLabel#problem { font-size: QUIETpx; color: QUIETCOLOUR; }
    QLabel#problem { color: ALARM; }
    QPushButton { background: FIELD; border: 2px solid LINE; border-radius: 8px; padding: 8px 20px; }
    QPushButton#primary { background: DATA; color: ONDATA; border-color: DATA; font-weight: bold; }
    QPushButton:focus, QLineEdit:focus, QComboBox:focus, QTreeView:focus { border: 3px solid HIGHLIGHT; }
    QPushButton:disabled, QCheckBox:disabled, QRadioButton:disabled, QLabel:disabled { color: QUIETCOLOUR; }
    QLineEdit, QComboBox { background: FIELD; border: 2px solid LINE; border-radius: 8px; padding: 6px 12px; }
    QCheckBox:focus, QRadioButton:focus { color: HIGHLIGHT; }
    QCheckBox::indicator, QRadioButton::indicator { width: LABELpx; height: LABELpx; background: FIELD; border: 2px solid LINE; }
    QCheckBox::indicator { border-radius: 6px; }
    QRadioButton::indicator { border-radius: RADIUSpx; }
    QCheckBox::indicator:checked, QRadioButton::indicator:checked { background: DATA; border: 4px solid ONDATA; }
    QComboBox QAbstractItemView { background: CARD; selection-background-color: DATA; selection-color: ONDATA; }
    QTreeView { background: FIELD; border: 2px solid LINE; border-radius: 8px; outline: none; padding: 4px; }
    QTreeView::item { padding: 6px 8px; border-radius: 6px; }
    QTreeView::item:selected { background: DATA; color: ONDATA; }
    QHeaderView::section { background: FIELD; border: none; padding: 6px 8px; color: QUIETCOLOUR; }
    QScrollBar:vertical { background: FIELD; width: 14px; }
    QScrollBar::handle:vertical { background: LINE; border-radius: 5px; min-height: 40px; margin: 2px; }
    QScrollBar::add-line, QScrollBar::sub-line { height: 0; width: 0; }
  )";
  const std::vector<std::pair<const char*, QString>> words{{"QUIETCOLOUR", hex(theme.quiet)},
                                                           {"QUIET", QString::number(quiet)},
                                                           {"LABEL", QString::number(label)},
                                                           {"RADIUS", QString::number(label / 2 + 2)},
                                                           {"CARD", hex(card)},
                                                           {"FIELD", hex(field)},
                                                           {"LINE", hex(line)},
                                                           {"ONDATA", hex(theme.onData)},
                                                           {"DATA", hex(theme.data)},
                                                           {"HIGHLIGHT", hex(theme.highlight)},
                                                           {"ALARM", hex(theme.alarm)},
                                                           {"TEXT", hex(theme.text)}};
  for (const auto& [word, value] : words) sheet.replace(word, value);
  return sheet;
}

}  // namespace

ControlWindow::ControlWindow(host::ControlForm& form, WindowStack& stack)
    : QWidget(nullptr, Qt::Dialog | Qt::FramelessWindowHint),
      form_(form),
      stack_(stack),
      theme_(slideTheme()),
      card_(new QWidget(this)),
      problem_(new QLabel(card_)) {
  setObjectName(render::toQt(form.name));
  setWindowTitle("quorin matrix");
  setAttribute(Qt::WA_OpaquePaintEvent);
  card_->setObjectName("card");
  problem_->setObjectName("problem");
  problem_->setWordWrap(true);
  build();
}

int ControlWindow::px(look::Size size) const {
  return static_cast<int>(look::partOfHeight(size) * stack_.placeForForms().height());
}

void ControlWindow::build() {
  using look::Size;
  const int gap = px(Size::floor) / 2;
  setStyleSheet(sheetOf(theme_, px(Size::label), px(Size::floor)));
  auto* layout = new QVBoxLayout(card_);
  layout->setContentsMargins(2 * px(Size::floor), px(Size::item) / 2, 2 * px(Size::floor),
                             px(Size::item) / 2);
  layout->setSpacing(gap);
  auto* title = new QLabel(render::toQt(form_.title), card_);
  title->setObjectName("title");
  title->setStyleSheet(QString("font-size: %1px;").arg(px(Size::word)));
  title->setWordWrap(true);
  layout->addWidget(title);
  using Place = host::Control::Place;
  QHBoxLayout* row = nullptr;
  QVBoxLayout* cell = nullptr;
  for (host::Control& control : form_.controls) {
    if (control.place == Place::row || row == nullptr) {
      row = new QHBoxLayout;
      row->setSpacing(2 * gap);
      layout->addLayout(row, control.kind == host::Control::Kind::list ? 1 : 0);
    }
    if (control.place != Place::under || cell == nullptr) {
      cell = new QVBoxLayout;
      row->addLayout(cell, 1);
    }
    cell->addWidget(widgetFor(control));
  }
  layout->addWidget(problem_);
  auto* foot = new QHBoxLayout;
  foot->setSpacing(gap);
  foot->addStretch();
  if (!form_.dismissCaption.empty())
    foot->addWidget(footButton(form_.dismissCaption, form_.dismissIsDefault, &host::ControlForm::dismiss));
  if (!form_.acceptCaption.empty())
    foot->addWidget(footButton(form_.acceptCaption, !form_.dismissIsDefault, &host::ControlForm::accept));
  layout->addLayout(foot);
}

QPushButton* ControlWindow::footButton(const std::string& caption, bool primary,
                                       void (host::ControlForm::*press)()) {
  auto* button = new QPushButton(render::toQt(caption), card_);
  if (primary)
    button->setObjectName("primary");
  connect(button, &QPushButton::clicked, this, [this, press] {
    if (formStands())
      (form_.*press)();
  });
  return button;
}

QWidget* ControlWindow::widgetFor(host::Control& control) {
  using Kind = host::Control::Kind;
  QWidget* widget = nullptr;
  switch (control.kind) {
    case Kind::note: {
      auto* label = new QLabel(render::toQt(control.caption), card_);
      label->setWordWrap(true);
      label->setObjectName("help");
      return label;
    }
    case Kind::check:
      widget = checkBox(control);
      break;
    case Kind::options:
      widget = radioButtons(control);
      break;
    case Kind::choice:
      widget = comboBox(control);
      break;
    case Kind::number:
    case Kind::text:
      widget = lineEdit(control);
      break;
    case Kind::list:
      widget = panelBox(control);
      break;
    case Kind::button:
      widget = pushButton(control);
      break;
  }
  widget->setToolTip(render::toQt(control.help));
  if (first_ == nullptr)
    first_ = widget->focusProxy() != nullptr ? widget->focusProxy() : widget;
  syncs_.push_back([widget, &control] { widget->setEnabled(host::isEnabled(control)); });
  return widget;
}

void ControlWindow::took(const host::Control& control, const std::string& value) {
  if (!formStands())
    return;
  refused_ = host::give(control, value);
  sync();
}

QWidget* ControlWindow::checkBox(host::Control& control) {
  auto* box = new QCheckBox(render::toQt(control.caption), card_);
  connect(box, &QCheckBox::clicked, this, [this, &control](bool on) { took(control, on ? "-1" : "0"); });
  syncs_.push_back([box, &control] {
    const QSignalBlocker quiet(box);
    box->setChecked(host::valueOf(control) != "0");
  });
  return box;
}

QWidget* ControlWindow::radioButtons(host::Control& control) {
  auto* whole = new QWidget(card_);
  auto* layout = new QVBoxLayout(whole);
  layout->setContentsMargins(0, 0, 0, 0);
  if (!control.caption.empty())
    layout->addWidget(new QLabel(render::toQt(control.caption), whole));
  auto* group = new QButtonGroup(whole);
  for (std::size_t place = 0; place < control.choices.size(); ++place) {
    auto* button = new QRadioButton(render::toQt(control.choices[place]), whole);
    group->addButton(button, static_cast<int>(place));
    layout->addWidget(button);
  }
  connect(group, &QButtonGroup::idClicked, this,
          [this, &control](int place) { took(control, std::to_string(place)); });
  syncs_.push_back([group, &control] {
    if (auto* button = group->button(std::atoi(host::valueOf(control).c_str())))
      button->setChecked(true);
  });
  return whole;
}

QWidget* ControlWindow::comboBox(host::Control& control) {
  auto* whole = new QWidget(card_);
  auto* layout = new QHBoxLayout(whole);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* box = new QComboBox(whole);
  for (const std::string& choice : control.choices) box->addItem(render::toQt(choice));
  layout->addWidget(new QLabel(render::toQt(control.caption), whole));
  layout->addWidget(box, 1);
  whole->setFocusProxy(box);
  connect(box, &QComboBox::activated, this,
          [this, &control](int place) { took(control, std::to_string(place)); });
  syncs_.push_back([box, &control] { box->setCurrentIndex(std::atoi(host::valueOf(control).c_str())); });
  return whole;
}

QWidget* ControlWindow::lineEdit(host::Control& control) {
  auto* whole = new QWidget(card_);
  auto* layout = new QHBoxLayout(whole);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* edit = new QLineEdit(whole);
  edit->setObjectName(render::toQt(control.name));
  layout->addWidget(new QLabel(render::toQt(control.caption), whole), 1);
  layout->addWidget(edit, control.kind == host::Control::Kind::number ? 0 : 2);
  if (control.kind == host::Control::Kind::number)
    edit->setFixedWidth(5 * px(look::Size::label));
  whole->setFocusProxy(edit);
  connect(edit, &QLineEdit::textEdited, this,
          [this, &control](const QString& text) { took(control, render::fromQt(text)); });
  syncs_.push_back([edit, &control] {
    if (!edit->hasFocus())
      edit->setText(render::toQt(host::valueOf(control)));
  });
  return whole;
}

QWidget* ControlWindow::panelBox(host::Control& control) {
  auto* whole = new QWidget(card_);
  auto* layout = new QVBoxLayout(whole);
  layout->setContentsMargins(0, 0, 0, 0);
  if (!control.caption.empty())
    layout->addWidget(new QLabel(render::toQt(control.caption), whole));
  auto* view = new PanelView(*control.panel, render::toQt(control.name), whole);
  layout->addWidget(view, 1);
  whole->setFocusProxy(view);
  sizes_.push_back([this, view, &control] {
    const int rows = std::clamp(static_cast<int>(control.panel->rows().size()), 3, kMostRows);
    const int most = static_cast<int>(stack_.placeForForms().width() * kWidestList);
    view->ensurePolished();
    view->setMinimumSize(std::min(most, view->textWidth() + 2 * kFrame + kScrollBar),
                         rows * std::max(1, view->rowHeight()) + 2 * kFrame);
  });
  syncs_.push_back([view] { view->sync(); });
  return whole;
}

QWidget* ControlWindow::pushButton(host::Control& control) {
  auto* button = new QPushButton(render::toQt(control.caption), card_);
  connect(button, &QPushButton::clicked, this, [this, &control] {
    const QPointer<ControlWindow> self(this);
    if (formStands() && control.pressed)
      control.pressed();
    if (self && formStands())
      sync();
  });
  return button;
}

bool ControlWindow::formStands() const {
  return host::host().forms->find(form_.name) == &form_;
}

void ControlWindow::sync() {
  for (const auto& one : syncs_) one();
  const std::string& why = refused_.empty() ? form_.problem : refused_;
  problem_->setText(render::toQt(why));
  problem_->setVisible(!why.empty());
}

void ControlWindow::focusFirst() {
  if (first_ != nullptr)
    first_->setFocus();
}

void ControlWindow::standOver() {
  QWidget* front = stack_.front();
  const QRect place = stack_.placeForForms();
  behind_ = front != nullptr && front != this ? front->grab() : QPixmap();
  setGeometry(place);
  const QSize most(static_cast<int>(place.width() * kWidest), static_cast<int>(place.height() * kTallest));
  card_->ensurePolished();
  for (const auto& one : sizes_) one();
  card_->setMaximumSize(most);
  const QSize size = card_->layout()->sizeHint().expandedTo(QSize(most.width() / 2, 0)).boundedTo(most);
  card_->setGeometry(
      QRect(QPoint((place.width() - size.width()) / 2, (place.height() - size.height()) / 2), size));
}

void ControlWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QColor veil = render::toColour(theme_.ground);
  painter.fillRect(rect(), veil);
  if (behind_.isNull())
    return;
  painter.drawPixmap(rect(), behind_);
  veil.setAlphaF(static_cast<float>(kDim));
  painter.fillRect(rect(), veil);
}

void ControlWindow::keyPressEvent(QKeyEvent* event) {
  const KeyStroke stroke = classicKey(*event);
  if (auto* button = qobject_cast<QPushButton*>(focusWidget());
      button && stroke.keyCode == host::key::enter) {
    button->click();
    return;
  }
  const QPointer<ControlWindow> self(this);
  if (stroke.keyCode != 0 && formStands())
    form_.Form_KeyDown(stroke.keyCode, stroke.shift);
  if (self && formStands())
    sync();
}

void ControlWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (formStands())
    host::host().forms->unload(form_.name, true);
}

namespace {

class ControlView : public host::FormView {
 public:
  ControlView(host::ControlForm& form, WindowStack& stack) : stack_(stack), window_(form, stack) {}
  ~ControlView() override { stack_.drop(&window_); }
  void show(bool modal) override {
    window_.sync();
    window_.standOver();
    window_.setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
    window_.show();
    stack_.raise(&window_);
    window_.focusFirst();
  }
  void hide() override {
    window_.hide();
    stack_.drop(&window_);
  }
  void refresh() override { window_.sync(); }
  void bringToFront() override { stack_.raise(&window_); }

 private:
  WindowStack& stack_;
  ControlWindow window_;
};

}  // namespace

host::FormRegistry::ViewMaker controlView(WindowStack& stack) {
  return [&stack](host::Form& form) {
    return std::make_unique<ControlView>(dynamic_cast<host::ControlForm&>(form), stack);
  };
}

}  // namespace qrn::desktop

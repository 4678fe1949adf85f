#include "desktop/control_window.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "adapters/qt/themed.h"
#include "core/windows/slide_theme.h"
#include "desktop/keys.h"
#include "desktop/panel_view.h"
#include "host/host.h"
#include "render/fonts.h"

namespace qrn::desktop {

namespace {

constexpr double kWidest = 0.8, kTallest = 0.9, kWidestList = 0.36, kWidestGrid = 0.76;  // of the screen
constexpr int kMostRows = 5;                // that a list asks room for
constexpr int kFrame = 8, kScrollBar = 18;  // pixels

// Captions are plain words: "&" is a letter of them.
QString plain(const std::string& caption) {
  return render::toQt(caption).replace('&', "&&");
}

}  // namespace

ControlWindow::ControlWindow(host::ControlForm& form, WindowStack& stack)
    : QWidget(nullptr, Qt::Dialog | Qt::FramelessWindowHint),
      form_(form),
      stack_(stack),
      theme_(slideTheme()),
      scrim_(theme_),
      card_(new QWidget(this)),
      problem_(new QLabel(card_)) {
  setObjectName(render::toQt(form.name));
  setWindowTitle("quorin matrix");
  setAttribute(Qt::WA_OpaquePaintEvent);
  card_->setObjectName("card");
  problem_->setObjectName("problem");
  problem_->setWordWrap(true);
  build();
  // What was not taken gives way to the value when somebody goes on.
  connect(qApp, &QApplication::focusChanged, this, [this](const QWidget* left) {
    if (left == nullptr || refused_.empty() || !formStands())
      return;
    refused_.clear();
    sync();
  });
}

int ControlWindow::px(look::Size size) const {
  return qt::pixels(size, stack_.placeForForms().height());
}

void ControlWindow::build() {
  using look::Size;
  const int gap = px(Size::floor) / 2;
  setStyleSheet(qt::cardSheet(theme_, stack_.placeForForms().height()));
  auto* layout = new QVBoxLayout(card_);
  layout->setContentsMargins(2 * px(Size::floor), px(Size::item) / 2, 2 * px(Size::floor),
                             px(Size::item) / 2);
  layout->setSpacing(gap);
  auto* title = new QLabel(render::toQt(form_.title), card_);
  title->setObjectName("title");
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
      row->addLayout(cell, control.place != Place::beside || control.kind == host::Control::Kind::list ||
                                   control.kind == host::Control::Kind::text
                               ? 1
                               : 0);
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
  auto* button = new QPushButton(plain(caption), card_);
  if (primary)
    button->setObjectName("primary");
  connect(button, &QPushButton::clicked, this, [this, press] {
    if (formStands() && (refused_.empty() || press == &host::ControlForm::dismiss))
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
  auto* box = new QCheckBox(plain(control.caption), card_);
  connect(box, &QCheckBox::clicked, this, [this, &control](bool on) { took(control, on ? "-1" : "0"); });
  syncs_.push_back([box, &control] {
    const QSignalBlocker quiet(box);
    box->setChecked(host::valueOf(control) != "0");
    box->setText(plain(control.caption));
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
    auto* button = new QRadioButton(plain(control.choices[place]), whole);
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
  layout->setSpacing(px(look::Size::floor) / 2);
  auto* box = new QComboBox(whole);
  for (const std::string& choice : control.choices) box->addItem(render::toQt(choice));
  layout->addWidget(new QLabel(render::toQt(control.caption), whole));
  layout->addWidget(box, 1);
  whole->setFocusProxy(box);
  connect(box, &QComboBox::activated, this,
          [this, &control](int place) { took(control, std::to_string(place)); });
  syncs_.push_back([box, &control] {
    for (int place = 0; place < box->count(); ++place)
      box->setItemText(place, render::toQt(control.choices[static_cast<std::size_t>(place)]));
    box->setCurrentIndex(std::atoi(host::valueOf(control).c_str()));
  });
  return whole;
}

QWidget* ControlWindow::lineEdit(host::Control& control) {
  auto* whole = new QWidget(card_);
  auto* layout = new QHBoxLayout(whole);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(px(look::Size::floor) / 2);
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
    const int rows = control.rows > 0
                         ? control.rows + (control.panel->columns.empty() ? 0 : 1)
                         : std::clamp(static_cast<int>(control.panel->rows().size()), 3, kMostRows);
    const double share = control.panel->columns.empty() ? kWidestList : kWidestGrid;
    const int most = static_cast<int>(stack_.placeForForms().width() * share);
    view->ensurePolished();
    view->setMinimumSize(std::min(most, view->textWidth() + 2 * kFrame + kScrollBar),
                         rows * std::max(1, view->rowHeight()) + 2 * kFrame);
  });
  syncs_.push_back([view] { view->sync(); });
  return whole;
}

QWidget* ControlWindow::pushButton(host::Control& control) {
  auto* button = new QPushButton(plain(control.caption), card_);
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
  const bool shown = !problem_->isHidden();
  problem_->setVisible(!why.empty());
  if (isVisible() && shown == why.empty())
    fitCard();
}

void ControlWindow::focusFirst() {
  if (first_ != nullptr)
    first_->setFocus();
}

void ControlWindow::standOver() {
  QWidget* front = stack_.front();
  const QRect place = stack_.placeForForms();
  scrim_.take(front != this ? front : nullptr);
  setGeometry(place);
  card_->ensurePolished();
  for (const auto& one : sizes_) one();
  fitCard();
}

void ControlWindow::fitCard() {
  const QSize place = size();
  const QSize most(static_cast<int>(place.width() * kWidest), static_cast<int>(place.height() * kTallest));
  card_->layout()->invalidate();
  card_->setMaximumSize(most);
  const QSize size = card_->layout()->sizeHint().expandedTo(QSize(most.width() / 2, 0)).boundedTo(most);
  card_->setGeometry(
      QRect(QPoint((place.width() - size.width()) / 2, (place.height() - size.height()) / 2), size));
}

void ControlWindow::paintEvent(QPaintEvent*) {
  scrim_.paint(*this);
}

void ControlWindow::keyPressEvent(QKeyEvent* event) {
  const KeyStroke stroke = classicKey(*event);
  if (auto* button = qobject_cast<QPushButton*>(focusWidget());
      button && stroke.keyCode == host::key::enter) {
    button->click();
    return;
  }
  if (stroke.keyCode == host::key::enter && !refused_.empty())
    return;  // it says why
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

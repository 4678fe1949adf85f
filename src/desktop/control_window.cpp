#include "desktop/control_window.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "adapters/qt/marks.h"
#include "adapters/qt/themed.h"
#include "core/windows/slide_theme.h"
#include "desktop/keys.h"
#include "desktop/panel_view.h"
#include "host/host.h"
#include "render/fonts.h"
#include "render/render.h"

namespace qrn::desktop {

namespace {

constexpr double kWidest = 0.8, kTallest = 0.9;  // of the screen
constexpr int kFewestRows = 3, kMostRows = 5;    // that a list asks room for
constexpr int kFrame = 8, kScrollBar = 18;       // pixels

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
      // Lists share a row by what they hold.
      const bool list = control.kind == host::Control::Kind::list;
      row->addLayout(
          cell,
          !list && (control.place != Place::beside || control.kind == host::Control::Kind::text) ? 1 : 0);
    }
    cell->addWidget(widgetFor(control));
  }
  layout->addWidget(problem_);
  layout->addLayout(footRow());
}

QHBoxLayout* ControlWindow::footRow() {
  auto* foot = new QHBoxLayout;
  foot->setSpacing(px(look::Size::floor) / 2);
  foot->addStretch();
  if (!form_.dismissCaption.empty())
    foot->addWidget(
        dismiss_ = footButton(form_.dismissCaption, form_.dismissIsDefault, &host::ControlForm::dismiss));
  if (!form_.acceptCaption.empty())
    foot->addWidget(accept_ =
                        footButton(form_.acceptCaption, !form_.dismissIsDefault, &host::ControlForm::accept));
  return foot;
}

QPushButton* ControlWindow::footButton(const std::string& caption, bool primary,
                                       void (host::ControlForm::*press)()) {
  auto* button = new QPushButton(card_);
  mnemonics_.add([this, &caption,
                  press] { return press == &host::ControlForm::dismiss && dismissesAlike() ? "" : caption; },
                 [button](const QString& text) { button->setText(text); }, Mnemonics::choosesFirst);
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
  widgets_[control.name] = widget;
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

QLabel* ControlWindow::captionOf(const host::Control& control, QWidget* field) {
  auto* label = new QLabel(field->parentWidget());
  label->setTextFormat(Qt::PlainText);
  label->setBuddy(field);
  mnemonics_.add([&control] { return control.caption; },
                 [label](const QString& text) { label->setText(text); });
  return label;
}

QWidget* ControlWindow::checkBox(host::Control& control) {
  auto* box = new qt::TickBox(render::toColour(theme_.onData), card_);
  mnemonics_.add([&control] { return control.caption; }, [box](const QString& text) { box->setText(text); });
  connect(box, &qt::TickBox::clicked, this, [this, &control](bool on) { took(control, on ? "-1" : "0"); });
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
    auto* button = new QRadioButton(whole);
    mnemonics_.add([&control, place] { return control.choices[place]; },
                   [button](const QString& text) { button->setText(text); });
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
  auto* box = new qt::ChoiceBox(whole);
  for (const std::string& choice : control.choices) box->addItem(render::toQt(choice));
  layout->addWidget(captionOf(control, box));
  layout->addWidget(box, 1);
  whole->setFocusProxy(box);
  connect(box, &qt::ChoiceBox::activated, this,
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
  layout->addWidget(captionOf(control, edit), 1);
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
  auto* view = new PanelView(*control.panel, render::toQt(control.name), whole);
  if (!control.caption.empty())
    layout->addWidget(captionOf(control, view));
  layout->addWidget(view, 1);
  whole->setFocusProxy(view);
  view->changed = [this] {
    if (formStands())
      sync();
  };
  sizes_.push_back([this, view, &control] { fitList(control, *view); });
  syncs_.push_back([view] { view->sync(); });
  return whole;
}

// A list may be as wide as the card, and has half of it where it shares the row; the rows of a grid are
// whole.
void ControlWindow::fitList(const host::Control& control, PanelView& view) {
  const bool grid = !control.panel->columns.empty();
  const int rows = control.rows > 0
                       ? control.rows
                       : std::clamp(static_cast<int>(control.panel->rows().size()), kFewestRows, kMostRows);
  const QMargins edge = card_->layout()->contentsMargins();
  const int room = most().width() - edge.left() - edge.right(), gap = 2 * card_->layout()->spacing();
  view.ensurePolished();
  const int width = std::min(room, view.textWidth() + 2 * kFrame + kScrollBar);
  const int row = std::max(1, view.rowHeight());
  view.setMinimumSize(std::min(width, grid ? room : (room - gap) / 2),
                      std::min(rows, grid ? 1 : kFewestRows) * row + 2 * kFrame);
  view.setWish({width, rows * row + 2 * kFrame});
  if (!grid)
    return;
  // How wide it stands says where its rows wrap and how high they are, and that whether a scroll bar takes of
  // the width.
  for (const bool free : {true, true, false}) {
    placeCard();
    view.setWish({width, view.heightOf(rows, free ? most().height() : view.height())});
  }
}

QWidget* ControlWindow::pushButton(host::Control& control) {
  auto* button = new QPushButton(card_);
  mnemonics_.add([&control] { return control.caption; },
                 [button](const QString& text) { button->setText(text); });
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
  mnemonics_.sync();
  if (dismiss_ != nullptr && accept_ != nullptr)
    dismiss_->setVisible(!dismissesAlike());
  if (const auto wanted = widgets_.find(std::exchange(form_.focus, "")); wanted != widgets_.end())
    wanted->second->setFocus();
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
  const QRect place = stack_.placeForForms();
  scrim_.take(stack_.picture(place, this));
  setGeometry(place);
  card_->ensurePolished();
  fitCard();
}

QSize ControlWindow::most() const {
  return {static_cast<int>(width() * kWidest), static_cast<int>(height() * kTallest)};
}

void ControlWindow::fitCard() {
  for (const auto& one : sizes_) one();
  placeCard();
}

void ControlWindow::placeCard() {
  QLayout& layout = *card_->layout();
  layout.invalidate();
  card_->setMaximumSize(most());
  const QSize size = layout.sizeHint().expandedTo(QSize(most().width() / 2, 0)).boundedTo(most());
  card_->setGeometry(QRect(QPoint((width() - size.width()) / 2, (height() - size.height()) / 2), size));
  layout.activate();
}

void ControlWindow::showEvent(QShowEvent*) {
  fitCard();  // what is hidden does not know yet how wide it is
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

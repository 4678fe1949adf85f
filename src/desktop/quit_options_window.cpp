#include "desktop/quit_options_window.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QSignalBlocker>
#include <algorithm>

#include "adapters/qt/type_scale.h"
#include "desktop/keys.h"
#include "desktop/style.h"
#include "host/host.h"
#include "render/fonts.h"

namespace qrn::desktop {

namespace {

constexpr const char* kSheet =
    "#xyVoteQuitOptions { background: #ffffff; border: 3px solid #0b57a4; }"
    "QLabel { color: #16222f; font-size: %1px; }";

// The list that Up and Down move in has the thick frame.
QString listSheet(bool active, int type) {
  return QString(
             "QListWidget { border: %1; border-radius: 6px; font-size: %2px; outline: none; background: "
             "#ffffff; }"
             "QListWidget::item { border: none; padding: 8px 12px; color: #16222f; }"
             "QListWidget::item:selected { background: #0b57a4; color: #ffffff; }")
      .arg(active ? "3px solid #0b57a4" : "1px solid #c9d1db")
      .arg(type);
}

// How far a key moves in a list of targets; beyond its end is its end.
int stepOf(int keyCode) {
  constexpr int kPage = 10, kAll = 1 << 20;
  switch (keyCode) {
    case host::key::up:
      return -1;
    case host::key::down:
      return 1;
    case host::key::pageUp:
      return -kPage;
    case host::key::pageDown:
      return kPage;
    case host::key::home:
      return -kAll;
    case host::key::end:
      return kAll;
    default:
      return 0;
  }
}

void fill(QListWidget& list, const std::vector<std::string>& lines, int current) {
  const QSignalBlocker quiet(list);
  if (list.count() != static_cast<int>(lines.size())) {
    list.clear();
    for (const std::string& line : lines) {
      auto* item = new QListWidgetItem(render::toQt(line), &list);
      item->setToolTip(item->text());
    }
  }
  list.setCurrentRow(current);
}

}  // namespace

QuitOptionsWindow::QuitOptionsWindow(xyVoteQuitOptions& form, double scale)
    : QWidget(nullptr, Qt::Dialog | Qt::FramelessWindowHint),
      form_(form),
      scale_(scale),
      options_(makeList("options")),
      items_(makeList("List1")),
      assessments_(makeList("List2")),
      targets_(new QWidget(this)) {
  setObjectName("xyVoteQuitOptions");
  setWindowTitle("quorin matrix");
  setStyleSheet(QString(kSheet).arg(px(16)));
  setFocusPolicy(Qt::StrongFocus);
  int number = 0;
  for (const char* caption : xyVoteQuitOptions::captions())
    options_->addItem(QString("%1   %2").arg(++number).arg(caption));
  auto* heading = new QLabel("What next?", this);
  heading->setStyleSheet(QString("font-size: %1px; font-weight: bold;").arg(px(28)));
  auto* hint = new QLabel(
      "Up, Down or a digit choose, Enter takes, Tab goes to the lists, Esc continues voting", this);
  hint->setStyleSheet(QString("color: %1;").arg(look::quietInk.name()));
  auto* lists = new QVBoxLayout(targets_);
  lists->setContentsMargins(0, 0, 0, 0);
  lists->addWidget(new QLabel("Item list", targets_));
  lists->addWidget(items_, 2);
  lists->addWidget(new QLabel("Assessments", targets_));
  lists->addWidget(assessments_, 1);
  auto* row = new QHBoxLayout;
  row->setSpacing(2 * look::grid);
  row->addWidget(options_, 2);
  row->addWidget(targets_, 3);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(32, 24, 32, 24);
  layout->setSpacing(2 * look::grid);
  layout->addWidget(heading);
  layout->addLayout(row, 1);
  layout->addWidget(hint);
  connect(options_, &QListWidget::itemClicked, this, [this] {
    if (formStands())
      form_.choose(static_cast<xyVoteQuitOptions::Option>(options_->currentRow()));
  });
  connect(items_, &QListWidget::currentRowChanged, this, [this](int at) { form_.List1Index = at; });
  connect(assessments_, &QListWidget::currentRowChanged, this, [this](int at) { form_.List2Index = at; });
}

QListWidget* QuitOptionsWindow::makeList(const QString& name) {
  auto* list = new QListWidget(this);
  list->setObjectName(name);
  list->setFocusPolicy(Qt::NoFocus);
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->setTextElideMode(Qt::ElideRight);
  return list;
}

bool QuitOptionsWindow::formStands() const {
  return host::host().forms->find(form_.name) == &form_;
}

void QuitOptionsWindow::sync() {
  const QSignalBlocker quiet(options_);
  options_->setCurrentRow(static_cast<int>(form_.chosen));
  targets_->setVisible(!form_.List1.empty());
  fill(*items_, form_.List1, form_.List1Index);
  fill(*assessments_, form_.List2, form_.List2Index);
  mark();
}

bool QuitOptionsWindow::focusNextPrevChild(bool) {
  return false;
}

void QuitOptionsWindow::keyPressEvent(QKeyEvent* event) {
  const KeyStroke stroke = classicKey(*event);
  const QPointer<QuitOptionsWindow> self(this);
  if (moveInTargets(stroke.keyCode, stroke.shift))
    return;
  if (stroke.keyCode != 0 && formStands())
    form_.Form_KeyDown(stroke.keyCode, stroke.shift);
  if (self && formStands())
    sync();
}

// Tab walks over the three lists; in the lists of targets the keys of a list move, and Enter goes to the
// target.
bool QuitOptionsWindow::moveInTargets(int keyCode, int shift) {
  if (keyCode == host::key::tab && !form_.List1.empty()) {
    const int zones = shift & host::key::shiftMask ? 2 : 1;
    zone_ = static_cast<Zone>((static_cast<int>(zone_) + zones) % 3);
    if (zone_ != Zone::options)
      form_.chosen = xyVoteQuitOptions::goTo;
    sync();
    return true;
  }
  const int step = stepOf(keyCode);
  if (zone_ == Zone::options || step == 0)
    return false;
  int& index = zone_ == Zone::items ? form_.List1Index : form_.List2Index;
  const auto& lines = zone_ == Zone::items ? form_.List1 : form_.List2;
  index = std::clamp(index + step, 0, std::max(0, static_cast<int>(lines.size()) - 1));
  sync();
  return true;
}

void QuitOptionsWindow::mark() {
  options_->setStyleSheet(listSheet(zone_ == Zone::options, px(20)));
  items_->setStyleSheet(listSheet(zone_ == Zone::items, px(20)));
  assessments_->setStyleSheet(listSheet(zone_ == Zone::assessments, px(20)));
}

void QuitOptionsWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (formStands())
    form_.choose(xyVoteQuitOptions::continueVoting);
}

QuitOptionsView::QuitOptionsView(xyVoteQuitOptions& form, WindowStack& stack)
    : stack_(stack), window_(form, qt::typeScale(stack.front())) {
  const QRect screen = stack_.placeForForms();
  const double scale = qt::typeScale(stack_.front());
  const QSize size(std::min(static_cast<int>(960 * scale), screen.width() - 64),
                   std::min(static_cast<int>(560 * scale), screen.height() - 64));
  window_.setGeometry(QRect(screen.center() - QPoint(size.width() / 2, size.height() / 2), size));
}

QuitOptionsView::~QuitOptionsView() {
  stack_.drop(&window_);
}

void QuitOptionsView::show(bool modal) {
  window_.sync();
  window_.setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
  window_.show();
  window_.setFocus();
  stack_.raise(&window_);
}

void QuitOptionsView::hide() {
  window_.hide();
  stack_.drop(&window_);
}

void QuitOptionsView::bringToFront() {
  stack_.raise(&window_);
}

}  // namespace qrn::desktop

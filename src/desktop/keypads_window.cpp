#include "desktop/keypads_window.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/flow_row.h"
#include "desktop/style.h"
#include "render/fonts.h"

namespace qrn::desktop {

namespace {

QString captionOf(const host::JoinAddress& address) {
  QString caption = render::toQt(address.host);
  if (!address.card.empty())
    caption += " (" + render::toQt(address.card) + ")";
  return address.likely ? caption : caption + ", out of most phones' reach";
}

bool isAt(const host::RoomState& room, const host::JoinAddress& address) {
  return room.address.substr(0, room.address.rfind(':')) == address.host;
}

}  // namespace

KeypadsWindow::KeypadsWindow(QWidget* parent, Calls calls)
    : QDialog(parent),
      calls_(std::move(calls)),
      board_(new JoinBoard(this)),
      bar_(new QWidget(this)),
      chooserBar_(new QWidget(bar_)),
      chooser_(new QComboBox(chooserBar_)) {
  setObjectName("keypads");
  setWindowTitle("Keypads");
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(board_, 1);
  layout->addWidget(bar_);
  makeButtons();
  const QSize room = screen()->availableSize() * 0.9;  // a small screen, or one of large pixels
  setMinimumSize(QSize(480, 320).boundedTo(room));
  resize(QSize(960, 640).boundedTo(room));
}

void KeypadsWindow::makeButtons() {
  auto* line = new FlowRow(look::grid, Qt::AlignHCenter);
  auto* chooserRow = new QHBoxLayout(chooserBar_);
  chooserRow->setContentsMargins(0, 0, look::grid, 0);
  auto* label = new QLabel("&Address", chooserBar_);
  label->setBuddy(chooser_);
  chooser_->setPlaceholderText("Choose one");
  chooser_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  chooserRow->addWidget(label);
  chooserRow->addWidget(chooser_);
  connect(chooser_, &QComboBox::activated, this,
          [this](int row) { calls_.choose(room_.candidates.at(static_cast<std::size_t>(row)).host); });
  line->addWidget(chooserBar_);
  const auto button = [&](const QString& caption, const QString& tip, auto action) {
    auto* made = new QPushButton(caption, bar_);
    made->setToolTip(tip);
    connect(made, &QPushButton::clicked, this, action);
    line->addWidget(made);
    return made;
  };
  full_ = button("&Full screen", "Show the code to the room (F11)", [this] { toggleFullScreen(); });
  copy_ = button("&Copy address", "Ctrl+C", [this] { copyAddress(); });
  browser_ = button("Open in &browser", "The same page in this machine's browser, to project it from there",
                    [this] { calls_.openPage(render::toQt(room_.page)); });
  button("Close", "Esc", [this] { close(); });
  full_->setDefault(true);
  full_->setFocus();
  auto* inset = new QVBoxLayout(bar_);
  inset->setContentsMargins(2 * look::grid, look::grid, 2 * look::grid, look::grid);
  inset->addLayout(line);
}

void KeypadsWindow::showRoom(const host::RoomState& room) {
  room_ = room;
  board_->setText(joinText(room));
  fillChooser();
  copy_->setEnabled(!room.address.empty() && room.takesPhones);
  browser_->setEnabled(!room.page.empty());
}

void KeypadsWindow::showNoController(const QString& why) {
  showRoom({});
  board_->setText(noControllerText(why));
}

// A choice is offered where there is one: among several, or of one that is not taken by itself.
void KeypadsWindow::fillChooser() {
  chooser_->clear();
  int current = -1;
  for (const host::JoinAddress& each : room_.candidates) {
    if (isAt(room_, each))
      current = chooser_->count();
    chooser_->addItem(captionOf(each));
  }
  chooser_->setCurrentIndex(current);
  chooserBar_->setVisible(room_.takesPhones &&
                          (chooser_->count() > 1 || (chooser_->count() == 1 && current < 0)));
}

void KeypadsWindow::copyAddress() const {
  if (copy_->isEnabled())
    QGuiApplication::clipboard()->setText("http://" + render::toQt(room_.address) + "/");
}

void KeypadsWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F11)
    toggleFullScreen();
  else if (event->matches(QKeySequence::Copy))
    copyAddress();
  else if (event->key() == Qt::Key_Escape && isFullScreen())
    toggleFullScreen();
  else
    QDialog::keyPressEvent(event);
}

void KeypadsWindow::toggleFullScreen() {
  const bool full = !isFullScreen();
  bar_->setVisible(!full);
  full ? showFullScreen() : showNormal();
  full ? setFocus() : full_->setFocus();
}

}  // namespace qrn::desktop

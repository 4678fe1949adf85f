#include "desktop/deck_window.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QSplitter>
#include <QStatusBar>
#include <QVBoxLayout>

#include "base/errors.h"
#include "desktop/flow_row.h"
#include "desktop/style.h"
#include "render/fonts.h"

namespace qrn::desktop {

namespace {

constexpr int kListWidth = 52 * look::grid;

constexpr const char* kKeysText =
    "Deck window\n"
    "F5\tStart the slide show from the beginning\n"
    "Shift+F5\tStart it from this slide\n"
    "Enter\tRun the exercise of this slide\n"
    "Ctrl+K\tShow where phones join\n"
    "Ctrl+O, Ctrl+S\tOpen a deck, save the deck\n\n"
    "Slide show\n"
    "Right, Space, N\tNext slide\n"
    "Left, Backspace, P\tPrevious slide\n"
    "12 Enter\tGo to slide 12\n"
    "B, W\tBlack screen, white screen\n"
    "Esc\tLeave";

QLabel* heading(const QString& text, int pixels, QWidget* parent) {
  auto* label = new ElidedLabel(text, parent);
  QFont font("Arial");
  font.setPixelSize(pixels);
  font.setBold(true);
  label->setFont(font);
  label->setTextFormat(Qt::PlainText);
  return label;
}

}  // namespace

void PictureView::setPicture(const QImage& image) {
  image_ = image;
  scaled_ = QPixmap();
  update();
}

void PictureView::paintEvent(QPaintEvent*) {
  if (image_.isNull())
    return;
  QPainter painter(this);
  const double ratio = devicePixelRatioF();
  const QSize inside = image_.size().scaled(size() - QSize(2, 2), Qt::KeepAspectRatio);
  const QSize pixels = (QSizeF(inside) * ratio).toSize();
  if (scaled_.size() != pixels) {
    scaled_ = QPixmap::fromImage(image_.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    scaled_.setDevicePixelRatio(ratio);
  }
  const QPoint at((width() - inside.width()) / 2, 1);
  painter.drawPixmap(at, scaled_);
  painter.setPen(look::line);
  painter.drawRect(QRect(at, inside).adjusted(-1, -1, 0, 0));
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.drawText(rect(), static_cast<int>(alignment()),
                   painter.fontMetrics().elidedText(text(), Qt::ElideRight, width()));
}

DeckWindow::DeckWindow(SlidePictures& pictures, ExerciseFactsOf factsOf, Calls calls)
    : pictures_(pictures),
      model_(pictures, std::move(factsOf)),
      calls_(std::move(calls)),
      pages_(new QStackedWidget),
      notice_(new NoticeBar(this)),
      line_(new QLabel(this)),
      place_(new QLabel(this)) {
  setObjectName("deckWindow");
  auto* centre = new QWidget(this);
  auto* layout = new QVBoxLayout(centre);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(notice_);
  layout->addWidget(pages_, 1);
  setCentralWidget(centre);
  statusBar()->addWidget(line_, 1);
  statusBar()->addPermanentWidget(place_);
  statusBar()->setSizeGripEnabled(false);
  statusBar()->setContentsMargins(look::grid, 4, look::grid, 4);
  makeEmptyPage();
  makeDeckPage();
  makeMenus();
  resize(1280, 800);
  setMinimumSize(60 * look::grid, 40 * look::grid);
  setDeck(nullptr);
}

void DeckWindow::setDeck(host::Presentation* deck) {
  deck_ = deck;
  notice_->say(NoticeBar::Kind::note, "");
  model_.setDeck(deck);
  showWhatCanBeDone();
  pages_->setCurrentIndex(deck ? 1 : 0);
  if (!deck) {
    setWindowTitle("quorin matrix");
    place_->clear();
    say("");
    giveFocusBack();
    return;
  }
  const QFileInfo file(render::toQt(deck->FullName()));
  setWindowTitle(file.fileName() + " - quorin matrix");
  place_->setText(file.absolutePath());
  if (deck->ReadOnly())
    notice_->say(NoticeBar::Kind::note,
                 "This deck is open for reading only. Exercises can be shown; votes cannot be stored in it.");
  list_->setCurrentIndex(model_.index(0));
  list_->setFocus();
  showCurrent();
}

void DeckWindow::slidesChanged() {
  if (!deck_)
    return;
  const int at = SlideIndex();
  model_.slidesChanged();
  if (at > 0)
    list_->setCurrentIndex(model_.index(std::min(at, model_.rowCount()) - 1));
  showCurrent();
}

void DeckWindow::pictureArrived(int slide) {
  model_.pictureArrived(slide);
  if (slide == SlideIndex())
    picture_->setPicture(pictures_.picture(slide));
}

void DeckWindow::setBusy(bool busy) {
  if (busy && !busy_)
    focusBefore_ = focusWidget();
  busy_ = busy;
  menuBar()->setEnabled(!busy);
  pages_->setEnabled(!busy);
  showWhatCanBeDone();
  if (!busy)
    giveFocusBack();
}

void DeckWindow::say(const QString& line) {
  line_->setText(line);
}

void DeckWindow::sayProgress(const QString& line) {
  if (line.isEmpty() && line_->text() != progress_)
    return;
  progress_ = line;
  say(line);
  line_->repaint();
}

int DeckWindow::SlideIndex() const {
  return list_->currentIndex().isValid() ? list_->currentIndex().row() + 1 : 0;
}

void DeckWindow::GotoSlide(int index) {
  if (index < 1 || index > model_.rowCount())
    throw HostError(Fault::program, 9, "There is no slide " + std::to_string(index));
  list_->setCurrentIndex(model_.index(index - 1));
  list_->scrollTo(list_->currentIndex());
}

bool DeckWindow::event(QEvent* event) {
  const bool handled = QMainWindow::event(event);
  if (event->type() == QEvent::WindowActivate && !busy_ && (!focusWidget() || focusWidget() == this))
    giveFocusBack();
  return handled;
}

// To where it was before the run, else to what one begins with.
void DeckWindow::giveFocusBack() {
  QWidget* to = deck_ ? static_cast<QWidget*>(list_) : openButton_;
  if (focusBefore_ && focusBefore_->isVisibleTo(this) && focusBefore_->isEnabled())
    to = focusBefore_;
  focusBefore_ = nullptr;
  to->setFocus();
}

void DeckWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (busy_)
    say("An exercise is running. End it first, then close the deck.");
  else
    calls_.leave();
}

QAction* DeckWindow::action(QMenu* menu, const QString& text, const QList<QKeySequence>& keys,
                            const QString& tip, std::function<void()> call, bool needsDeck) {
  QAction* made = menu->addAction(text);
  made->setShortcuts(keys);
  made->setToolTip(tip);
  made->setStatusTip(tip);
  connect(made, &QAction::triggered, this, [run = std::move(call)] { run(); });
  if (needsDeck)
    deckActions_ << made;
  return made;
}

void DeckWindow::makeMenus() {
  QMenu* file = menuBar()->addMenu("&File");
  action(file, "&Open a deck...", {QKeySequence("Ctrl+O")}, "Open a presentation file", calls_.open, false);
  action(file, "&Save", {QKeySequence("Ctrl+S")}, "Write votes and settings into the deck", calls_.save,
         true);
  file->addSeparator();
  action(file, "&Quit", {QKeySequence("Ctrl+Q")}, "Leave quorin matrix", calls_.leave, false);
  QMenu* show = menuBar()->addMenu("&Slide show");
  action(
      show, "From the &beginning", {QKeySequence("F5")}, "Start the slide show with the first slide",
      [this] { calls_.startShow(0); }, true);
  action(
      show, "From &this slide", {QKeySequence("Shift+F5")}, "Start the slide show here",
      [this] { calls_.startShow(SlideIndex()); }, true);
  QMenu* exercise = menuBar()->addMenu("&Exercise");
  exerciseAction_ = action(
      exercise, "&Run the exercise", {QKeySequence("Ctrl+Return"), QKeySequence("Ctrl+Enter")},
      "Start the slide show here and run the exercise of this slide (Enter in the list)",
      [this] { openExercise(); }, true);
  action(exercise, "&Keypads...", {QKeySequence("Ctrl+K")}, "Show where phones join", calls_.showKeypads,
         false);
  QMenu* help = menuBar()->addMenu("&Help");
  action(
      help, "&Keys", {QKeySequence("F1")}, "The keys of this window and of the slide show",
      [this] { showKeys(); }, false);
}

QPushButton* DeckWindow::button(const QString& text, const QString& tip, std::function<void()> call) {
  auto* made = new QPushButton(text);
  made->setToolTip(tip);
  made->setAutoDefault(true);  // Enter takes the one that has the focus
  connect(made, &QPushButton::clicked, this, [run = std::move(call)] { run(); });
  return made;
}

void DeckWindow::makeEmptyPage() {
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  layout->setSpacing(2 * look::grid);
  auto* title = heading("No deck is open", 32, page);
  title->setAlignment(Qt::AlignCenter);
  auto* text = new QLabel("Open a presentation to run the exercises on its slides.", page);
  text->setAlignment(Qt::AlignCenter);
  openButton_ = button("&Open a deck...   Ctrl+O", "Open a presentation file (.pptx)", calls_.open);
  openButton_->setDefault(true);
  layout->addStretch(2);
  layout->addWidget(title);
  layout->addWidget(text);
  layout->addSpacing(look::grid);
  layout->addWidget(openButton_, 0, Qt::AlignHCenter);
  layout->addStretch(3);
  pages_->addWidget(page);
}

void DeckWindow::makeDeckPage() {
  auto* splitter = new QSplitter(Qt::Horizontal);
  splitter->setHandleWidth(look::grid);
  splitter->setChildrenCollapsible(false);
  list_ = new QListView(splitter);
  list_->setObjectName("slides");
  list_->setModel(&model_);
  list_->setItemDelegate(new SlideListDelegate(model_, list_));
  list_->setUniformItemSizes(true);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setMinimumWidth(20 * look::grid);
  list_->setStyleSheet(
      "QListView { border: none; background: palette(window); outline: none; padding: 4px; }");
  list_->setAccessibleName("Slides");
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { showCurrent(); });
  connect(list_, &QListView::activated, this, [this] { openExercise(); });
  splitter->addWidget(list_);
  splitter->addWidget(makeDetail());
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({kListWidth, 2 * kListWidth});
  pages_->addWidget(splitter);
}

QWidget* DeckWindow::makeDetail() {
  auto* detail = new QWidget;
  auto* layout = new QVBoxLayout(detail);
  layout->setContentsMargins(2 * look::grid, 2 * look::grid, 3 * look::grid, 2 * look::grid);
  layout->setSpacing(look::grid);
  title_ = heading("", look::titleType, detail);
  facts_ = new QLabel(detail);
  facts_->setTextFormat(Qt::PlainText);
  facts_->setWordWrap(true);
  facts_->setStyleSheet(QString("color: %1;").arg(look::quietInk.name()));
  picture_ = new PictureView(detail);
  auto* row = new FlowRow(look::grid);
  exerciseButton_ = button("&Run exercise",
                           "Start the slide show here and run the exercise of this slide (Enter in the list)",
                           [this] { openExercise(); });
  showButton_ = button("Start sho&w", "From the beginning (F5)", [this] { calls_.startShow(0); });
  row->addWidget(exerciseButton_);
  row->addWidget(showButton_);
  row->addWidget(button("From &this slide", "Start the slide show here (Shift+F5)",
                        [this] { calls_.startShow(SlideIndex()); }));
  row->addWidget(button("&Keypads", "Show where phones join (Ctrl+K)", calls_.showKeypads));
  layout->addWidget(title_);
  layout->addWidget(facts_);
  layout->addWidget(picture_, 1);
  layout->addSpacing(look::grid);
  layout->addLayout(row);
  return detail;
}

void DeckWindow::showCurrent() {
  const int slide = SlideIndex();
  if (!deck_ || slide == 0)
    return;
  const SlideRow& row = model_.row(slide);
  title_->setText(row.title);
  title_->setToolTip(row.title);
  QString facts = QString("Slide %1 of %2").arg(slide).arg(model_.rowCount());
  if (row.hidden)
    facts += " · hidden in the show";
  facts += row.exercise ? " · exercise with " + factsLine(*row.exercise) : QString(" · no exercise");
  facts_->setText(facts);
  showWhatCanBeDone();
  picture_->setPicture(pictures_.picture(slide));
}

// One button stands out: what one most likely comes to this slide for.
void DeckWindow::showWhatCanBeDone() {
  const bool ready = deck_ && !busy_;
  const bool exercise = ready && SlideIndex() > 0 && model_.row(SlideIndex()).exercise;
  for (QAction* one : deckActions_) one->setEnabled(ready);
  exerciseAction_->setEnabled(exercise);
  exerciseButton_->setEnabled(exercise);
  exerciseButton_->setDefault(exercise);
  showButton_->setDefault(!exercise);
}

void DeckWindow::openExercise() {
  const int slide = SlideIndex();
  if (!deck_ || slide == 0 || busy_)
    return;
  if (model_.row(slide).exercise)
    calls_.runExercise(slide);
  else
    say(QString("Slide %1 holds no exercise. F5 starts the slide show.").arg(slide));
}

void DeckWindow::showKeys() {
  auto* box = new QMessageBox(QMessageBox::NoIcon, "Keys", "", QMessageBox::Ok, this);
  QString rows;
  for (const QString& line : QString(kKeysText).split('\n')) {
    const QStringList cells = line.toHtmlEscaped().split('\t');
    if (cells.size() == 2)
      rows += "<tr><td style='padding-right:24px'><b>" + cells[0] + "</b></td><td>" + cells[1] + "</td></tr>";
    else
      rows += "<tr><td colspan=2 style='padding-top:12px'>" + cells[0] + "</td></tr>";
  }
  box->setText("<table cellpadding=3>" + rows + "</table>");
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

}  // namespace qrn::desktop

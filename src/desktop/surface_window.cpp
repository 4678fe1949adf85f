#include "desktop/surface_window.h"

#include <QCloseEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QToolTip>
#include <utility>

#include "adapters/qt/themed.h"
#include "core/windows/slide_theme.h"
#include "desktop/keys.h"
#include "host/actions.h"
#include "render/fonts.h"
#include "render/ground.h"

namespace qrn::desktop {

namespace {

constexpr int kCursorHidesAfterMs = 2500;

}  // namespace

SurfaceWindow::SurfaceWindow(host::Form& form, host::FormRegistry& forms, Source source)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint),
      form_(form),
      forms_(forms),
      source_(std::move(source)),
      hideCursor_(new QTimer(this)) {
  setObjectName(render::toQt(form.name));
  setWindowTitle("quorin matrix");
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setCursor(Qt::BlankCursor);
  if (source_.list)
    list_ = new SideList(*source_.list, this);
  if (source_.info)
    info_ = new InfoButton(form_, this);
  if (source_.barShown)
    bar_ = new CommandBar(form_, source_.barShown, this);
  hideCursor_->setSingleShot(true);
  hideCursor_->callOnTimeout(this, [this] {
    if (!source_.cursorHeld || !source_.cursorHeld())
      setCursor(Qt::BlankCursor);
  });
}

// Several changes of one event are caught up with together.
void SurfaceWindow::changed() {
  stale_ = true;
  if (std::exchange(queued_, true))
    return;
  const auto later = [this] {
    queued_ = false;
    catchUp();
  };
  QMetaObject::invokeMethod(this, later, Qt::QueuedConnection);
}

void SurfaceWindow::catchUp() {
  if (!stale_ || !formStands())
    return;
  stale_ = false;
  const QSize before = surfaceSize();
  if (list_)
    listWidth_ = list_->stand();
  if (bar_)
    barHeight_ = bar_->sync(width() - listWidth_);
  if (before != surfaceSize())
    takeSize(size());  // the graph takes what list and bar leave
  if (info_)
    info_->sync(width() - listWidth_);
  const double ratio = devicePixelRatioF();
  const QRegion changed = canvas_.update(source_.surface(), (QSizeF(surfaceSize()) * ratio).toSize(),
                                         (QSizeF(size()) * ratio).toSize());
  if (before != surfaceSize())
    update();
  for (const QRect& part : changed)
    update(QRectF(QPointF(part.topLeft()) / ratio, QSizeF(part.size()) / ratio).toAlignedRect());
}

bool SurfaceWindow::formStands() const {
  return forms_.find(form_.name) == &form_;
}

QPointF SurfaceWindow::toTwips(QPointF place) const {
  return render::Mapping::of(source_.surface(), surfaceSize()).toTwips(place);
}

bool SurfaceWindow::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip)
    return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  host::Hit hit;
  if (formStands()) {
    const QPointF place = toTwips(help->pos());
    hit = host::hitTest(source_.surface(), place.x(), place.y(),
                        [](const host::ElementArray&, const host::Element& e) { return !e.toolTip.empty(); });
  }
  if (hit)
    QToolTip::showText(help->globalPos(), render::toQt(hit.element->toolTip), this);
  else
    QToolTip::hideText();
  return true;
}

// A key may unload the form or start a whole vote, so the form is looked for again before each call.
void SurfaceWindow::keyPressEvent(QKeyEvent* event) {
  const KeyStroke stroke = classicKey(*event);
  const QPointer<SurfaceWindow> self(this);
  if (formStands())
    host::strike(form_, {stroke.keyCode, stroke.shift}, stroke.keyAscii);
  if (self)
    changed();
}

// The form may be gone behind an event, and the window with it.
void SurfaceWindow::tellForm(const std::function<void()>& event) {
  if (!formStands())
    return;
  const QPointer<SurfaceWindow> self(this);
  event();
  if (self)
    changed();
}

void SurfaceWindow::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton && event->button() != Qt::RightButton)
    return;
  const int button = event->button() == Qt::LeftButton ? host::mouse::left : host::mouse::right;
  const QPointF place = toTwips(event->position());
  tellForm([&] { form_.Form_MouseDown(button, place.x(), place.y()); });
}

void SurfaceWindow::mouseMoveEvent(QMouseEvent* event) {
  setCursor(Qt::ArrowCursor);
  hideCursor_->start(kCursorHidesAfterMs);
  if (!event->buttons().testFlag(Qt::LeftButton))
    return;
  const QPointF place = toTwips(event->position());
  tellForm([&] { form_.Form_MouseMove(place.x(), place.y()); });
}

void SurfaceWindow::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton)
    return;
  const QPointF place = toTwips(event->position());
  tellForm([&] { form_.Form_MouseUp(place.x(), place.y()); });
}

void SurfaceWindow::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) {
    mousePressEvent(event);
    return;
  }
  const QPointF place = toTwips(event->position());
  tellForm([&] { form_.Form_DblClick(place.x(), place.y()); });
}

void SurfaceWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  takeSize(event->size());
}

void SurfaceWindow::takeSize(QSize size) {
  changed();
  setStyleSheet(qt::themed(
      "QToolTip { background: @card; color: @text; border: 2px solid @line; padding: @gappx @halfpx; "
      "font-size: @floorpx; }",
      slideTheme(), size.height()));
  const double width = (size.width() - listWidth_) * render::kTwipsPerPixel;
  const double height = (size.height() - barHeight_) * render::kTwipsPerPixel;
  if (!formStands() || (form_.ScaleWidth == width && form_.ScaleHeight == height))
    return;
  form_.ScaleWidth = width;
  form_.ScaleHeight = height;
  form_.Form_Resize();
}

void SurfaceWindow::paintEvent(QPaintEvent* event) {
  catchUp();
  const double ratio = devicePixelRatioF();
  QPainter painter(this);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  for (const QRect& part : event->region() & QRect(QPoint(0, 0), surfaceSize()))
    painter.drawImage(part, canvas_.image(),
                      QRectF(QPointF(part.topLeft()) * ratio, QSizeF(part.size()) * ratio));
  // the ground goes on behind list and bar
  if (const QRegion beside = event->region() - QRect(QPoint(0, 0), surfaceSize());
      formStands() && !beside.isEmpty()) {
    painter.setClipRegion(beside);
    render::drawGround(source_.surface(), painter, size());
  }
}

void SurfaceWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (formStands())
    forms_.unload(form_.name, true);
}

SurfaceView::SurfaceView(host::Form& form, host::FormRegistry& forms, WindowStack& stack,
                         SurfaceWindow::Source source)
    : stack_(stack), name_(form.name), window_(form, forms, std::move(source)) {
  const QRect rect = stack_.placeForForms();
  form.ScaleWidth = rect.width() * render::kTwipsPerPixel;
  form.ScaleHeight = rect.height() * render::kTwipsPerPixel;
  window_.setGeometry(rect);
  stack_.addForm(name_, &window_, [this](const QRect& wanted) { place(wanted); });
}

SurfaceView::~SurfaceView() {
  stack_.removeForm(name_, &window_);
  stack_.drop(&window_);
}

void SurfaceView::place(const QRect& rect) {
  const bool filled = fillsScreen_;
  fillsScreen_ = rect == window_.screen()->geometry();
  if (window_.isVisible() && filled && !fillsScreen_)
    window_.showNormal();
  window_.setGeometry(rect);
  window_.takeSize(rect.size());
  if (window_.isVisible() && !filled && fillsScreen_)
    window_.showFullScreen();
}

void SurfaceView::show(bool modal) {
  window_.changed();
  if (!window_.isVisible()) {
    window_.setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
    fillsScreen_ ? window_.showFullScreen() : window_.show();
  }
  stack_.raise(&window_);
}

void SurfaceView::hide() {
  window_.hide();
  stack_.drop(&window_);
}

void SurfaceView::bringToFront() {
  if (window_.isVisible())
    stack_.raise(&window_);
}

}  // namespace qrn::desktop

#include "desktop/held_keys.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace qrn::desktop {

namespace {

constexpr unsigned long long kSameInstant = 2;  // milliseconds; no finger is that quick

}  // namespace

HeldKeys::HeldKeys() {
  QCoreApplication::instance()->installEventFilter(this);
}

bool HeldKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyRelease) {
    const auto* release = static_cast<QKeyEvent*>(event);
    releasedKey_ = release->key();
    releasedAt_ = release->timestamp();
  }
  if (event->type() != QEvent::KeyPress || !isRepeat(*static_cast<QKeyEvent*>(event)))
    return false;
  const auto* press = static_cast<QKeyEvent*>(event);
  QKeyEvent repeat(QEvent::KeyPress, press->key(), press->modifiers(), press->nativeScanCode(),
                   press->nativeVirtualKey(), press->nativeModifiers(), press->text(), true);
  QCoreApplication::sendEvent(watched, &repeat);
  return true;
}

bool HeldKeys::isRepeat(const QKeyEvent& press) const {
  return !press.isAutoRepeat() && releasedAt_ != 0 && press.key() == releasedKey_ &&
         press.timestamp() - releasedAt_ <= kSameInstant;
}

}  // namespace qrn::desktop

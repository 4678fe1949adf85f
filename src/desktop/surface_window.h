// The one window for every form that is a surface: shows it full screen and turns keys, clicks and sizes into
// calls.
#pragma once

#include <QWidget>
#include <functional>
#include <optional>

#include "desktop/command_bar.h"
#include "desktop/side_list.h"
#include "desktop/window_stack.h"
#include "host/forms.h"
#include "host/surface.h"
#include "render/surface_canvas.h"

class QTimer;

namespace qrn::desktop {

class SurfaceWindow : public QWidget {
 public:
  struct Source {
    std::function<const host::Surface&()> surface;
    std::function<bool()> cursorHeld;    // true while the mouse cursor is to stay in sight
    std::optional<SideListSource> list;  // shown at the right, the surface beside it
    bool info = false;                   // the button for the items without data
    std::function<bool()> barShown;      // whether the form's buttons are to be seen; left out: it has none
  };
  SurfaceWindow(host::Form& form, host::FormRegistry& forms, Source source);

  void changed();             // the surface may have changed: what has is painted again
  void takeSize(QSize size);  // tells the form when it is a new one

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool focusNextPrevChild(bool) override { return false; }  // Tab is a key like any other

 private:
  bool formStands() const;
  void catchUp();  // brings picture, list and button up to the form
  QSize surfaceSize() const { return {width() - listWidth_, height() - barHeight_}; }
  QPointF toTwips(QPointF place) const;  // of the window's pixels on the surface
  void tellForm(const std::function<void()>& event);

  host::Form& form_;
  host::FormRegistry& forms_;
  Source source_;
  render::SurfaceCanvas canvas_;
  bool stale_ = true;    // the picture may be behind the form
  bool queued_ = false;  // it will be looked at soon
  QTimer* hideCursor_;
  SideList* list_ = nullptr;
  InfoButton* info_ = nullptr;
  CommandBar* bar_ = nullptr;
  int listWidth_ = 0, barHeight_ = 0;  // what they take of the graph's place
};

// Attaches a surface window to a form. The form gets the size of its screen before Form_Load.
class SurfaceView : public host::FormView {
 public:
  SurfaceView(host::Form& form, host::FormRegistry& forms, WindowStack& stack, SurfaceWindow::Source source);
  ~SurfaceView() override;
  void show(bool modal) override;
  void hide() override;
  void refresh() override { window_.changed(); }
  void bringToFront() override;

 private:
  void place(const QRect& rect);

  WindowStack& stack_;
  const std::string name_;
  bool fillsScreen_ = true;
  SurfaceWindow window_;
};

// A form type with surface() as a view maker. `more` adds to what its window shows and does.
template <class T>
host::FormRegistry::ViewMaker surfaceViewOf(host::FormRegistry& forms, WindowStack& stack,
                                            std::function<void(T&, SurfaceWindow::Source&)> more = {}) {
  return [&forms, &stack, more](host::Form& form) {
    T& typed = dynamic_cast<T&>(form);
    SurfaceWindow::Source source;
    source.surface = [&typed]() -> const host::Surface& { return typed.surface(); };
    source.cursorHeld = [&stack] { return stack.cursorHeld(); };
    if (more)
      more(typed, source);
    return std::make_unique<SurfaceView>(form, forms, stack, std::move(source));
  };
}

}  // namespace qrn::desktop

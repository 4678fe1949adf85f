#include "core/windows/blank_form.h"

#include <cmath>
#include <vector>

#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/names.h"
#include "host/presentation.h"
#include "host/system.h"

namespace qrn {

namespace {

constexpr int kCheckInterval = 500;  // milliseconds
constexpr int kExportWidth = 1920;   // pixels, when no show says how wide it is
constexpr int kModePlain = 1;        // glo.backgroundMode: one colour; others run from start to end

// The shapes that were visible, hidden for its lifetime.
class HiddenShapes {
 public:
  explicit HiddenShapes(host::Slide& slide) {
    try {
      for (host::Shape* shape : slide.Shapes()) hide(*shape);
    } catch (...) {
      restore();
      throw;
    }
  }
  ~HiddenShapes() { restore(); }
  HiddenShapes(const HiddenShapes&) = delete;
  HiddenShapes& operator=(const HiddenShapes&) = delete;

 private:
  void hide(host::Shape& shape) {
    if (!shape.Visible())
      return;
    hidden_.push_back(&shape);
    shape.SetVisible(false);
  }
  void restore() {
    for (host::Shape* shape : hidden_)
      trapErrors("blankForm", "DoBackground", [&] { shape->SetVisible(true); });
    hidden_.clear();
  }

  std::vector<host::Shape*> hidden_;
};

std::string slidePicture() {
  return glo.matrixPath + "matrix_background.jpg";
}

std::int32_t colourOf(const std::array<int, 3>& parts) {
  return host::RGB(parts[0], parts[1], parts[2]);
}

Background backgroundFromSettings() {
  Background background;
  background.start = colourOf(glo.backgroundStart);
  background.end = colourOf(glo.backgroundEnd);
  background.gradient = glo.backgroundMode != kModePlain;
  if (!glo.backgroundFile.empty() && fileExists(glo.backgroundFile))
    background.file = glo.backgroundFile;
  return background;
}

void drawSlide(host::Slide& slide) {
  const host::WindowRect& show = glo.PowerPointSlideShow_RECT;
  const int width = show.empty() ? kExportWidth : show.width();
  const double ratio = glo.oPresentation->SlideHeight() / glo.oPresentation->SlideWidth();
  const HiddenShapes hidden(slide);
  slide.Export(slidePicture(), "JPG", width, static_cast<int>(std::lround(width * ratio)));
}

}  // namespace

void Background::paintOn(host::Surface& surface) const {
  surface.backgroundFile = file;
  surface.background = start;
  surface.backgroundEnd = end;
  surface.gradient = gradient;
}

blankForm::blankForm()
    : host::Form(formName::blank), tmrCheck4ppt(kCheckInterval, [this] { tmrCheck4ppt_Timer(); }) {}

void blankForm::Form_Load() {
  DoBackground();
}

void blankForm::DoBackground() {
  background = backgroundFromSettings();
  if (glo.usePPTBackground && glo.oVoteSlide && exportSlide())
    background.file = slidePicture();
  surface.width = ScaleWidth;
  surface.height = ScaleHeight;
  background.paintOn(surface);
}

bool blankForm::exportSlide() {
  if (exportedSlideID_ == glo.oVoteSlide->slideID() && fileExists(slidePicture()))
    return true;
  host::host().dialogs->Info("Drawing the background of the slide");
  const bool drawn = trapErrors("blankForm", "DoBackground", [] {
    host::host().files->Kill(slidePicture());  // an older slide's picture is no background for this one
    drawSlide(*glo.oVoteSlide);
  });
  host::host().dialogs->Info("");
  exportedSlideID_ = drawn ? glo.oVoteSlide->slideID() : 0;
  return drawn;
}

void blankForm::tmrCheck4ppt_Timer() {
  const host::PresentationProgram& program = *host::host().presentationProgram;
  if (program.Running() && program.SlideShowWindowsCount() > 0)
    return;
  tmrCheck4ppt.setEnabled(false);
  if (showEnded)
    showEnded();
}

Background currentBackground() {
  const auto* form = dynamic_cast<const blankForm*>(host::host().forms->find(formName::blank));
  return form ? form->background : backgroundFromSettings();
}

void registerBlankForm() {
  host::host().forms->define(formName::blank, [] { return std::make_unique<blankForm>(); });
}

}  // namespace qrn

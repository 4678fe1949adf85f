#include "desktop/slide_show_window.h"

#include "adapters/qt/staged_dialog.h"
#include "desktop/window_case.h"

namespace qrn::test {
namespace {

class SlideShowCase : public WindowCase {
 protected:
  SlideShowCase() : WindowCase(6) {
    pictures.setDeck(&world.presentation);
    on("start", [this](const Words& words) { show.start(words.number(0)), tellPlace(); });
    on("keys", [this](const Words& words) {
      for (const std::string& key : words) press(show, key);
      tellPlace();
    });
    on("goto", [this](const Words& words) { show.GotoSlide(words.number(0)), tellPlace(); });
    on("from", [this](const Words& words) {  // one key each, from that slide
      for (std::size_t i = 1; i < words.size(); ++i) {
        show.GotoSlide(words.number(0));
        press(show, words[i]);
        tell(words[i], " ", show.SlideIndex());
      }
    });
    on("click", [this](const Words&) { QTest::mouseClick(&show, Qt::LeftButton), tellPlace(); });
    on("close", [this](const Words&) { show.close(), tellPlace(); });
    // Slides are 16 to 9: 225 pixels high in a square of 400, and so are dialogs and forms (!: they are not).
    on("letterbox", [this](const Words& words) {
      show.showNormal();
      show.resize(400, 400);
      const QImage image = show.grab().toImage();
      for (const std::string& y : words) tell(image.pixelColor(200, std::stoi(y)).name().toStdString());
      stack.raise(&show);
      const QRect over = qt::StagedDialog(&show).geometry();
      tell(over.height(), " high from ", over.top() - show.y(), stack.placeForForms() == over ? "" : "!");
    });
  }
  void tellPlace() {
    tell((show.isVisible() ? "slide " + std::to_string(show.SlideIndex()) : "closed"),
         (show.blank() ? ", blank" : ""), (show.atEnd() ? ", at the end" : ""), std::exchange(told_, ""));
  }

  desktop::SlidePictures pictures;
  std::string told_;
  desktop::SlideShowWindow show{
      world.presentation,
      pictures,
      {[this](int slide) { told_ += ", runs " + std::to_string(slide); }, [this] { told_ += ", ended"; }}};
};

const bool kRegistered = registerCases<SlideShowCase>("SlideShowCase", QUORIN_CASES "/slide_show.case");

}  // namespace
}  // namespace qrn::test

#include "desktop/pictures/made_up_deck.h"

#include <utility>

#include "adapters/qt/slide_painter.h"
#include "host/names.h"
#include "support/cases.h"

namespace qrn::pictures {

namespace {

struct MadeUpSlide : test::MemorySlide {
  MadeUpSlide(int place, const test::Words& told) : MemorySlide(255 + place, place) {
    title = told[0];
    shapes = {test::MemoryShape("Text", told[1])};
    shapes[0].placeholder = host::PlaceholderType::body;
    hidden = place % 8 == 5;
    if (place % 8 == 3 || place % 8 == 7)
      tagStore.Add(tagName::exercise, "made up");
  }
  void Export(const std::string& file, std::string_view format, int width, int height) override {
    deck::SlideDrawing drawing;
    drawing.background = kDarkScheme.ground;
    drawing.textColour = kDarkScheme.text;
    drawing.title = title;
    std::string line;
    for (const char c : shapes[0].text + "\r")
      if (c == '\r')
        drawing.lines.push_back(std::exchange(line, {}));
      else
        line += c;
    qt::QtSlidePainter().paint(drawing, file, format, width, height);
  }
};

}  // namespace

std::vector<std::string> madeUp(const std::string& name) {
  std::vector<std::string> lines;
  for (const test::CaseText& part : test::readCases(QUORIN_MADE_UP))
    for (const test::CaseStep& line : part.steps)
      if (part.name == name)
        lines.push_back(line.text);
  return lines;
}

MadeUpDeck::MadeUpDeck(int count, const Scheme& colours, bool readOnly)
    : MemoryPresentation(0), readOnly_(readOnly) {
  folder = "/workshops/harbour";
  scheme = {{1, colours.ground}, {2, colours.text}};
  const std::vector<std::string> texts = madeUp("slides");
  for (int i = 0; i < count; ++i)
    slides.push_back(
        std::make_unique<MadeUpSlide>(i + 1, test::Words(texts[static_cast<std::size_t>(i) % texts.size()])));
}

}  // namespace qrn::pictures

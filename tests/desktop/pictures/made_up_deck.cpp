#include "desktop/pictures/made_up_deck.h"

#include <array>
#include <utility>

#include "adapters/qt/slide_painter.h"
#include "host/names.h"

namespace qrn::pictures {

namespace {

struct SlideText {
  const char *title, *text;
};

constexpr std::array<SlideText, 8> kTexts{
    {{"Renewing the harbour front", "A day of choices\rTown hall, upper room"},
     {"What we do today", "Look at twelve proposals\rVote on value and effort\rSee where we agree"},
     {"Which proposals are worth their price?", ""},
     {"A deliberately long title that tells everything there is to be told about the second group of "
      "proposals, "
      "and then some more",
      "It has to be cut somewhere"},
     {"Costs so far", "Dredging 1.2 million\rQuay walls 3.4 million\rLights and benches 0.3 million"},
     {"", "A slide without a title"},
     {"Which risks do we take with us?", ""},
     {"Thank you", "Results will be sent round"}}};

struct MadeUpSlide : test::MemorySlide {
  MadeUpSlide(int place, const SlideText& told) : MemorySlide(255 + place, place) {
    title = told.title;
    shapes = {test::MemoryShape("Text", told.text)};
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

MadeUpDeck::MadeUpDeck(int count, const Scheme& colours, bool readOnly)
    : MemoryPresentation(0), readOnly_(readOnly) {
  folder = "/workshops/harbour";
  scheme = {{1, colours.ground}, {2, colours.text}};
  for (int i = 1; i <= count; ++i)
    slides.push_back(
        std::make_unique<MadeUpSlide>(i, kTexts[static_cast<std::size_t>(i - 1) % kTexts.size()]));
}

}  // namespace qrn::pictures

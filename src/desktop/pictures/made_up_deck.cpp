#include "desktop/pictures/made_up_deck.h"

#include <algorithm>
#include <array>

#include "adapters/qt/slide_painter.h"
#include "host/names.h"

namespace qrn::pictures {

namespace {

std::string upper(std::string_view key) {
  std::string name(key);
  std::transform(name.begin(), name.end(), name.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  return name;
}

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

}  // namespace

std::string MadeUpTags::Item(std::string_view key) const {
  const auto found = values_.find(upper(key));
  return found == values_.end() ? "" : found->second;
}

void MadeUpTags::Add(std::string_view key, std::string_view value) {
  values_[upper(key)] = std::string(value);
}

void MadeUpTags::Delete(std::string_view key) {
  values_.erase(upper(key));
}

std::vector<std::string> MadeUpTags::Names() const {
  std::vector<std::string> names;
  for (const auto& [name, value] : values_) names.push_back(name);
  return names;
}

void MadeUpSlide::Export(const std::string& file, std::string_view format, int width, int height) {
  deck::SlideDrawing drawing;
  drawing.background = kNavyScheme.ground;
  drawing.textColour = kNavyScheme.text;
  drawing.title = title_;
  std::string line;
  for (const char c : shape_.Text() + "\r")
    if (c == '\r')
      drawing.lines.push_back(std::exchange(line, {}));
    else
      line += c;
  qt::QtSlidePainter().paint(drawing, file, format, width, height);
}

MadeUpDeck::MadeUpDeck(int slides, bool readOnly) : readOnly_(readOnly) {
  for (int i = 1; i <= slides; ++i) {
    const SlideText& text = kTexts[static_cast<std::size_t>(i - 1) % kTexts.size()];
    slides_.push_back(std::make_unique<MadeUpSlide>(i, text.title, text.text, i % 8 == 5));
    if (i % 8 == 3 || i % 8 == 7)
      slides_.back()->tags().Add(tagName::exercise, "made up");
  }
}

std::int32_t MadeUpDeck::SchemeColour(int entry) {
  return entry == 1 ? scheme_.ground : entry == 2 ? scheme_.text : -1;
}

}  // namespace qrn::pictures

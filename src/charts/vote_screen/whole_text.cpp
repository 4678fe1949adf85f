#include "charts/vote_screen/whole_text.h"

#include <algorithm>

#include "charts/look/graph_look.h"

namespace qrn {

namespace {

constexpr double kStep = 0.94;
constexpr double kWholeWordsDownTo = 8;  // points; smaller type would rather break a word
constexpr double kSmallest = 1;

std::size_t nextCharacter(const std::string& text, std::size_t at) {
  ++at;
  while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U) ++at;
  return at;
}

bool overlong(const std::string& line, const host::SurfaceFont& font, double width) {
  return textWidth(line, font) > width;
}

// Appends `line` in pieces that fit; a single character stays whole.
void breakInside(const std::string& line, const host::SurfaceFont& font, double width,
                 std::vector<std::string>& lines) {
  std::string piece;
  for (std::size_t at = 0; at < line.size();) {
    const std::size_t next = nextCharacter(line, at);
    const std::string longer = piece + line.substr(at, next - at);
    if (!piece.empty() && overlong(longer, font, width)) {
      lines.push_back(piece);
      piece = line.substr(at, next - at);
    } else {
      piece = longer;
    }
    at = next;
  }
  lines.push_back(piece);
}

// False when a word is too wide and may not be broken.
bool setLines(const std::string& text, const host::SurfaceFont& font, double width, bool breakWords,
              WholeText& result) {
  std::vector<std::string> lines;
  for (const std::string& line : host::wrapText(text, font, width)) {
    if (!overlong(line, font, width))
      lines.push_back(line);
    else if (breakWords)
      breakInside(line, font, width, lines);
    else
      return false;
  }
  result.caption.clear();
  for (std::size_t i = 0; i < lines.size(); ++i) result.caption += (i == 0 ? "" : "\n") + lines[i];
  result.font = font;
  result.lines = static_cast<int>(lines.size());
  result.height = result.lines * lineHeight(font);
  return true;
}

bool setAll(const std::vector<std::string>& texts, const host::SurfaceFont& font, double width, double height,
            double gap, bool breakWords, std::vector<WholeText>& results) {
  results.assign(texts.size(), {});
  double total = texts.empty() ? 0 : static_cast<double>(texts.size() - 1) * gap * lineHeight(font);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (!setLines(texts[i], font, width, breakWords, results[i]))
      return false;
    total += results[i].height;
  }
  return total <= height;
}

}  // namespace

std::vector<WholeText> setWholeTogether(const std::vector<std::string>& texts, const host::SurfaceFont& font,
                                        double width, double height, double gap) {
  std::vector<WholeText> results;
  host::SurfaceFont trial = font;
  for (; trial.size >= std::min(kWholeWordsDownTo, font.size); trial.size *= kStep)
    if (setAll(texts, trial, width, height, gap, false, results))
      return results;
  for (trial.size = font.size; trial.size > kSmallest; trial.size *= kStep)
    if (setAll(texts, trial, width, height, gap, true, results))
      return results;
  trial.size = kSmallest;
  setAll(texts, trial, width, height, gap, true, results);
  return results;
}

WholeText setWhole(const std::string& text, const host::SurfaceFont& font, double width, double height) {
  return setWholeTogether({text}, font, width, height, 0).front();
}

}  // namespace qrn

#include "charts/vote_screen/set_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "base/utf8.h"
#include "charts/look/graph_look.h"

namespace qrn {

namespace {

constexpr const char* kDots = "…";
constexpr double kRounding = 1;  // twips

bool overlong(const std::string& line, const host::SurfaceFont& font, double width) {
  return textWidth(line, font) > width + kRounding;
}

// Appends `line` in pieces that fit; a single character stays whole.
void breakInside(const std::string& line, const host::SurfaceFont& font, double width,
                 std::vector<std::string>& lines) {
  std::string piece;
  for (const std::uint32_t character : characters(line)) {
    std::string longer = piece;
    appendCharacter(longer, character);
    if (!piece.empty() && overlong(longer, font, width)) {
      lines.push_back(piece);
      longer.erase(0, piece.size());
    }
    piece = std::move(longer);
  }
  lines.push_back(piece);
}

struct Lines {
  std::vector<std::string> text;
  bool wordsWhole = true;
};

using Wrap = decltype(&host::wrapText);

Lines linesOf(const std::string& text, const host::SurfaceFont& font, double width,
              Wrap wrap = host::wrapBalanced) {
  Lines lines;
  for (const std::string& line : wrap(text, font, width)) {
    if (overlong(line, font, width)) {
      lines.wordsWhole = false;
      breakInside(line, font, width, lines.text);
    } else {
      lines.text.push_back(line);
    }
  }
  return lines;
}

// The last line that there is room for, shortened by whole words, the only word by its end, until the dots
// fit behind it.
void endAt(std::size_t most, const host::SurfaceFont& font, double width, std::vector<std::string>& lines) {
  lines.resize(most);
  std::string& last = lines.back();
  while (!last.empty() && overlong(last + kDots, font, width)) {
    const std::size_t blank = last.rfind(' ');
    last = blank != std::string::npos ? last.substr(0, blank)
                                      : firstCharacters(last, static_cast<int>(characterCount(last)) - 1);
  }
  last += kDots;
}

// Hebrew, Arabic and their neighbours are the first three blocks; letters of the others run from the left.
bool runsFromRight(const std::string& text) {
  constexpr std::array<std::array<std::uint32_t, 2>, 6> kBlocks{
      {{0x590, 0x8ff}, {0xfb1d, 0xfdff}, {0xfe70, 0xfeff}, {'A', 'Z'}, {'a', 'z'}, {0x80, 0x10ffff}}};
  for (const std::uint32_t c : characters(text)) {
    const auto block = std::find_if(kBlocks.begin(), kBlocks.end(),
                                    [&](const auto& ends) { return c >= ends[0] && c <= ends[1]; });
    if (block != kBlocks.end())
      return block < kBlocks.begin() + 3;
  }
  return false;
}

SetText finished(const std::vector<std::string>& lines, const host::SurfaceFont& font) {
  SetText result;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    result.caption += (i == 0 ? "" : "\n") + lines[i];
    result.width = std::max(result.width, textWidth(lines[i], font));
  }
  result.font = font;
  result.lines = static_cast<int>(lines.size());
  result.height = result.lines * lineHeight(font);
  result.rightToLeft = runsFromRight(result.caption);
  return result;
}

// At the smallest size every text gets an equal share of the lines that there is room for. The lines of one
// that is cut are filled: they say more than even ones.
std::vector<SetText> cutTogether(const std::vector<std::string>& whole, std::vector<Lines> texts,
                                 const host::SurfaceFont& font, double width, double height, double gap) {
  const double line = lineHeight(font);
  const auto count = static_cast<double>(texts.size());
  int most = static_cast<int>(std::floor((height - (count - 1) * gap) / line + 0.01));
  std::vector<std::size_t> given(texts.size(), 1);
  most -= static_cast<int>(texts.size());
  for (bool more = true; more;) {
    more = false;
    for (std::size_t i = 0; i < texts.size() && most > 0; ++i)
      if (given[i] < texts[i].text.size()) {
        ++given[i];
        --most;
        more = true;
      }
  }
  std::vector<SetText> results;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const bool cut = texts[i].text.size() > given[i];
    if (cut) {
      texts[i] = linesOf(whole[i], font, width, host::wrapText);
      endAt(given[i], font, width, texts[i].text);
    }
    results.push_back(finished(texts[i].text, font));
    results.back().whole = !cut;
  }
  return results;
}

}  // namespace

std::vector<SetText> setTogether(const std::vector<std::string>& texts, host::SurfaceFont font,
                                 const std::vector<double>& sizes, double width, double height, double gap) {
  if (texts.empty())
    return {};
  std::vector<Lines> lines;
  for (const double size : sizes) {
    font.size = size;
    lines.clear();
    std::size_t all = 0;
    bool wordsWhole = true;
    for (const std::string& text : texts) {
      lines.push_back(linesOf(text, font, width));
      all += lines.back().text.size();
      wordsWhole = wordsWhole && lines.back().wordsWhole;
    }
    const double needed =
        static_cast<double>(all) * lineHeight(font) + static_cast<double>(texts.size() - 1) * gap;
    if (wordsWhole && needed <= height + kRounding) {
      std::vector<SetText> results;
      for (const Lines& one : lines) results.push_back(finished(one.text, font));
      return results;
    }
  }
  return cutTogether(texts, std::move(lines), font, width, height, gap);
}

SetText setText(const std::string& text, host::SurfaceFont font, const std::vector<double>& sizes,
                double width, double height) {
  return setTogether({text}, std::move(font), sizes, width, height, 0).front();
}

}  // namespace qrn

#include "host/surface.h"

#include <sstream>

#include "host/host.h"
#include "host/system.h"

namespace qrn::host {

Element* Surface::find(const std::string& array, int index) {
  for (Element& element : elements_)
    if (element.index == index && element.array == array)
      return &element;
  return nullptr;
}

std::vector<std::string> wrapText(const std::string& text, const SurfaceFont& font, double width) {
  const TextMeasure& measure = *host().textMeasure;
  const auto fits = [&](const std::string& line) {
    return measure.TextWidth(line, font.name, font.size, font.bold, font.italic) <= width;
  };
  std::vector<std::string> lines;
  std::istringstream paragraphs(text);
  for (std::string paragraph; std::getline(paragraphs, paragraph);) {
    if (!paragraph.empty() && paragraph.back() == '\r')
      paragraph.pop_back();
    std::istringstream words(paragraph);
    std::string line;
    for (std::string word; words >> word;) {
      const std::string longer = line.empty() ? word : line + " " + word;
      if (line.empty() || fits(longer)) {
        line = longer;
      } else {
        lines.push_back(line);
        line = word;
      }
    }
    lines.push_back(line);
  }
  if (lines.empty())
    lines.emplace_back();
  return lines;
}

}  // namespace qrn::host

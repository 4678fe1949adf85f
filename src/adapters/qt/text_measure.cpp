#include "adapters/qt/text_measure.h"

#include "render/fonts.h"

namespace qrn::qt {

double QtTextMeasure::TextWidth(std::string_view text, const std::string& font, double size, bool bold,
                                bool italic) const {
  return render::textWidth(text, font, size, bold, italic);
}

double QtTextMeasure::LineHeight(const std::string& font, double size) const {
  return render::lineHeight(font, size);
}

double QtTextMeasure::Ascent(const std::string& font, double size, bool bold, bool italic) const {
  return render::ascent(font, size, bold, italic);
}

double QtTextMeasure::CapHeight(const std::string& font, double size, bool bold, bool italic) const {
  return render::capHeight(font, size, bold, italic);
}

bool QtTextMeasure::fontInstalled(const std::string& font) const {
  return render::fontInstalled(font);
}

std::vector<std::size_t> QtTextMeasure::breaksInside(std::string_view word) const {
  return render::breaksInside(word);
}

}  // namespace qrn::qt

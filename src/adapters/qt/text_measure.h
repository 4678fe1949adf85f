#pragma once

#include "host/system.h"

namespace qrn::qt {

// Measures with the fonts of the one painter, so what the logic lays out is what is drawn.
class QtTextMeasure : public host::TextMeasure {
 public:
  double TextWidth(std::string_view text, const std::string& font, double size, bool bold,
                   bool italic) const override;
  double LineHeight(const std::string& font, double size) const override;
  double Ascent(const std::string& font, double size, bool bold, bool italic) const override;
  double CapHeight(const std::string& font, double size, bool bold, bool italic) const override;
  bool fontInstalled(const std::string& font) const override;
  std::vector<std::size_t> breaksInside(std::string_view word) const override;
};

}  // namespace qrn::qt

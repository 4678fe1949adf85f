// A deck in memory with made-up slides, for pictures of the windows.
#pragma once

#include "support/memory_presentation.h"

namespace qrn::pictures {

// Ground and text of the slides; red lowest.
struct Scheme {
  std::int32_t ground, text;
};
inline constexpr Scheme kDarkScheme{0x5a2d12, 0xffffff}, kLightScheme{0xfafcfb, 0x2e2014};

// The lines of made_up.case under that name.
std::vector<std::string> madeUp(const std::string& name);

class MadeUpDeck : public test::MemoryPresentation {
 public:
  explicit MadeUpDeck(int count, const Scheme& colours = kDarkScheme, bool readOnly = false);
  std::string FullName() const override { return folder + "/Harbour workshop.pptx"; }
  bool ReadOnly() const override { return readOnly_; }

 private:
  bool readOnly_;
};

}  // namespace qrn::pictures

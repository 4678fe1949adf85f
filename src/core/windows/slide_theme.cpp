#include "core/windows/slide_theme.h"

#include "core/glo.h"
#include "host/presentation.h"

namespace qrn {

look::Theme slideTheme() {
  constexpr int kBackground = 1, kFirstAccent = 5;  // entries of the scheme
  if (glo.oPresentation == nullptr)
    return look::themeFor({});
  return look::themeFor(
      {glo.oPresentation->SchemeColour(kBackground), glo.oPresentation->SchemeColour(kFirstAccent)});
}

}  // namespace qrn

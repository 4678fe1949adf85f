// The slides of a deck in presentation order, and putting a new one among them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "adapters/deck/package.h"

namespace qrn::deck {

struct SlideEntry {
  std::uint32_t id = 0;
  std::string part;  // "" when the deck names none of its own; the part may be missing, too
};

bool isSlideId(std::uint32_t id);                    // that a deck may hold
std::string presentationPartOf(const Parts& parts);  // throws badData when it is no presentation
// Throws badData when the part of a slide is not there.
void requireSlidePart(const Parts& parts, const std::string& part);
std::vector<SlideEntry> slidesOf(const Parts& parts, const std::string& presentation);
// Width and height in points.
struct SlideSize {
  double width = 720, height = 540;
};
SlideSize slideSizeOf(const Parts& parts, const std::string& presentation);

// A slide with an empty title behind slide `after` (0: first), by the deck's title-only layout or else by any
// layout with a title. `id` 0 takes a new one. Throws badData when no layout has a title.
SlideEntry addTitleOnlySlide(Parts& parts, const std::string& presentation, int after, std::uint32_t id);
// The presentation's text with no slide but this one in its list.
std::string presentationOfOneSlide(const Parts& parts, const std::string& presentation, std::uint32_t id);

}  // namespace qrn::deck

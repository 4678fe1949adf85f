#include "adapters/deck/slide_match.h"

namespace qrn::deck {

std::optional<std::size_t> matchSlide(const SlideMark& mark, const std::vector<SlideMark>& slides) {
  std::optional<std::size_t> sameTitle, samePlace;
  int titles = 0;
  for (std::size_t i = 0; i < slides.size(); ++i) {
    if (slides[i].title != mark.title)
      continue;
    if (slides[i].id == mark.id)
      return i;
    if (slides[i].index == mark.index)
      samePlace = i;
    sameTitle = i;
    ++titles;
  }
  if (titles == 1 && !mark.title.empty())
    return sameTitle;
  return samePlace;
}

}  // namespace qrn::deck

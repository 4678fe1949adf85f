// Finding a slide again after another program saved the deck: it may have new ids, or have been moved.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qrn::deck {

struct SlideMark {
  std::uint32_t id = 0;
  int index = 0;  // place, from 1
  std::string title;
};

// Index into `slides` of the slide that the mark means: the same id and title; else the only one with that
// title; else the same place, when its title is the same. Nothing when none fits or several might.
std::optional<std::size_t> matchSlide(const SlideMark& mark, const std::vector<SlideMark>& slides);

}  // namespace qrn::deck

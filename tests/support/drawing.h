// What a surface shows, as lines for case files.
#pragma once

#include <string>
#include <vector>

#include "host/surface.h"

namespace qrn::test {

// A line for the ground and for each array, and one below for each element in sight: its index, place and
// size in twips, and what differs from the element before it in the array. Elements out of sight are counted.
// Of those arrays alone where any are named.
std::string drawingOf(const host::Surface& surface, const std::vector<std::string>& arrays = {});

}  // namespace qrn::test

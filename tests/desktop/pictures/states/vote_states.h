// The states of the vote screen, one line each, for pictures and for measuring.
#pragma once

#include <string>
#include <vector>

#include "charts/vote_screen/vote_model.h"

namespace qrn::pictures {

struct VoteState {
  std::string name;
  host::Surface surface;
};

// All states on a ground, on a screen of so many pixels.
std::vector<VoteState> voteStates(const host::Ground& ground, int width, int height);

// A dark and a light slide of one colour.
host::Ground plainGround(bool dark);

}  // namespace qrn::pictures

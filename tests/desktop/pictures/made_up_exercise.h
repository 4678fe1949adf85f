// Fills `glo` with a made-up exercise and its votes, as a workshop would have left it.
#pragma once

#include "desktop/pictures/made_up_deck.h"

namespace qrn::pictures {

// `items` items, four assessments of `points` points, and votes of `keypads` keypads on all of them. The deck
// must outlive the use of `glo`.
void fillExercise(MadeUpDeck& deck, int items, int points, int keypads);

// Takes the votes of all items but the first `items` away.
void keepVotes(int items);

// Gives what stands in `glo` the words of many scripts.
void translateExercise();

}  // namespace qrn::pictures

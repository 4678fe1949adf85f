// Opening a deck where somebody can be asked.
#pragma once

#include <memory>
#include <string>

#include "adapters/deck/deck.h"

namespace qrn::deck {

// Offers what can be done about a deck that is in use, has a journal that is refused, or has lost its
// exercises and votes to another program. Throws HostError, also when none of it is wanted.
std::unique_ptr<Deck> openAsking(const std::string& file, OpenOptions options);

}  // namespace qrn::deck

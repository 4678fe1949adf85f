// A folder in memory for one fuzzer process, emptied before each input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "adapters/deck/deck.h"

namespace qrn::fuzz {

// Path of the deck in the emptied folder.
std::string freshDeck(std::string_view bytes);
void write(const std::string& path, std::string_view bytes);

// Asks a deck for everything that it has.
void readAll(deck::Deck& deck);
// Opens, reads, stores a tag on every slide, saves, and finds the tags again. Refusals of a bad deck are what
// HostError is for; a deck that was saved and does not read back is a fault, and aborts.
void useDeck(const std::string& file);

}  // namespace qrn::fuzz

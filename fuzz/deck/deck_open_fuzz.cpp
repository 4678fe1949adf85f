// Any bytes as a deck.
#include "deck/scratch.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  qrn::fuzz::useDeck(qrn::fuzz::freshDeck({reinterpret_cast<const char*>(data), size}));
  return 0;
}

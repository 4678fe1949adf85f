// A whole zip file in which one part is any bytes, or a good part with some bytes put in its place.
#include "adapters/deck/deck_fixture.h"
#include "deck/scratch.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 4)
    return 0;
  static const qrn::test::PartList good = qrn::test::deckParts({2, false, false, false, true});
  qrn::test::PartList parts = good;
  std::string& text = parts[data[0] % parts.size()].second;
  const std::string bytes(reinterpret_cast<const char*>(data) + 4, size - 4);
  if (data[1] % 4 == 0) {
    text = bytes;
  } else {
    const std::size_t at = (data[2] * std::size_t{256} + data[3]) % (text.size() + 1);
    text.replace(at, data[1] % 4 == 1 ? 0 : data[1] / 4U, bytes);
  }
  const std::string file = qrn::fuzz::freshDeck("");
  qrn::test::writeZip(file, parts);
  qrn::fuzz::useDeck(file);
  return 0;
}

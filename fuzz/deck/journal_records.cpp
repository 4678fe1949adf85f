#include "deck/journal_records.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <utility>

#include "adapters/deck/bytes.h"
#include "adapters/deck/journal.h"
#include "adapters/deck/splice.h"

namespace qrn::fuzz {

namespace {

using deck::Change;

// The deck of this fuzzer has the slides 300 and 299.
constexpr std::array<std::uint32_t, 8> kSlides = {300, 299, 0, 301, 256, 77, 0x80000000U, 0xFFFFFFFFU};
const std::array<std::string, 8> kNames = {"A",   "B", "QRNVOTES", "A#2", "a", "", std::string("N\0", 2),
                                           "\xC3"};

class Records {
 public:
  Records(std::string_view input, const std::string& fingerprint)
      : input_(input), fingerprint_(fingerprint), journal_(deck::journalHead(fingerprint)) {}

  std::string all() {
    while (!input_.empty()) addRecord();
    return journal_;
  }

 private:
  unsigned byte() {
    if (input_.empty())
      return 0;
    const auto first = static_cast<unsigned char>(input_.front());
    input_.remove_prefix(1);
    return first;
  }

  std::string text() {
    const std::size_t length = std::min<std::size_t>(byte(), input_.size());
    std::string value(input_.substr(0, length));
    input_.remove_prefix(length);
    return value;
  }

  void addRecord() {
    const char kind = kKinds[byte() % kKinds.size()];
    const std::uint32_t slide = kSlides[byte() % kSlides.size()];
    const std::string& name = kNames[byte() % kNames.size()];
    std::uint64_t number = byte();
    std::string value = text();
    std::string& known = values_[{slide, name}];
    if ((kind == '+' || kind == '~') && number % 4 != 3)
      number = known.size();
    if (kind == '~')
      value = spliceOf(known, value);
    if (kind == 'S' && number % 2 == 0)
      value = fingerprint_;
    const std::string payload =
        kind == '!' ? value
                    : deck::journalPayload({static_cast<Change::Kind>(kind), slide, name, value, number});
    follow(kind, known, value);
    journal_ += deck::journalRecord(journal_.size(), payload);
  }

  // Three bytes a place: how far on, how much goes, how much comes.
  std::string spliceOf(const std::string& old, std::string_view places) {
    std::string splice;
    deck::put(splice, deck::checksum(old));
    std::uint32_t at = 0;
    while (places.size() >= 3) {
      const auto on = static_cast<unsigned char>(places[0]), goes = static_cast<unsigned char>(places[1]),
                 comes = static_cast<unsigned char>(places[2]);
      places.remove_prefix(3);
      const std::string_view bytes = places.substr(0, comes);
      places.remove_prefix(bytes.size());
      deck::put(splice, std::uint32_t{at + on});
      deck::put(splice, std::uint32_t{goes});
      deck::put(splice, static_cast<std::uint32_t>(goes == 255 ? 255 : bytes.size()));
      splice += bytes;
      at += on + goes;
    }
    return splice;
  }

  // What the tag holds afterwards, near enough for the next record to fit.
  static void follow(char kind, std::string& known, const std::string& value) {
    if (kind == 'A')
      known = value;
    else if (kind == '+')
      known += value;
    else if (kind == '~')
      known = deck::spliced(known, value).value_or(known);
    else if (kind == 'D')
      known.clear();
  }

  std::string_view input_;
  std::string fingerprint_, journal_;
  std::map<std::pair<std::uint32_t, std::string>, std::string> values_;
};

}  // namespace

std::string journalFrom(std::string_view input, const std::string& fingerprint) {
  return Records(input, fingerprint).all();
}

}  // namespace qrn::fuzz

// Any bytes as the journal of a deck; and changes of every kind, which must be found again.
#include <cstdlib>
#include <map>

#include "adapters/deck/deck_fixture.h"
#include "adapters/deck/journal.h"
#include "deck/scratch.h"

namespace {

using qrn::deck::Deck;

void openBeside(const std::string& file, std::string_view journal) {
  for (const auto other : {qrn::deck::OtherJournal::refuse, qrn::deck::OtherJournal::apply}) {
    qrn::fuzz::write(file + ".journal", journal);
    qrn::deck::OpenOptions options;
    options.otherJournal = other;
    try {
      const auto deck = Deck::open(file, options);
      deck->Slides(1).tags().Append("A", "more");
      deck->Save();
    } catch (const qrn::HostError&) {
    }
  }
}

// Two bytes a step: what to do, and with which tag.
void changesComeBack(const std::string& file, std::string_view steps) {
  std::map<std::string, std::string> expected;
  {
    const auto deck = Deck::open(file);
    qrn::host::Tags& tags = deck->Slides(1).tags();
    for (std::size_t i = 0; i + 1 < steps.size(); i += 2) {
      const std::string name(1, static_cast<char>('A' + (steps[i + 1] & 3)));
      const std::string value(static_cast<std::size_t>(steps[i] & 0x70), 'v');
      if ((steps[i] & 3) == 0) {
        tags.Add(name, value);
        expected[name] = value;
      } else if ((steps[i] & 3) == 1) {
        tags.Delete(name);
        expected.erase(name);
      } else {
        tags.Append(name, value);
        expected[name] += value;
      }
      if ((steps[i] & 0xF) == 15)
        deck->Save();
    }
  }
  const auto deck = Deck::open(file);
  qrn::host::Tags& tags = deck->Slides(1).tags();
  if (tags.Names().size() != expected.size())
    std::abort();
  for (const auto& [name, value] : expected)
    if (tags.Item(name) != value)
      std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0)
    return 0;
  const std::string file = qrn::fuzz::freshDeck("");
  qrn::test::writeZip(file, qrn::test::deckParts({1, false, false, false, false}));
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  if (data[0] % 2 == 0)
    openBeside(file, bytes);
  else
    changesComeBack(file, bytes.substr(0, 100));
  return 0;
}

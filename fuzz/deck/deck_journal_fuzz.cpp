// A journal beside a deck: any bytes, or any records with right checksums. Whatever it says, the deck can be
// opened in one way or another, what was taken from it is saved, and the deck opens again; the journal is
// never lost. And changes of every kind must be found again.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>

#include "adapters/deck/deck_fixture.h"
#include "adapters/deck/package.h"
#include "base/storable.h"
#include "deck/journal_records.h"
#include "deck/scratch.h"

namespace {

using qrn::deck::Deck;
using qrn::deck::OtherJournal;
using qrn::test::readFile;
using qrn::test::stateOf;

void require(bool holds, const char* what) {
  if (holds)
    return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

// The deck that every journal is put beside.
struct GoodDeck {
  GoodDeck() {
    const std::string file = qrn::fuzz::freshDeck("");
    qrn::test::writeZip(file, qrn::test::deckParts({2, false, false, false, false}));
    bytes = readFile(file);
    fingerprint = qrn::deck::Package(file).fingerprint();
    state = stateOf(*Deck::open(file));
  }
  std::string bytes, fingerprint, state;
};

const GoodDeck& good() {
  static const GoodDeck deck;
  return deck;
}

std::unique_ptr<Deck> open(const std::string& file, OtherJournal other, bool readOnly = false) {
  qrn::deck::OpenOptions options;
  options.otherJournal = other;
  options.readOnly = readOnly;
  return Deck::open(file, options);
}

// Once opened, a journal goes on, torn end aside, or is kept under another name, or had nothing to tell.
void requireKept(const std::string& place, const std::string& journal, const std::string& state) {
  if (std::filesystem::exists(place + ".1"))
    require(readFile(place + ".1") == journal, "what was kept aside differs");
  else if (std::filesystem::exists(place))
    require(journal.starts_with(readFile(place)), "the journal was changed and not kept");
  else
    require(state == good().state, "the journal is gone");
}

void openBeside(const std::string& journal, OtherJournal other) {
  const std::string file = qrn::fuzz::freshDeck(good().bytes), place = file + ".journal";
  qrn::fuzz::write(place, journal);
  try {
    std::string read, state;
    if (other != OtherJournal::setAside)
      read = stateOf(*open(file, other, true));
    {
      const auto deck = open(file, other);
      state = stateOf(*deck);
      require(other == OtherJournal::setAside || read == state, "read-only it reads differently");
      requireKept(place, journal, state);
      deck->Slides(1).tags().Append("LAST", "more");
      state = stateOf(*deck);
    }
    {
      const auto deck = open(file, OtherJournal::refuse);
      require(stateOf(*deck) == state, "opened again before saving, it reads differently");
      deck->Save();
    }
    require(!std::filesystem::exists(place), "saved, but the journal is still there");
    require(stateOf(*open(file, OtherJournal::refuse)) == state, "saved, it reads differently");
  } catch (const qrn::deck::JournalRefused&) {
    require(other == OtherJournal::refuse, "refused all the same");
    require(readFile(place) == journal && readFile(file) == good().bytes, "refused, but changed");
  } catch (const qrn::HostError& error) {
    require(false, error.what());
  }
}

// Two bytes a step: what to do, and with which tag.
void changesComeBack(std::string_view steps) {
  const std::string file = qrn::fuzz::freshDeck(good().bytes);
  std::map<std::string, std::string> expected;
  {
    const auto deck = Deck::open(file);
    qrn::host::Tags& tags = deck->Slides(1).tags();
    for (std::size_t i = 0; i + 1 < steps.size(); i += 2) {
      const std::string name(1, static_cast<char>('A' + (steps[i + 1] & 3)));
      const auto length = static_cast<std::size_t>(steps[i] & 0x70),
                 at = static_cast<std::size_t>(steps[i + 1] & 0xFC);
      std::string value(length, static_cast<char>('v' + (at & 4) / 4));
      if ((steps[i] & 3) == 0) {
        tags.Add(name, value);
        expected[name] = value;
      } else if ((steps[i] & 3) == 1) {
        tags.Delete(name);
        expected.erase(name);
      } else if ((steps[i] & 3) == 2) {
        tags.Append(name, value);
        expected[name] += value;
      } else {  // the same value with something else in its middle
        std::string changed = expected[name];
        const std::size_t from = std::min(at, changed.size());
        changed.replace(from, length / 32, "\xC3\xA4" + value.substr(0, length / 16));
        tags.Add(name, changed);
        expected[name] = qrn::storable(changed);
      }
      if ((steps[i] & 0xF) == 15)
        deck->Save();
    }
  }
  const auto deck = Deck::open(file);
  qrn::host::Tags& tags = deck->Slides(1).tags();
  require(tags.Names().size() == expected.size(), "other tags came back");
  for (const auto& [name, value] : expected) require(tags.Item(name) == value, "another value came back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0)
    return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  // The first byte: what the rest is, and what becomes of a journal that does not fit.
  const unsigned kind = data[0] % 4U;
  const auto other = static_cast<OtherJournal>(data[0] / 4U % 3);
  if (kind == 3)
    changesComeBack(bytes.substr(0, 100));
  else if (kind == 2)
    openBeside(std::string(bytes), other);
  else
    openBeside(qrn::fuzz::journalFrom(bytes, kind == 0 ? good().fingerprint : std::string(32, '0')), other);
  return 0;
}

#include "adapters/deck/open_asking.h"

#include <optional>

#include "host/dialogs.h"
#include "host/host.h"

namespace qrn::deck {

namespace {

host::Answer ask(const std::string& question, host::Buttons buttons, std::optional<host::Answer> enter) {
  return host::host().dialogs->MsgBox(question, host::kTitle, buttons, host::Icon::question, enter);
}

bool agreed(const std::string& question) {
  return ask(question, host::Buttons::yesNo, host::Answer::yes) == host::Answer::yes;
}

// What is to be done with the journal; throws it again when nothing is.
OtherJournal askAboutJournal(const JournalRefused& refused, bool readOnly) {
  const std::string question =
      std::string(refused.what()) +
      "\n\nWould you like to store what fits of it in the deck?\n\n"
      "Yes stores it, and keeps the journal beside the deck under another name.\n" +
      (readOnly ? "No opens the deck without it.\n"
                : "No opens the deck without it, and moves the journal aside, to another name.\n") +
      "Cancel changes nothing and opens nothing.";
  const host::Answer answer = ask(question, host::Buttons::yesNoCancel, std::nullopt);
  if (answer != host::Answer::yes && answer != host::Answer::no)
    throw JournalRefused(refused);
  return answer == host::Answer::yes ? OtherJournal::apply : OtherJournal::setAside;
}

void offerRestore(Deck& deck) {
  if (!agreed(
          "The exercises and votes are gone from this deck: another program has saved it without them.\n\n"
          "Would you like to put them back from the backup beside it?"))
    return;
  const RestoreResult result = deck.restoreFromBackup();
  std::string lost;
  for (const std::string& line : result.notPlaced) lost += "\n" + line;
  if (!lost.empty())
    host::host().dialogs->MsgBox("These could not be placed; they stay in the backup:" + lost, host::kTitle);
}

}  // namespace

std::unique_ptr<Deck> openAsking(const std::string& file, OpenOptions options) {
  std::unique_ptr<Deck> deck;
  while (!deck) {
    try {
      deck = Deck::open(file, options);
    } catch (const DeckInUse& error) {
      if (!agreed(std::string(error.what()) + "\n\nWould you like to open it for reading only?"))
        throw;
      options.readOnly = true;
    } catch (const JournalRefused& error) {
      options.otherJournal = askAboutJournal(error, options.readOnly);
    }
  }
  if (!deck->ReadOnly() && deck->tagsDropped())
    offerRestore(*deck);
  return deck;
}

}  // namespace qrn::deck

// What this user's programs note of the decks that they have open for writing, in a folder of the user's
// state: so a deck that was renamed or moved meanwhile is known again, and its journal found, after a kill
// too.
#pragma once

#include <string>
#include <vector>

namespace qrn::deck {

// Names a file whatever its path: device, number and time of birth, or of its last change where no birth is
// known; numbers alone are given anew.
std::string identityOf(int fd);

struct OpenDeck {
  std::string deck, journal;  // paths when it was noted
  std::string identity;
};

// All notes of decks that are open or have a journal; others are taken away.
std::vector<OpenDeck> notedDecks();
// One note for each deck path. Notes are a help: where they cannot be written, nothing is said.
void note(const OpenDeck& deck);
void forget(const std::string& deck);

// Where a journal goes on whose folder is gone: of the user's state, else one made for it. They throw.
std::string stateJournalFolder();
std::string temporaryJournalFolder();

}  // namespace qrn::deck

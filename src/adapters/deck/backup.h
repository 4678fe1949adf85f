// The text beside a deck that holds all its tags: what is left when another program drops them from the deck.
//
//   quorin matrix deck backup 1
//   slide <id> <place> <bytes>       the title follows on the next line; id 0 is the presentation
//   tag <NAME> <bytes>               the value follows on the next line
//   end <CRC-32 in hex of all before this line>
//
// Lines end in LF; counts are bytes, so that any text can stand as title or value. Blanks in names are "%20".
#pragma once

#include <string>
#include <vector>

#include "adapters/deck/slide_match.h"
#include "adapters/deck/tags_part.h"

namespace qrn::deck {

struct BackupSlide {
  SlideMark mark;
  std::vector<Tag> tags;
};

std::string backupText(const std::vector<BackupSlide>& slides);
// Throws badData naming `file` when the text is no whole backup.
std::vector<BackupSlide> parseBackup(const std::string& text, const std::string& file);

std::string backupOf(const std::string& deck);  // its file
// What the backup has is replaced only by a deck that had it: an older backup is first put aside under a
// number when `keepOld`.
void writeBackup(const std::string& deck, const std::string& text, bool keepOld);

}  // namespace qrn::deck

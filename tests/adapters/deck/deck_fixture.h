// Small decks made in memory, with the traps that real decks hold: comments, blank-only runs, raw line ends,
// a shape's own tags, ids out of order, notes under another number than their slide.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/presentation.h"
#include "support/disk.h"

namespace qrn::test {

using PartList = std::vector<std::pair<std::string, std::string>>;

struct DeckOptions {
  int slides = 3;
  bool strict = false;    // namespaces of the strict dialect
  bool bom = false;       // XML parts begin with a byte-order mark
  bool absolute = false;  // targets of slides begin with a slash
  bool tagged = false;    // slide 1 and the presentation have tag lists of another program
};

PartList deckParts(const DeckOptions& options = {});
std::string& part(PartList& parts, const std::string& name);
void writeZip(const std::string& path, const PartList& parts);
// In the file's order; the bytes as they are packed when `packed`.
PartList readZip(const std::string& path, bool packed = false);
std::string changeOf(const std::string& before, const std::string& after);  // between what is the same
std::string replaced(std::string text, std::string_view what, std::string_view by);  // must occur

// All tags, by owner (the presentation, then slide after slide) and by name: "A=a;|B=b;||" for two slides.
std::string stateOf(host::Presentation& deck);

// A folder, and one beside it where open decks are noted.
class TempFolder : public Folder {
 public:
  TempFolder();
  ~TempFolder();
  std::string deck(const DeckOptions& options = {}) const;  // writes `talk.pptx`, gives its path
};

}  // namespace qrn::test

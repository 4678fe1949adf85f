// A `.pptx` file as the presentation. Tag changes go to a journal beside the deck before the call returns;
// the deck itself is rewritten in Save() only, and everything in it that is not ours stays byte for byte.
//
// Beside `talk.pptx` may stand: `talk.pptx.journal` (tag changes not yet in the deck), `talk.pptx.backup`
// (text of all tags, written at Save) and, while it is open for writing, `talk.pptx.lock`.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/errors.h"
#include "host/presentation.h"

namespace qrn::deck {

// What a picture of a slide shows when no office program can draw it.
struct SlideDrawing {
  std::int32_t background = 0xffffff;  // red lowest
  std::int32_t textColour = 0;         // red lowest
  std::string title;
  std::vector<std::string> lines;  // the other visible texts, one paragraph each
};

class SlidePainter {
 public:
  virtual ~SlidePainter() = default;
  // Paints to `file`, width x height pixels, in `format` ("PNG" or "JPG"). Throws HostError.
  virtual void paint(const SlideDrawing& drawing, const std::string& file, std::string_view format, int width,
                     int height) = 0;
};

// What to do with a journal that was written for another state of the deck: the deck was changed by another
// program after votes were stored, or another deck was put in its place.
enum class OtherJournal {
  refuse,   // open() throws JournalRefused and touches nothing
  apply,    // store its changes by slide (id and title, else title, else place)
  setAside  // rename it to `<deck>.journal.N` and open without it
};

struct OpenOptions {
  bool readOnly = false;                    // takes no lock, writes nothing
  SlidePainter* fallbackPainter = nullptr;  // must outlive the deck
  std::string cacheFolder;                  // pictures; "" uses `quorin-matrix` in the user's cache folder
  OtherJournal otherJournal = OtherJournal::refuse;
  // Told a text for the user when the disk failed and storing went on all the same. Called in the midst of a
  // change: it must not touch the deck, nor let anything run that does.
  std::function<void(const std::string&)> tell = {};
};

// Another program of the house has the deck open for writing. Opening it read-only works.
class DeckInUse : public HostError {
 public:
  using HostError::HostError;
};

// See OtherJournal. The journal is kept as it is.
class JournalRefused : public HostError {
 public:
  JournalRefused(const std::string& message, int changes)
      : HostError(Fault::badData, 0, message), changes_(changes) {}
  int changes() const { return changes_; }  // stored changes that wait in it

 private:
  int changes_;
};

struct RestoreResult {
  int tags = 0;                        // put back
  std::vector<std::string> notPlaced;  // one line for each slide that was not found again
};

class Deck : public host::Presentation {
 public:
  // Opens and, unless read-only, locks the deck and replays its journal. Throws HostError, its message naming
  // the file: badData for what is no usable deck (broken, encrypted, signed, not a deck), world for what
  // cannot be read; DeckInUse; JournalRefused. Nothing is changed when it throws.
  static std::unique_ptr<Deck> open(const std::string& file, OpenOptions options = {});

  // False when there is no LibreOffice or it failed: pictures then come from the fallback painter.
  virtual bool picturesByLibreOffice() = 0;

  // A text for the user when another program has dropped the tags, or has the deck open and may do so.
  virtual std::optional<std::string> foreignSaveWarning() = 0;
  // Whether a backup beside the deck has tags and the deck has none of them any more.
  virtual bool tagsDropped() = 0;
  // Puts back the tags that the backup has and the deck has not. Throws HostError when there is no backup.
  virtual RestoreResult restoreFromBackup() = 0;
};

}  // namespace qrn::deck

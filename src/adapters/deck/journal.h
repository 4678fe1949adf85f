// The journal beside a deck: every tag change, on the disk before the change counts as made.
//
//   head    8 bytes "QRNJRNL1", 32 bytes: the fingerprint of the deck that the changes apply to, CRC-32
//   record  u32 payload length, u32 CRC-32 (over the record's place in the file, the length, the payload),
//           payload: u8 kind, u32 slide id (0: the presentation), u64 number, u16 name length, name, value
//
// Numbers are little-endian. Kinds:
//   'A' add        value replaces the tag
//   '+' append     value goes behind the first `number` bytes of the tag
//   '~' splice     the tag, now `number` bytes long, is changed as value tells (see splice.h)
//   'D' delete
//   'T' slide      before the first change to a slide: its title as value, its place as number
//   'N' new slide  a title-only slide with this id was put behind slide `number`
//   'S' saved      the deck with all changes so far has the fingerprint in value
// A whole record of another kind, or with a name longer than itself, is told of and never applied.
//
// Saving loses nothing and stores nothing twice, wherever it is cut off:
//   1. the new deck is written under a hidden name and flushed      cut here: old deck, whole journal
//   2. 'S' with the new deck's fingerprint is appended and flushed  cut here: the same; 'S' is passed over
//   3. the new deck is renamed over the old one, folder flushed     cut here: the deck is the one that 'S'
//      names, so only what follows 'S' is replayed: nothing
//   4. the journal is removed, folder flushed
// Opening compares the deck with the head (replay all), then with each 'S' (replay what follows the last that
// fits). A journal that fits in neither way belongs to another state of the deck and is not touched.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/disk.h"

namespace qrn::deck {

struct Change {
  enum class Kind : char {
    add = 'A',
    append = '+',
    splice = '~',
    remove = 'D',
    slide = 'T',
    newSlide = 'N',
    saved = 'S',
    unreadable = '?'  // only as read: a record that says nothing known
  };
  Kind kind = Kind::add;
  std::uint32_t slide = 0;
  std::string_view name, value;
  std::uint64_t number = 0;
};

// A journal as read. Its changes point into its bytes.
struct JournalContent {
  JournalContent() = default;
  JournalContent(JournalContent&&) = default;
  JournalContent& operator=(JournalContent&&) = default;

  std::string bytes;
  std::string state;            // fingerprint in the head
  std::vector<Change> changes;  // whole records in order
  std::size_t wholeEnd = 0;     // end of the last whole record; 0 when not even the head is whole
  bool damaged = false;         // a broken record stands before whole ones, or the head is broken

  // First change that the deck with this fingerprint does not hold yet; none when it is not its journal.
  std::optional<std::size_t> firstPending(const std::string& fingerprint) const;
  int changeCount(std::size_t from = 0) const;  // without the marks 'T' and 'S'
};

// Nothing when there is no such file. Throws HostError(world) when it cannot be read.
std::optional<JournalContent> readJournal(const std::string& path);
JournalContent parseJournal(std::string bytes);

std::string countOf(int changes);  // "3 stored changes"

// The bytes of a journal. A record is framed for its place in the file: length and checksum before `payload`.
std::string journalHead(const std::string& state);
std::string journalPayload(const Change& change);
std::string journalRecord(std::uint64_t place, std::string_view payload);

// The writing end. The file comes into being with the first record and takes after the deck.
class Journal {
 public:
  Journal(std::string path, std::string deck) : path_(std::move(path)), deck_(std::move(deck)) {}
  const std::string& path() const { return path_; }
  bool started() const { return file_.isOpen(); }
  // False once a write or flush of the file has failed: what it was given then may never reach the disk
  // although a later flush says so. Only writeAnew() puts that right.
  bool sound() const { return sound_; }
  void startAt(std::string state) { state_ = std::move(state); }  // of the next new journal
  void resume(const JournalContent& content);                     // goes on behind the last whole record
  // Returns when the record is on the disk. When it throws, the file is cut to where it ended before.
  void add(const Change& change);
  void writeAnew(const std::vector<Change>& changes);  // in place of what is there, in one step
  void writeAnew(const std::vector<Change>& changes, const std::string& path);  // and goes on there
  void remove();                                                                // the deck holds it all now
  // True when somebody has deleted, moved or changed the file under our hands, or its folder is not there:
  // writeAnew() puts that right.
  bool lost() const;
  // Goes after a file whose folder was renamed.
  void followFolder();
  // The deck stands elsewhere now: the file goes there too, where it may; path() tells where it stands. A
  // journal that stands there already is kept under a number.
  void follow(const std::string& deck);
  // Takes up the journal `path` of the deck, from where the deck stood before.
  void takeUp(const std::string& path);

 private:
  void start();
  void append(const std::string& record);
  bool copyTo(const std::string& path, const std::string& from) const;
  std::string path_, deck_, state_;
  File file_;
  std::uint64_t end_ = 0;
  bool sound_ = true;
};

}  // namespace qrn::deck

// Where the notes of an item end. They are written as they stand, so quotes, commas and line ends inside them
// look like those around them. A named setting of ours tells how long the notes with quotes are; without it,
// in texts of other programs, notes end where a line of eleven flags follows.
#pragma once

#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "core/exercise.h"
#include "store/exercise_text_archive.h"

namespace qrn::mtx {

inline constexpr const char* kNotesLengths = "NotesLengths";

class NotesEnds {
 public:
  explicit NotesEnds(std::string_view text);
  // The closing quote of the notes of an item that begin at `open`; nothing when only the next quote can be
  // meant.
  std::optional<std::size_t> of(std::size_t item, std::size_t open);

 private:
  void readLengths();
  void findLines();
  std::string_view text_;
  std::map<std::size_t, std::size_t> lengths_;
  bool linesKnown_ = false;
  std::vector<std::size_t> ends_;      // quotes that a line of flags follows
  std::vector<std::size_t> openings_;  // quotes with which the notes of an item seem to open
};

// "item:length|" for each item whose notes hold a quote; without such items no line.
void writeNotesLengths(TextWriter& a, Exercise& x);

}  // namespace qrn::mtx

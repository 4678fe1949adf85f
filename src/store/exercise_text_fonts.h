// Font records in the exercise text.
#pragma once

#include <string>

#include "core/records.h"
#include "store/exercise_text_reader.h"

namespace qrn::mtx {

// The name of an installed font: `name`, or "Arial", with a note unless `silent`.
std::string installedFont(ExerciseReader& a, const std::string& name, bool silent);

// Walks over the values of a font. When reading, an empty name leaves the record as it was, and no other
// value of the line is applied; false then.
template <class Archive, class Walk>
bool fontLine(Archive& a, FontRecord& font, Walk walk, bool silent = false) {
  if constexpr (Archive::reading) {
    FontRecord read = font;
    read.name.clear();
    walk(read);
    if (read.name.empty())
      return false;
    read.name = installedFont(a, read.name, silent);
    font = read;
  } else {
    (void)a, (void)silent;
    walk(font);
  }
  return true;
}

template <class Archive>
void font(Archive& a, FontRecord& record, bool silent = false) {
  fontLine(
      a, record,
      [&](FontRecord& f) {
        a.line(T(f.name), D(f.size), B(f.bold), B(f.italic), B(f.underline), B(f.strikethrough), L(f.colour));
      },
      silent);
}

}  // namespace qrn::mtx

#include "store/exercise_text_notes.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace qrn::mtx {
namespace {

constexpr std::size_t kFlags = 11;

std::size_t pastBlanks(std::string_view text, std::size_t at) {
  return std::min(text.find_first_not_of(" \t", at), text.size());
}

// Behind a flag at `at`, else npos.
std::size_t pastFlag(std::string_view text, std::size_t at) {
  for (const std::string_view flag : {"#TRUE#", "#FALSE#"})
    if (text.substr(at, flag.size()) == flag)
      return at + flag.size();
  return std::string_view::npos;
}

// Whether the line end after `at` and a line of flags come next.
bool flagsFollow(std::string_view text, std::size_t at) {
  at = pastBlanks(text, at);
  if (text.substr(at, 2) == "\r\n")
    ++at;
  else if (at == text.size() || (text[at] != '\r' && text[at] != '\n'))
    return false;
  for (std::size_t flag = 0; flag < kFlags; ++flag) {
    if (flag > 0 && (at == text.size() || text[at] != ','))
      return false;
    at = pastFlag(text, pastBlanks(text, at + 1));
    if (at == std::string_view::npos)
      return false;
    at = pastBlanks(text, at);
  }
  return at == text.size() || text[at] == '\r' || text[at] == '\n';
}

// Whether the quote at `at` follows what stands between the text of an item and its notes: `",1,2,#TRUE#,`.
bool opensNotes(std::string_view text, std::size_t at) {
  constexpr std::size_t kLongest = 40;
  const std::string_view before = text.substr(at - std::min(at, kLongest), std::min(at, kLongest));
  const std::size_t quote = before.rfind('"');
  if (quote == std::string_view::npos)
    return false;
  const auto fields = splitFields(before.substr(quote + 1), ',');
  return fields.size() == 5 && trimBlanks(fields[0]).empty() && isNumeric(fields[1]) &&
         isNumeric(fields[2]) && pastFlag(trimBlanks(fields[3]), 0) == trimBlanks(fields[3]).size() &&
         trimBlanks(fields[4]).empty();
}

}  // namespace

NotesEnds::NotesEnds(std::string_view text) : text_(text) {
  readLengths();
}

void NotesEnds::readLengths() {
  const std::string key = "\r\n\"" + std::string(kNotesLengths) + "\",";
  const std::size_t line = text_.rfind(key);
  if (line == std::string_view::npos)
    return;
  TextReader reader(text_.substr(line + key.size()));
  std::string lengths;
  try {
    reader.take(T(lengths));
  } catch (const InputPastEnd&) {
    return;
  }
  for (const std::string_view entry : splitFields(lengths, '|')) {
    const std::size_t colon = entry.find(':');
    if (colon != std::string_view::npos && isNumeric(entry.substr(0, colon)) &&
        isNumeric(entry.substr(colon + 1)))
      lengths_[static_cast<std::size_t>(valueParse(entry.substr(0, colon)))] =
          static_cast<std::size_t>(valueParse(entry.substr(colon + 1)));
  }
}

// Once for a text, when the first notes with a quote are met.
void NotesEnds::findLines() {
  if (std::exchange(linesKnown_, true))
    return;
  for (std::size_t at = text_.find('"'); at != std::string_view::npos; at = text_.find('"', at + 1)) {
    if (flagsFollow(text_, at + 1))
      ends_.push_back(at);
    if (opensNotes(text_, at))
      openings_.push_back(at);
  }
}

std::optional<std::size_t> NotesEnds::of(std::size_t item, std::size_t open) {
  if (const auto told = lengths_.find(item); told != lengths_.end() && told->second < text_.size() - open) {
    const std::size_t end = open + told->second;
    if (flagsFollow(text_, end + 1))
      return end;
  }
  const std::size_t next = text_.find('"', open);
  if (next == std::string_view::npos || flagsFollow(text_, next + 1))
    return std::nullopt;
  findLines();
  const auto end = std::lower_bound(ends_.begin(), ends_.end(), open);
  const auto following = std::lower_bound(openings_.begin(), openings_.end(), open);
  if (end == ends_.end() || (following != openings_.end() && *following < *end))
    return std::nullopt;
  return *end;
}

void writeNotesLengths(TextWriter& a, Exercise& x) {
  std::string lengths, key = kNotesLengths;
  for (int i = 0; i < x.itemCount(); ++i) {
    const std::string& notes = x.risks[static_cast<std::size_t>(i)].notes;
    if (notes.find('"') != std::string::npos)
      lengths += std::to_string(i) + ":" + std::to_string(notes.size()) + "|";
  }
  if (!lengths.empty())
    a.line(T(key), T(lengths));
}

}  // namespace qrn::mtx

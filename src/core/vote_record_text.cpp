#include "core/vote_record_text.h"

#include <algorithm>
#include <charconv>

#include "base/text.h"
#include "core/common.h"

namespace qrn {

namespace {

// A key that the index holds is at most this long on either side of its "C"; any other is looked for by the
// scan.
constexpr std::size_t kMaxHead = 11, kMaxTail = 2;
constexpr std::uint64_t kMinus = 11, kLetterC = 12;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

std::uint64_t digitCode(char c) {
  return static_cast<std::uint64_t>(c - '0') + 1;
}

// Packs sign and digits up to the "C"; 0 when the text does not begin with that. `at` is left behind the "C".
std::uint64_t packHead(std::string_view text, std::size_t& at) {
  std::uint64_t key = 0;
  at = 0;
  if (at < text.size() && text[at] == '-') {
    key = kMinus;
    ++at;
  }
  const std::size_t firstDigit = at;
  while (at < text.size() && at < kMaxHead && isDigit(text[at])) key = (key << 4) | digitCode(text[at++]);
  if (at == firstDigit || at >= text.size() || lowerLetter(text[at]) != 'c')
    return 0;
  ++at;
  return (key << 4) | kLetterC;
}

// The line at `offset` with its line end.
std::string_view wholeLine(std::string_view text, std::size_t offset) {
  const std::size_t end = text.find('\n', offset);
  return text.substr(offset, end == std::string_view::npos ? end : end + 1 - offset);
}

bool endsInCrLf(std::string_view line) {
  if (!line.empty() && line.back() == '\n') {
    if (line.size() < 2 || line[line.size() - 2] != '\r')
      return false;
    line.remove_suffix(2);
  }
  return line.find('\r') == std::string_view::npos && line.find("^|^") == std::string_view::npos;
}

bool lineEndsAreCrLf(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::string_view line = wholeLine(text, at);
    if (!endsInCrLf(line))
      return false;
    at += line.size();
  }
  return true;
}

std::size_t slotOf(std::uint64_t key, std::size_t mask) {
  key *= 0x9E3779B97F4A7C15ULL;
  return static_cast<std::size_t>(key >> 24) & mask;
}

}  // namespace

// Short enough to need no memory of its own.
std::string recordKey(int sortKey, int assessment) {
  char key[32];
  char* end = std::to_chars(key, key + 14, sortKey).ptr;
  *end++ = 'C';
  end = std::to_chars(end, key + sizeof key, assessment).ptr;
  return std::string(key, end);
}

void VoteRecordText::forget() {
  *this = VoteRecordText();
}

void VoteRecordText::assign(std::string text) {
  text_ = std::move(text);
  known_ = true;
  if (indexAnew())
    return;
  HomogoniseLineFeeds(text_);
  indexAnew();
}

bool VoteRecordText::indexAnew() {
  records_ = used_ = 0;
  table_.assign(table_.size(), Entry());
  return indexFrom(0);
}

void VoteRecordText::append(std::string_view line) {
  known_ = true;
  std::size_t from = text_.size();
  if (endsInsideLine()) {
    // The line that is being continued counts once, as a whole.
    const std::size_t lineEnd = text_.rfind('\n');
    from = lineEnd == std::string::npos ? 0 : lineEnd + 1;
    if (indexLine(from, text_.size() - from))
      --records_;
  }
  text_.append(line);
  if (!lineEndsAreCrLf(line))
    assign(std::move(text_));
  else
    indexFrom(from);
}

std::string_view VoteRecordText::lastLine(std::string_view key) const {
  const PackedKey packed = pack(key);
  return packed == 0 ? lastLineByScan(text_, key) : find(packed);
}

std::string_view VoteRecordText::lastLineByScan(std::string_view text, std::string_view key) {
  std::string wanted(1, ',');
  wanted += key;
  std::size_t end = text.size();
  while (true) {
    const std::size_t before = end == 0 ? std::string_view::npos : text.find_last_of("\r\n", end - 1);
    const std::size_t start = before == std::string_view::npos ? 0 : before + 1;
    const std::string_view line = text.substr(start, end - start);
    if (containsWord(line, wanted))
      return line;
    if (start == 0)
      return {};
    end = before;
  }
}

bool VoteRecordText::hasKey(std::string_view line) {
  for (std::size_t comma = line.find(','); comma != std::string_view::npos;
       comma = line.find(',', comma + 1)) {
    const std::string_view behind = line.substr(comma + 1, kMaxHead + 1 + kMaxTail);
    std::size_t at = 0;
    if (packHead(behind, at) != 0 && at < behind.size() && isDigit(behind[at]))
      return true;
  }
  return false;
}

VoteRecordText::PackedKey VoteRecordText::pack(std::string_view key) {
  std::size_t at = 0;
  PackedKey packed = packHead(key, at);
  if (packed == 0 || at == key.size() || key.size() - at > kMaxTail)
    return 0;
  for (; at < key.size(); ++at) {
    if (!isDigit(key[at]))
      return 0;
    packed = (packed << 4) | digitCode(key[at]);
  }
  return packed;
}

// All in one walk, so that each line is looked at while the processor has it near.
bool VoteRecordText::indexFrom(std::size_t offset) {
  bool crLf = true;
  while (offset < text_.size()) {
    const std::string_view line = wholeLine(text_, offset);
    crLf = crLf && endsInCrLf(line);
    std::size_t length = line.size();
    while (length > 0 && (line[length - 1] == '\n' || line[length - 1] == '\r')) --length;
    if (indexLine(offset, length))
      ++records_;
    offset += line.size();
  }
  return crLf;
}

// Every "," with a key behind it makes the line the last one of that key, and of each key that it begins
// with.
bool VoteRecordText::indexLine(std::size_t offset, std::size_t length) {
  const std::string_view line(text_.data() + offset, length);
  bool any = false;
  for (std::size_t comma = line.find(','); comma != std::string_view::npos;
       comma = line.find(',', comma + 1)) {
    const std::string_view behind = line.substr(comma + 1, kMaxHead + 1 + kMaxTail);
    std::size_t at = 0;
    PackedKey key = packHead(behind, at);
    if (key == 0)
      continue;
    for (std::size_t tail = 0; tail < kMaxTail && at < behind.size() && isDigit(behind[at]); ++tail, ++at) {
      key = (key << 4) | digitCode(behind[at]);
      remember(key, offset, length);
      any = true;
    }
  }
  return any;
}

void VoteRecordText::remember(PackedKey key, std::size_t offset, std::size_t length) {
  if (2 * (used_ + 1) > table_.size())
    grow();
  const std::size_t mask = table_.size() - 1;
  std::size_t slot = slotOf(key, mask);
  while (table_[slot].key != 0 && table_[slot].key != key) slot = (slot + 1) & mask;
  used_ += table_[slot].key == 0 ? 1 : 0;
  table_[slot] = {key, offset, length};
}

void VoteRecordText::grow() {
  std::vector<Entry> before(std::max<std::size_t>(64, 2 * table_.size()));
  before.swap(table_);
  const std::size_t mask = table_.size() - 1;
  for (const Entry& entry : before) {
    if (entry.key == 0)
      continue;
    std::size_t slot = slotOf(entry.key, mask);
    while (table_[slot].key != 0) slot = (slot + 1) & mask;
    table_[slot] = entry;
  }
}

std::string_view VoteRecordText::find(PackedKey key) const {
  if (table_.empty())
    return {};
  const std::size_t mask = table_.size() - 1;
  for (std::size_t slot = slotOf(key, mask); table_[slot].key != 0; slot = (slot + 1) & mask)
    if (table_[slot].key == key)
      return std::string_view(text_).substr(table_[slot].offset, table_[slot].length);
  return {};
}

}  // namespace qrn

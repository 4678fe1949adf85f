#include "adapters/deck/journal.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include "adapters/deck/bytes.h"

namespace qrn::deck {

namespace {

constexpr std::string_view kMagic = "QRNJRNL1";
constexpr std::size_t kStateLength = 32, kHeadLength = 8 + kStateLength + 4, kRecordHead = 8,
                      kPayloadHead = 15;
constexpr std::size_t kLongestName = 0xFFFF;

std::uint32_t recordChecksum(std::uint64_t place, std::string_view payload) {
  std::string front;
  put(front, place);
  put(front, static_cast<std::uint32_t>(payload.size()));
  return checksum(payload, checksum(front));
}

bool isKind(char kind) {
  return std::string_view("A+~DTNS").find(kind) != std::string_view::npos;
}

bool nameFits(std::string_view payload) {
  return get<std::uint16_t>(payload, 13) <= payload.size() - kPayloadHead;
}

// End of the whole record at `at`, 0 when there is none.
std::size_t wholeRecordEnd(std::string_view bytes, std::size_t at) {
  if (bytes.size() - at < kRecordHead + kPayloadHead)
    return 0;
  const std::size_t length = get<std::uint32_t>(bytes, at), room = bytes.size() - at - kRecordHead;
  if (length < kPayloadHead || length > room)
    return 0;
  const std::string_view payload = bytes.substr(at + kRecordHead, length);
  const bool whole = get<std::uint32_t>(bytes, at + 4) == recordChecksum(at, payload);
  return whole ? at + kRecordHead + length : 0;
}

Change changeAt(std::string_view bytes, std::size_t at) {
  const std::size_t length = get<std::uint32_t>(bytes, at);
  const std::string_view payload = bytes.substr(at + kRecordHead, length);
  if (!isKind(payload[0]) || !nameFits(payload))
    return {Change::Kind::unreadable, 0, "", "", 0};
  const std::size_t nameLength = get<std::uint16_t>(payload, 13);
  return {static_cast<Change::Kind>(payload[0]), get<std::uint32_t>(payload, 1),
          payload.substr(kPayloadHead, nameLength), payload.substr(kPayloadHead + nameLength),
          get<std::uint64_t>(payload, 5)};
}

// Start of the next whole record behind a broken one. A broken record is torn when nothing whole follows.
std::size_t nextWhole(std::string_view bytes, std::size_t at) {
  for (std::size_t next = at + 1; next + kRecordHead + kPayloadHead <= bytes.size(); ++next) {
    const std::size_t length = get<std::uint32_t>(bytes, next);
    const bool likely = length >= kPayloadHead && length <= bytes.size() - next - kRecordHead &&
                        isKind(bytes[next + kRecordHead]) &&
                        get<std::uint16_t>(bytes, next + kRecordHead + 13) < 256;
    if (likely && wholeRecordEnd(bytes, next) != 0)
      return next;
  }
  return 0;
}

std::uint64_t sizeOf(const File& file) {
  struct stat info {};
  return ::fstat(file.fd(), &info) == 0 ? static_cast<std::uint64_t>(info.st_size) : 0;
}

}  // namespace

std::string journalHead(const std::string& state) {
  std::string head(kMagic);
  head += state;
  put(head, checksum(head));
  return head;
}

std::string journalPayload(const Change& change) {
  if (change.name.size() > kLongestName || change.value.size() > 0x7FFFFFFF)
    throw HostError(Fault::program, 5, "A tag is too long to be stored");
  std::string payload(1, static_cast<char>(change.kind));
  put(payload, change.slide);
  put(payload, change.number);
  put(payload, static_cast<std::uint16_t>(change.name.size()));
  return payload.append(change.name).append(change.value);
}

std::string journalRecord(std::uint64_t place, std::string_view payload) {
  std::string record;
  put(record, static_cast<std::uint32_t>(payload.size()));
  put(record, recordChecksum(place, payload));
  return record.append(payload);
}

std::string countOf(int changes) {
  return changes == 1 ? "one stored change" : std::to_string(changes) + " stored changes";
}

JournalContent parseJournal(std::string bytes) {
  JournalContent content;
  content.bytes = std::move(bytes);
  const std::string_view all = content.bytes;
  const bool headWhole = all.size() >= kHeadLength && all.substr(0, kMagic.size()) == kMagic &&
                         get<std::uint32_t>(all, kHeadLength - 4) == checksum(all.substr(0, kHeadLength - 4));
  if (!headWhole) {
    // No record is written before the head is on the disk: a short file is a head cut off, nothing more.
    content.damaged = all.size() > kHeadLength;
    return content;
  }
  content.state = all.substr(kMagic.size(), kStateLength);
  content.wholeEnd = kHeadLength;
  for (std::size_t at = kHeadLength; at < all.size();) {
    std::size_t end = wholeRecordEnd(all, at);
    if (end == 0) {
      at = nextWhole(all, at);
      if (at == 0)
        break;
      content.damaged = true;
      end = wholeRecordEnd(all, at);
    }
    content.changes.push_back(changeAt(all, at));
    content.wholeEnd = at = end;
  }
  return content;
}

std::optional<JournalContent> readJournal(const std::string& path) {
  if (!exists(path))
    return std::nullopt;
  return parseJournal(readWhole(path));
}

std::optional<std::size_t> JournalContent::firstPending(const std::string& fingerprint) const {
  if (state == fingerprint)
    return 0;
  for (std::size_t i = changes.size(); i > 0; --i)
    if (changes[i - 1].kind == Change::Kind::saved && changes[i - 1].value == fingerprint)
      return i;
  return std::nullopt;
}

int JournalContent::changeCount(std::size_t from) const {
  const auto isMark = [](const Change& change) {
    return change.kind == Change::Kind::slide || change.kind == Change::Kind::saved;
  };
  return static_cast<int>(changes.size() - from) -
         static_cast<int>(
             std::count_if(changes.begin() + static_cast<std::ptrdiff_t>(from), changes.end(), isMark));
}

void Journal::resume(const JournalContent& content) {
  if (::access(path_.c_str(), W_OK) != 0)  // another user's: it goes on as one of this user
    saveText(path_, content.bytes, {deck_});
  File file = File::open(path_, O_WRONLY);
  if (::ftruncate(file.fd(), static_cast<off_t>(content.wholeEnd)) != 0)
    throwDisk("Cannot write", path_);
  flushFile(file.fd(), path_);
  file_ = std::move(file);
  end_ = content.wholeEnd;
}

void Journal::start() {
  file_ = File::open(path_, O_WRONLY | O_CREAT | O_EXCL, 0600);
  end_ = 0;
  try {
    takeAfter(file_.fd(), deck_);
    append(journalHead(state_));
    flushFolderOf(path_);
  } catch (...) {
    file_.close();
    ::unlink(path_.c_str());
    sound_ = true;
    throw;
  }
}

void Journal::add(const Change& change) {
  if (!sound_)
    throw HostError(Fault::program, 57, path_ + " is not to be gone on with");
  const std::string record = journalRecord(started() ? end_ : kHeadLength, journalPayload(change));
  if (!started())
    start();
  append(record);
}

void Journal::writeAnew(const std::vector<Change>& changes) {
  writeAnew(changes, path_);
}

void Journal::writeAnew(const std::vector<Change>& changes, const std::string& path) {
  std::string bytes = journalHead(state_);
  for (const Change& change : changes) bytes += journalRecord(bytes.size(), journalPayload(change));
  saveText(path, bytes, {deck_});
  file_ = File::open(path, O_WRONLY);
  path_ = path;
  end_ = bytes.size();
  sound_ = true;
}

bool Journal::lost() const {
  if (!started())
    return !exists(folderOf(path_));
  return !sameFile(file_.fd(), path_) || sizeOf(file_) != end_;
}

void Journal::followFolder() {
  if (started() && !exists(folderOf(path_)))
    if (const std::string now = placeOf(file_.fd()); !now.empty())
      path_ = now;
}

void Journal::append(const std::string& record) {
  try {
    // Also takes away what a failed write left behind.
    if (::lseek(file_.fd(), static_cast<off_t>(end_), SEEK_SET) < 0)
      throwDisk("Cannot write", path_);
    writeAll(file_.fd(), record, path_);
    flushFile(file_.fd(), path_);
  } catch (...) {
    sound_ = false;
    (void)!::ftruncate(file_.fd(), static_cast<off_t>(end_));
    throw;
  }
  end_ += record.size();
}

void Journal::follow(const std::string& deck) {
  const std::string path = beside(deck, ".journal");
  deck_ = deck;
  if (started() && sameFile(file_.fd(), path)) {
    path_ = path;  // it was moved along, with the whole folder
    return;
  }
  if (exists(path) && ::rename(path.c_str(), freeBeside(deck, ".journal").c_str()) != 0)
    throwDisk("Cannot set aside", path);
  const std::string from = started() ? placeOf(file_.fd()) : "";
  path_ = path;
  if (!from.empty())
    takeUp(from);
}

void Journal::takeUp(const std::string& path) {
  if (::rename(path.c_str(), path_.c_str()) != 0 && (errno != EXDEV || started() || !copyTo(path_, path))) {
    path_ = path;
    return;
  }
  flushFolderOf(path_);
  flushFolderOf(path);
}

// From another disk.
bool Journal::copyTo(const std::string& path, const std::string& from) const {
  try {
    saveText(path, readWhole(from), {deck_});
    ::unlink(from.c_str());
    return true;
  } catch (const HostError&) {
    return false;
  }
}

void Journal::remove() {
  if (!started())
    return;
  if (::unlink(path_.c_str()) != 0 && errno != ENOENT)
    return;  // it stays in use: what follows its last 'S' is what the deck does not hold
  file_.close();
  sound_ = true;
  flushFolderOf(path_);
}

}  // namespace qrn::deck

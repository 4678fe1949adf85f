#include "adapters/deck/open_decks.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "adapters/deck/lock.h"
#include "adapters/deck/package.h"
#include "base/disk.h"

namespace qrn::deck {

namespace {

std::string stateFolder(const std::string& name) {
  const char* state = std::getenv("XDG_STATE_HOME");
  const char* home = std::getenv("HOME");
  if (state != nullptr && *state == '/')
    return std::string(state) + "/quorin-matrix/" + name;
  return home != nullptr && *home == '/' ? std::string(home) + "/.local/state/quorin-matrix/" + name : "";
}

std::string notesFolder() {
  return stateFolder("open");
}

std::string noteOf(const std::string& deck) {
  Digest digest;
  digest.add(deck);
  return notesFolder() + "/" + digest.text();
}

// Paths may hold any character but NUL.
OpenDeck parsed(const std::string& text) {
  const std::size_t first = text.find('\0'), second = text.find('\0', first + 1);
  if (second == std::string::npos)
    return {};
  return {text.substr(0, first), text.substr(first + 1, second - first - 1), text.substr(second + 1)};
}

}  // namespace

std::string identityOf(int fd) {
  struct statx info {};
  if (::statx(fd, "", AT_EMPTY_PATH, STATX_INO | STATX_MTIME | STATX_BTIME, &info) != 0)
    return "";
  const statx_timestamp& time = (info.stx_mask & STATX_BTIME) != 0 ? info.stx_btime : info.stx_mtime;
  std::string text;
  for (const std::uint64_t number :
       {std::uint64_t{info.stx_dev_major}, std::uint64_t{info.stx_dev_minor}, std::uint64_t{info.stx_ino},
        static_cast<std::uint64_t>(time.tv_sec), std::uint64_t{time.tv_nsec}})
    text += std::to_string(number) + " ";
  return text;
}

std::vector<OpenDeck> notedDecks() {
  std::vector<OpenDeck> decks;
  std::error_code error;
  const std::string folder = notesFolder();
  if (folder.empty())
    return decks;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    try {
      OpenDeck deck = parsed(readWhole(entry.path()));
      if (deck.deck.empty())  // being written just now
        continue;
      if (exists(deck.journal) || heldLockOf(deck.deck))
        decks.push_back(std::move(deck));
      else
        ::unlink(entry.path().c_str());
    } catch (const HostError&) {  // gone meanwhile
    }
  }
  return decks;
}

void note(const OpenDeck& deck) {
  const std::string folder = notesFolder();
  if (folder.empty())
    return;
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  std::string text = deck.deck;
  text.append(1, '\0').append(deck.journal).append(1, '\0').append(deck.identity);
  try {
    const bool away = folderOf(deck.journal) != folderOf(deck.deck);
    saveText(noteOf(away ? deck.journal : deck.deck), text, {"", 0600});
  } catch (const HostError&) {  // a deck that is moved is not found again then
  }
}

void forget(const std::string& deck) {
  if (!notesFolder().empty())
    ::unlink(noteOf(deck).c_str());
}

std::string stateJournalFolder() {
  const std::string folder = stateFolder("journals");
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (!std::filesystem::is_directory(folder, error))
    throw HostError(Fault::world, 76, "There is no folder for the state of programs");
  flushFolderOf(folder);
  return folder;
}

std::string temporaryJournalFolder() {
  std::error_code error;
  const std::filesystem::path all = std::filesystem::temp_directory_path(error);
  std::string folder = (error ? "/tmp" : all.string()) + "/quorin-journal-XXXXXX";
  if (::mkdtemp(folder.data()) == nullptr)
    throwDisk("Cannot make", folder);
  return folder;
}

}  // namespace qrn::deck

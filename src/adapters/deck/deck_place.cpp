// Where the deck stands: it may be renamed, moved, deleted or replaced while it is open, or while its journal
// waits for it.
#include <unistd.h>

#include <utility>

#include "adapters/deck/deck_file.h"

namespace qrn::deck {

namespace {

// As long as a program that saves by renaming may leave the name of the deck free.
constexpr unsigned kMomentMicroseconds = 50000;

void moveIfFree(const std::string& from, const std::string& to) {
  if (exists(from) && !exists(to))
    (void)!::rename(from.c_str(), to.c_str());
}

}  // namespace

// "" when it is gone.
std::string DeckFile::standsAt() const {
  return exists(file_) ? file_ : placeOf(package_->fd());
}

// Goes after a deck that was renamed or moved on its disk, with all that stands beside it. False, with the
// reason in away_, when it is not to be had any more.
bool DeckFile::followDeck() {
  if (exists(file_))
    return true;
  if (away_.empty())
    ::usleep(kMomentMicroseconds);
  const std::string now = standsAt();
  if (!now.empty())
    return now == file_ || moveTo(now);
  away_ = " is gone: it was deleted, or moved to another disk, while it was open";
  return false;
}

bool DeckFile::moveTo(const std::string& now) {
  const std::string old = file_, oldName = fullName_;
  try {
    lock_->follow(now);
  } catch (const DeckInUse&) {  // this journal must not meet that of the other program
    away_ = " was renamed or moved to " + now + " while it was open, and another program has opened it there";
    return false;
  }
  package_->movedTo(now);
  file_ = fullName_ = now;
  moveIfFree(backupOf(old), backupOf(now));
  journal_.follow(now);
  forget(old);
  noteOpen();
  tell(oldName + " was renamed or moved to " + now + " while it was open. It is saved there from now on." +
       (journal_.started() ? whereStored() : ""));
  return true;
}

void DeckFile::tellAway() {
  if (!std::exchange(toldAway_, true))
    tell(fullName_ + away_ + "." + whereStored());
}

std::string DeckFile::whereStored() const {
  const bool beside = folderOf(journal_.path()) == folderOf(file_);
  return " What is stored is kept in " + journal_.path() +
         (beside ? " until the deck beside it is saved." : ".");
}

void DeckFile::tell(const std::string& text) {
  warning_ += (warning_.empty() ? "" : "\n") + text;
  if (options_.tell)
    options_.tell(text);
}

// For a save that fails; "" when the deck holds all that was stored.
std::string DeckFile::whereItStays() const {
  return journal_.started() ? " What was stored stays in " + journal_.path() + "." : "";
}

// Before the deck is written: it must be the one that was opened, and may be written.
void DeckFile::requireInPlace() {
  const bool there = followDeck();
  secureJournal();
  const std::string stays = whereItStays();
  if (!there)
    throw HostError(Fault::world, 53,
                    fullName_ + away_ + ". It was not saved." + stays + " Put the deck back as " + file_ +
                        " and open it again.");
  if (ReadOnly())
    throw HostError(Fault::world, 70, fullName_ + " is read-only and was not saved." + stays);
  if (!mayReplace(file_))
    throw HostError(Fault::world, 70, WhyNoVotes() + stays);
  if (!package_->stillOnDisk())
    throw HostError(
        Fault::world, 0,
        fullName_ + " was changed by another program while it was open here, and was not saved." + stays);
}

void DeckFile::noteOpen() const {
  if (!options_.readOnly)
    note({file_, journal_.path(), identityOf(package_->fd())});
}

// A journal of this very deck may stand where the deck stood before it was moved, or in a folder of the
// user's own, when the deck's was gone for a time; of another deck that was like it and is gone, it is only
// told.
void DeckFile::findMovedJournal() {
  const std::string identity = identityOf(package_->fd());
  const bool none = !exists(journal_.path());
  for (const OpenDeck& old : notedDecks()) {
    const bool linked = old.deck != file_ && package_->isAt(old.deck);  // two names of one file
    if (linked || old.journal == journal_.path())
      continue;
    const bool back = old.deck == file_ && exists(old.journal) && pendingOf(old.journal) != 0;
    if (back || (none && old.identity == identity)) {
      takeUpJournal(old);
      return;
    }
    if (!exists(old.deck) && exists(old.journal))
      tellOfLikeJournal(old);
  }
}

// How many changes the deck does not hold yet; 0 also when they belong to another state of it.
int DeckFile::pendingOf(const std::string& journal) const {
  const std::optional<JournalContent> content = readJournal(journal);
  const auto from = content ? content->firstPending(package_->fingerprint()) : std::nullopt;
  return from ? content->changeCount(*from) : 0;
}

void DeckFile::tellOfLikeJournal(const OpenDeck& old) {
  int changes = 0;
  try {
    changes = pendingOf(old.journal);
  } catch (const HostError&) {  // another user's, or damaged: no concern of this deck
  }
  if (changes != 0)
    warning_ = old.deck + " is gone, and " + old.journal + " holds " + countOf(changes) +
               " of it, which may be wanted in " + fullName_ +
               ". If this is that deck, move the journal to " + journal_.path() + " and open the deck again.";
}

void DeckFile::takeUpJournal(const OpenDeck& old) {
  if (!options_.readOnly && old.deck != file_ && heldLockOf(old.deck))
    throwInUse(fullName_, " under its former name " + old.deck);
  if (!exists(old.journal))
    return;
  if (options_.readOnly) {
    journal_ = Journal(old.journal, file_);
    journal_.startAt(package_->fingerprint());
    return;
  }
  std::string kept;
  if (exists(journal_.path())) {
    kept = freeAside();
    if (::rename(journal_.path().c_str(), kept.c_str()) != 0)
      throwDisk("Cannot set aside", journal_.path());
  }
  journal_.takeUp(old.journal);
  moveIfFree(backupOf(old.deck), backupOf(file_));
  forget(old.deck);
  warning_ =
      (old.deck == file_ ? "What was stored of " + fullName_ + " was found in "
                         : fullName_ + " was " + old.deck + " before; what was stored then was found in ") +
      old.journal + "." +
      (kept.empty() ? "" : " The journal that stood beside the deck is kept as " + kept + ".");
}

}  // namespace qrn::deck

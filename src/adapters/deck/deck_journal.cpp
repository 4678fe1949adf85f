// What opening a deck does with the journal beside it, and writing a new one.
#include <unistd.h>

#include <algorithm>
#include <list>
#include <map>
#include <utility>

#include "adapters/deck/deck_file.h"

namespace qrn::deck {

namespace {

std::string shareOf(const std::map<std::string, int>& left, int all) {
  int count = 0;
  std::string reasons;
  for (const auto& [why, changes] : left) {
    count += changes;
    reasons += (reasons.empty() ? "" : "; ") + why;
  }
  return (count == 1 ? "one" : std::to_string(count)) + " of " + countOf(all) +
         " could not be applied: " + reasons + ".";
}

}  // namespace

void DeckFile::readOwnJournal() {
  journal_.startAt(package_->fingerprint());
  findMovedJournal();
  const std::optional<JournalContent> content = readJournal(journal_.path());
  if (!content)
    return;
  if (content->wholeEnd == 0 && !content->damaged) {  // cut off before anything was stored in it
    if (!options_.readOnly)
      ::unlink(journal_.path().c_str());
    return;
  }
  const std::optional<std::size_t> from = content->firstPending(package_->fingerprint());
  const bool own = from && !content->damaged;
  if (!own && options_.otherJournal != OtherJournal::apply) {
    turnAway(*content, content->damaged ? "is damaged" : "was written for another state of this deck");
    return;
  }
  const Left left = replay(*content, from.value_or(0), from ? ownSlides() : matchedSlides(*content));
  if (own && left.empty()) {
    goOnWith(*content, *from);
  } else if (options_.otherJournal == OtherJournal::apply) {
    goOnWithCopy(*content, from.value_or(0), left);
  } else {
    readSlides();  // as if it had not been looked at
    turnAway(*content, "does not fit the deck (" + left.begin()->first + ")");
  }
}

void DeckFile::turnAway(const JournalContent& content, const std::string& why) {
  const int changes = content.changeCount();
  const std::string holds = "it holds " + countOf(changes) + " that may not be in the deck.";
  if (options_.otherJournal == OtherJournal::refuse)
    throw JournalRefused(journal_.path() + " " + why + "; " + holds, changes);
  if (options_.readOnly)
    return;
  const std::string aside = freeAside();
  if (::rename(journal_.path().c_str(), aside.c_str()) != 0)
    throwDisk("Cannot set aside", journal_.path());
  flushFolderOf(aside);
  warning_ = "The journal of " + fullName_ + " " + why + " and was set aside as " + aside + "; " + holds;
}

DeckFile::Left DeckFile::replay(const JournalContent& content, std::size_t from, SlidesById slides) {
  Left left;
  for (std::size_t i = from; i < content.changes.size(); ++i)
    if (const std::string why = replayOne(content.changes[i], slides); !why.empty())
      ++left[why];
  return left;
}

// "" when it is applied, else why it cannot be.
std::string DeckFile::replayOne(const Change& change, SlidesById& slides) {
  switch (change.kind) {
    case Change::Kind::saved:
      return "";
    case Change::Kind::unreadable:
      return "it is of no known kind";
    case Change::Kind::slide:
      marked_.insert(change.slide);
      return "";
    case Change::Kind::newSlide:
      return replaySlide(change, slides);
    default:
      break;
  }
  if (change.slide == 0)
    return std::string(tags_->replay(change));
  const auto slide = slides.find(change.slide);
  if (slide == slides.end())
    return "its slide is not there";
  return slide->second->Damage().empty() ? std::string(slide->second->tagStore().replay(change))
                                         : "what it changes is damaged";
}

std::string DeckFile::replaySlide(const Change& change, SlidesById& slides) {
  if (!isSlideId(change.slide))
    return "a new slide has a number that is none";
  if (slideById(change.slide) != nullptr)
    return "a new slide is there already";
  const int after = static_cast<int>(std::min<std::uint64_t>(change.number, slides_.size()));
  try {
    slides[change.slide] = &insertSlide(addTitleOnlySlide(parts_, presentation_, after, change.slide), after);
  } catch (const HostError& error) {
    return error.what();
  }
  return "";
}

DeckFile::SlidesById DeckFile::ownSlides() const {
  SlidesById slides;
  for (const auto& slide : slides_) slides[slide->entry().id] = slide.get();
  return slides;
}

// The deck is another one than the journal was written for: slides are looked for by what they were.
DeckFile::SlidesById DeckFile::matchedSlides(const JournalContent& content) {
  const std::vector<SlideMark> here = marks();
  SlidesById slides;
  for (const Change& change : content.changes) {
    if (change.kind != Change::Kind::slide)
      continue;
    const auto found =
        matchSlide({change.slide, static_cast<int>(change.number), std::string(change.value)}, here);
    if (found)
      slides[change.slide] = slides_[*found].get();
  }
  return slides;
}

void DeckFile::goOnWith(const JournalContent& content, std::size_t from) {
  if (options_.readOnly)
    return;
  if (from < content.changes.size())
    journal_.resume(content);
  else
    ::unlink(journal_.path().c_str());  // the deck holds it all; only the removal was cut off
}

// Keeps the journal as it was under another name; from now on there is one that fits.
void DeckFile::goOnWithCopy(const JournalContent& content, std::size_t from, const Left& left) {
  std::string kept;
  if (!options_.readOnly) {
    const std::string aside = freeAside();
    saveText(aside, content.bytes, {file_});
    writeJournalAnew();
    kept = " The journal is kept as " + aside + ".";
  }
  if (!left.empty())
    warning_ = "Of the journal of " + fullName_ + ", " + shareOf(left, content.changeCount(from)) + kept;
  else if (content.damaged)
    warning_ = "The journal of " + fullName_ + " is damaged; all that is whole of it was applied." + kept;
}

std::string DeckFile::freeAside() const {
  return freeBeside(file_, ".journal");
}

// Returns when the change is on the disk. A file that a flush of failed is not gone on with: pages that never
// reached the disk may pass for written from then on.
void DeckFile::store(const Change& change) {
  const bool there = followDeck();
  journal_.followFolder();
  const std::string place = journal_.path();
  if (!journal_.sound() || journal_.lost()) {
    writeJournalAnew(&change);
  } else {
    try {
      journal_.add(change);
    } catch (const HostError& failure) {
      storeInNewJournal(change, failure);
    }
  }
  if (!there)
    tellAway();
  else if (journal_.path() != place)
    tell("The folder of " + place + " is gone." + whereStored());
}

// What was told as stored stays so when its journal has gone meanwhile.
void DeckFile::secureJournal() {
  journal_.followFolder();
  if (journal_.started() && journal_.lost())
    writeJournalAnew();
}

// In a place of the user's own where the journal's folder is gone.
void DeckFile::writeJournal(const std::vector<Change>& changes) {
  if (exists(folderOf(journal_.path()))) {
    journal_.writeAnew(changes);
    return;
  }
  for (const auto& folder : {stateJournalFolder, temporaryJournalFolder}) {
    try {
      const std::string like = folder() + "/" + nameOf(file_), path = beside(like, ".journal");
      journal_.writeAnew(changes, exists(path) ? freeBeside(like, ".journal") : path);
      toldAway_ = false;
      noteOpen();
      return;
    } catch (const HostError&) {  // the next one
    }
  }
  throw HostError(Fault::world, 76, "The folder of " + journal_.path() + " is gone; nothing can be stored");
}

// When the new journal fails too, `failure` is what is told: nothing is stored then.
void DeckFile::storeInNewJournal(const Change& change, const HostError& failure) {
  try {
    writeJournalAnew(&change);
  } catch (const HostError&) {
    throw failure;
  }
  if (std::exchange(toldOfFailure_, true))
    return;
  const std::string text = "The disk failed while something was stored (" + std::string(failure.what()) +
                           "). All is stored, in a new journal. Keep a copy of the deck on another disk.";
  tell(text);
}

namespace {

const std::string* valueIn(const std::vector<Tag>& tags, const std::string& name) {
  const auto found = std::find_if(tags.begin(), tags.end(), [&](const Tag& tag) { return tag.name == name; });
  return found == tags.end() ? nullptr : &found->value;
}

// Changes in a row, with the texts that they point into.
struct ToldChanges {
  // What makes of the tags as they were those that are there now.
  void tell(std::uint32_t id, std::vector<Tag> were, std::vector<Tag> are) {
    const std::vector<Tag>& before = kept.emplace_back(std::move(were));
    const std::vector<Tag>& now = kept.emplace_back(std::move(are));
    for (const Tag& tag : before)
      if (valueIn(now, tag.name) == nullptr)
        changes.push_back({Change::Kind::remove, id, tag.name, "", 0});
    for (const Tag& tag : now) {
      const std::string* old = valueIn(before, tag.name);
      if (old == nullptr || *old != tag.value)
        changes.push_back(changeOf(id, tag.name, old == nullptr ? std::string_view() : *old, tag.value,
                                   texts.emplace_back()));
    }
  }

  std::vector<Change> changes;
  std::list<std::vector<Tag>> kept;
  std::list<std::string> texts;
};

}  // namespace

// A journal for the deck as it is now that says all that memory holds beyond it, and `next` behind it.
void DeckFile::writeJournalAnew(const Change* next) {
  ToldChanges told;
  const Parts onDisk(package_);
  const auto tagsOnDisk = [&](const std::string& part) {
    return onDisk.has(part) ? readTags(onDisk, part) : std::vector<Tag>();
  };
  for (const auto& slide : slides_)
    if (parts_.has(slide->entry().part) && !package_->has(slide->entry().part))
      told.changes.push_back({Change::Kind::newSlide, slide->entry().id, "", "",
                              static_cast<std::uint64_t>(slide->slideIndex() - 1)});
  if (tags_->changed())
    told.tell(0, tagsOnDisk(presentation_), tags_->all());
  std::set<std::uint32_t> marked;
  for (const auto& slide : slides_) {
    const std::uint32_t id = slide->entry().id;
    if (!slide->tagStore().changed() && (next == nullptr || next->slide != id))
      continue;
    told.changes.push_back({Change::Kind::slide, id, "", told.texts.emplace_back(slide->mark().title),
                            static_cast<std::uint64_t>(slide->slideIndex())});
    marked.insert(id);
    told.tell(id, tagsOnDisk(slide->entry().part), slide->tagStore().all());
  }
  if (next != nullptr)
    told.changes.push_back(*next);
  writeJournal(told.changes);
  marked_ = std::move(marked);
}

}  // namespace qrn::deck

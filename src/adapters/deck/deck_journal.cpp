// What opening a deck does with the journal beside it.
#include <unistd.h>

#include <algorithm>
#include <list>
#include <map>

#include "adapters/deck/deck_file.h"

namespace qrn::deck {

namespace {

std::string countOf(int changes) {
  return changes == 1 ? "one stored change" : std::to_string(changes) + " stored changes";
}

}  // namespace

void DeckFile::readOwnJournal() {
  journal_.startAt(package_->fingerprint());
  std::optional<JournalContent> content = readJournal(journal_.path());
  if (!content)
    return;
  if (content->wholeEnd == 0 && !content->damaged) {  // cut off before anything was stored in it
    if (!options_.readOnly)
      ::unlink(journal_.path().c_str());
    return;
  }
  const std::optional<std::size_t> from = content->firstPending(package_->fingerprint());
  if (from && !content->damaged) {
    replay(*content, *from);
    if (!options_.readOnly && *from < content->changes.size())
      journal_.resume(*content);
    else if (!options_.readOnly)
      ::unlink(journal_.path().c_str());  // the deck holds it all; only the removal was cut off
  } else if (options_.otherJournal == OtherJournal::refuse) {
    refuseJournal(*content, content->damaged ? "is damaged" : "was written for another state of this deck");
  } else if (options_.otherJournal == OtherJournal::apply) {
    applyOther(*content);
  } else if (!options_.readOnly) {
    const std::string aside = freeAside();
    if (::rename(journal_.path().c_str(), aside.c_str()) != 0)
      throwDisk("Cannot set aside", journal_.path());
    flushFolderOf(aside);
  }
}

void DeckFile::refuseJournal(const JournalContent& content, const std::string& why) const {
  const int changes = content.tagChanges();
  throw JournalRefused(journal_.path() + " " + why + "; it holds " + countOf(changes) +
                           " that are not in the deck. Open the deck again and choose to apply them, or to "
                           "set the journal aside.",
                       changes);
}

void DeckFile::replay(const JournalContent& content, std::size_t from) {
  for (std::size_t i = from; i < content.changes.size(); ++i) {
    const Change& change = content.changes[i];
    if (change.kind == Change::Kind::slide)
      marked_.insert(change.slide);
    if (change.kind == Change::Kind::newSlide)
      replaySlide(change);
    if (change.kind != Change::Kind::add && change.kind != Change::Kind::append &&
        change.kind != Change::Kind::remove)
      continue;
    DeckSlide* slide = change.slide == 0 ? nullptr : slideById(change.slide);
    if (change.slide != 0 && slide == nullptr)
      refuseJournal(content, "tells of a slide that is not there");
    TagStore& tags = slide == nullptr ? *tags_ : slide->tagStore();
    if (!tags.replay(change))
      refuseJournal(content, "does not fit the deck");
  }
}

void DeckFile::replaySlide(const Change& change) {
  const int after = static_cast<int>(std::min<std::uint64_t>(change.number, slides_.size()));
  insertSlide(addTitleOnlySlide(parts_, presentation_, after, change.slide), after);
}

// The deck is another one than the journal was written for: slides are looked for by what they were.
void DeckFile::applyOther(const JournalContent& content) {
  const std::vector<SlideMark> here = marks();
  std::map<std::uint32_t, DeckSlide*> target;
  std::set<std::uint32_t> lost, unfit;
  const std::size_t from = content.firstPending(package_->fingerprint()).value_or(0);
  for (const Change& change : content.changes)
    if (change.kind == Change::Kind::slide) {
      const auto found =
          matchSlide({change.slide, static_cast<int>(change.number), std::string(change.value)}, here);
      if (found)
        target[change.slide] = slides_[*found].get();
    }
  for (std::size_t i = from; i < content.changes.size(); ++i) {
    const Change& change = content.changes[i];
    if (change.kind == Change::Kind::newSlide && slideById(change.slide) == nullptr) {
      replaySlide(change);
      target[change.slide] = slideById(change.slide);
    }
    if (change.kind != Change::Kind::add && change.kind != Change::Kind::append &&
        change.kind != Change::Kind::remove)
      continue;
    if (change.slide != 0 && target.count(change.slide) == 0)
      lost.insert(change.slide);
    else if (!(change.slide == 0 ? *tags_ : target[change.slide]->tagStore()).replay(change))
      unfit.insert(change.slide);
  }
  if (options_.readOnly)
    return;
  const std::string aside = freeAside();
  saveText(aside, content.bytes);
  writeJournalAnew();
  if (!lost.empty() || !unfit.empty())
    warning_ =
        "Of the journal of " + fullName_ + ", the changes to " + std::to_string(lost.size() + unfit.size()) +
        " slides could not all be applied, since the slides are gone or hold other data. The journal is "
        "kept as " +
        aside + ".";
}

std::string DeckFile::freeAside() const {
  int number = 1;
  while (exists(journal_.path() + "." + std::to_string(number))) ++number;
  return journal_.path() + "." + std::to_string(number);
}

// A journal for the deck as it is now that says all that memory holds beyond it.
void DeckFile::writeJournalAnew() {
  std::vector<Change> changes;
  std::list<std::vector<Tag>> kept;  // what the changes point into
  std::list<std::string> titles;
  const auto tell = [&](std::uint32_t id, const std::string& part, const TagStore& store) {
    const Parts onDisk(package_);
    const std::vector<Tag>& before =
        kept.emplace_back(onDisk.has(part) ? readTags(onDisk, part) : std::vector<Tag>());
    const std::vector<Tag>& now = kept.emplace_back(store.all());
    const auto in = [](const std::vector<Tag>& tags, const Tag& tag, bool byValue) {
      return std::any_of(tags.begin(), tags.end(),
                         [&](const Tag& one) { return byValue ? one == tag : one.name == tag.name; });
    };
    for (const Tag& tag : before)
      if (!in(now, tag, false))
        changes.push_back({Change::Kind::remove, id, tag.name, "", 0});
    for (const Tag& tag : now)
      if (!in(before, tag, true))
        changes.push_back({Change::Kind::add, id, tag.name, tag.value, 0});
  };
  for (const auto& slide : slides_)
    if (!package_->has(slide->entry().part))
      changes.push_back({Change::Kind::newSlide, slide->entry().id, "", "",
                         static_cast<std::uint64_t>(slide->slideIndex() - 1)});
  if (tags_->changed())
    tell(0, presentation_, *tags_);
  marked_.clear();
  for (const auto& slide : slides_) {
    if (!slide->tagStore().changed())
      continue;
    const std::uint32_t id = slide->entry().id;
    changes.push_back({Change::Kind::slide, id, "", titles.emplace_back(slide->mark().title),
                       static_cast<std::uint64_t>(slide->slideIndex())});
    marked_.insert(id);
    tell(id, slide->entry().part, slide->tagStore());
  }
  journal_.writeAnew(changes);
}

}  // namespace qrn::deck

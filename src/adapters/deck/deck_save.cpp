// Writing the deck: a new file in the same folder, looked over, then renamed over the old one. The order of
// steps that keeps every vote, wherever it is cut off, stands in journal.h.
#include <unistd.h>

#include <algorithm>
#include <map>

#include "adapters/deck/deck_file.h"
#include "adapters/deck/relationships.h"

namespace qrn::deck {

namespace {

// The same parts in the same order, with new ones at the end; what was not changed still has its checksum.
bool sameEntries(const Package& old, const Package& copy, const Parts& parts) {
  const std::vector<Entry>&before = old.entries(), &after = copy.entries();
  bool same = after.size() >= before.size();
  for (std::size_t i = 0; same && i < before.size(); ++i) {
    const bool ours = parts.changed().count(before[i].name) != 0;
    same = after[i].name == before[i].name &&
           (ours || (after[i].crc == before[i].crc && after[i].size == before[i].size));
  }
  for (const auto& [part, text] : parts.changed()) same = same && copy.has(part) && copy.read(part) == text;
  return same;
}

// None for a slide whose relationships are damaged; it stays as it is.
std::vector<Relationship> readableRelationshipsOf(const Parts& parts, const std::string& part) {
  try {
    return relationshipsOf(parts, part);
  } catch (const HostError&) {
    return {};
  }
}

std::vector<Tag> sorted(std::vector<Tag> tags) {
  std::sort(tags.begin(), tags.end(), [](const Tag& a, const Tag& b) { return a.name < b.name; });
  return tags;
}

}  // namespace

bool DeckFile::changed() const {
  return tags_->changed() || !parts_.changed().empty() ||
         std::any_of(slides_.begin(), slides_.end(), [](const auto& slide) { return slide->changed(); });
}

void DeckFile::Save() {
  requireWritable();
  if (!changed())
    return;
  requireInPlace();
  const std::string stays = whereItStays();
  try {
    writeDeck();
  } catch (const HostError& error) {
    if (stays.empty())
      throw;
    const std::string what = error.what();
    throw HostError(error.fault(), error.number(), what + (what.ends_with('.') ? "" : ".") + stays);
  }
}

void DeckFile::writeDeck() {
  const Parts parts = partsToSave();
  NewFile file(file_);
  writePackage(parts, file.fd(), fullName_);
  file.flush();
  std::shared_ptr<Package> written = checkedCopy(file, parts);
  saveBackup();
  if (journal_.started())
    store({Change::Kind::saved, 0, "", written->fingerprint(), 0});
  file.rename();
  takeOver(std::move(written));
  flushFolderOf(file_);
  journal_.remove();
  noteOpen();
}

Parts DeckFile::partsToSave() {
  Parts parts = parts_;
  for (const auto& slide : slides_) slide->putShapeChanges(parts);
  putTags(parts);
  return parts;
}

void DeckFile::putTags(Parts& parts) {
  std::vector<std::pair<std::string, TagStore*>> owners;
  owners.emplace_back(presentation_, tags_.get());
  for (const auto& slide : slides_) owners.emplace_back(slide->entry().part, &slide->tagStore());
  if (std::none_of(owners.begin(), owners.end(), [](const auto& owner) { return owner.second->differs(); }))
    return;
  // A list that several slides refer to (some programs copy slides so) must not be changed under the others.
  std::map<std::string, int> references;
  for (const auto& owner : owners)
    for (const Relationship& one : readableRelationshipsOf(parts, owner.first))
      references[one.kind == "tags" ? one.target : ""] += 1;
  for (const auto& [part, store] : owners)
    if (store->differs())
      writeTags(parts, part, store->all(),
                references[tagsPartOf(parts, part)] > 1 && !tagsPartOf(parts, part).empty());
}

// The new file is read back before it takes the old one's place: as a zip file and as the deck that it is to
// be.
std::shared_ptr<Package> DeckFile::checkedCopy(const NewFile& file, const Parts& parts) const {
  auto copy = std::make_shared<Package>(file.path());
  bool good = sameEntries(*package_, *copy, parts);
  try {
    good = good && sameDeck(Parts(copy));
  } catch (const HostError&) {
    good = false;
  }
  if (!good)
    throw HostError(Fault::world, 57, fullName_ + " was not saved: what was written does not read back.");
  return copy;
}

// The same slides, and in every list that was written the tags that are stored.
bool DeckFile::sameDeck(const Parts& written) const {
  const std::vector<SlideEntry> slides = slidesOf(written, presentationPartOf(written));
  const auto sameSlide = [](const SlideEntry& entry, const auto& slide) {
    return entry.id == slide->entry().id && entry.part == slide->entry().part;
  };
  const auto sameTags = [&written](const std::string& part, const TagStore& store) {
    return !store.differs() || sorted(readTags(written, part)) == sorted(store.all());
  };
  return std::equal(slides.begin(), slides.end(), slides_.begin(), slides_.end(), sameSlide) &&
         sameTags(presentation_, *tags_) &&
         std::all_of(slides_.begin(), slides_.end(),
                     [&](const auto& slide) { return sameTags(slide->entry().part, slide->tagStore()); });
}

void DeckFile::takeOver(std::shared_ptr<Package> package) {
  package->movedTo(file_);
  package_ = std::move(package);
  parts_ = Parts(package_);
  master_.reset();
  drawn_.reset();
  journal_.startAt(package_->fingerprint());
  marked_.clear();
  tags_->setSaved();
  for (const auto& slide : slides_) slide->setSaved();
}

}  // namespace qrn::deck

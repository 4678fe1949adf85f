// The backup of the tags beside the deck, and noticing that another program has dropped them.
#include <algorithm>

#include "adapters/deck/deck_file.h"

namespace qrn::deck {

namespace {

constexpr const char* kForeignTag = "TIMING";  // the presentation program's own

std::vector<Tag> ownTags(std::vector<Tag> tags) {
  std::erase_if(tags, [](const Tag& tag) { return tag.name == kForeignTag; });
  return tags;
}

}  // namespace

std::vector<BackupSlide> DeckFile::tagsForBackup() {
  std::vector<BackupSlide> all;
  if (std::vector<Tag> tags = ownTags(tags_->all()); !tags.empty())
    all.push_back({{}, std::move(tags)});
  for (const auto& slide : slides_)
    if (std::vector<Tag> tags = ownTags(slide->tagStore().all()); !tags.empty())
      all.push_back({slide->mark(), std::move(tags)});
  return all;
}

// What the backup so far has of lists that cannot be read stays in it.
void DeckFile::keepOfDamaged(std::vector<BackupSlide>& tags) {
  std::set<std::uint32_t> damaged;
  if (!tags_->damage().empty())
    damaged.insert(0);
  for (const auto& slide : slides_)
    if (!slide->tagStore().damage().empty())
      damaged.insert(slide->entry().id);
  if (damaged.empty() || tagsDropped())
    return;
  std::optional<std::vector<BackupSlide>> backup = wholeBackup();
  if (!backup)
    return;
  for (BackupSlide& old : *backup)
    if (damaged.count(old.mark.id) != 0)
      tags.push_back(std::move(old));
}

void DeckFile::saveBackup() {
  std::vector<BackupSlide> tags = tagsForBackup();
  if (tags.empty() && !exists(backupPath()))
    return;
  keepOfDamaged(tags);
  writeBackup(file_, backupText(tags), tagsDropped() || backupDamaged_);
  tagsDropped_ = backupDamaged_ = putBack_ = false;
}

// Empty without one; nothing when there is one and it is damaged.
std::optional<std::vector<BackupSlide>> DeckFile::wholeBackup() const {
  if (!exists(backupPath()))
    return std::vector<BackupSlide>();
  try {
    return parseBackup(readWhole(backupPath()), backupPath());
  } catch (const HostError&) {
    return std::nullopt;
  }
}

bool DeckFile::tagsDropped() {
  if (!tagsDropped_) {
    const auto backup = wholeBackup();
    backupDamaged_ = !backup;
    tagsDropped_ = backup && !backup->empty() && !taggedOnDisk();
  }
  return *tagsDropped_;
}

// Whether the deck, as it was opened, has a tag of ours.
bool DeckFile::taggedOnDisk() const {
  const Parts onDisk(package_);
  const auto tagged = [&](const std::string& part) {
    try {
      return onDisk.has(part) ? !ownTags(readTags(onDisk, part)).empty() : !parts_.has(part);
    } catch (const HostError&) {
      return true;  // they may be there: the part is damaged or missing, not another program's
    }
  };
  return tagged(presentation_) || std::any_of(slides_.begin(), slides_.end(),
                                              [&](const auto& slide) { return tagged(slide->entry().part); });
}

std::optional<std::string> DeckFile::foreignSaveWarning() {
  std::string text = warning_;
  const auto say = [&text](const std::string& more) { text += (text.empty() ? "" : "\n") + more; };
  if (ReadOnly() && WhyNoVotes().empty())
    say(fullName_ + " is read-only: what is stored stays in " + journal_.path() + " until it can be saved.");
  if (!tags_->damage().empty())
    say("What is stored of the whole deck cannot be read: " + tags_->damage());
  if (putBack_)
    say("Another program had saved " + fullName_ +
        " without its exercises and votes. They were put back from " + backupPath() + ".");
  else if (tagsDropped())
    say("The exercises and votes are gone from " + fullName_ +
        ". Another program has saved it without them (LibreOffice does so). They can be put back from " +
        backupPath() + ".");
  else if (backupDamaged_ && !taggedOnDisk())
    say(backupPath() + " is damaged. What it holds of " + fullName_ + " cannot be put back.");
  const std::string folder = folderOf(file_) + "/", name = nameOf(file_);
  if (exists(folder + ".~lock." + name + "#"))
    say(fullName_ + " is open in LibreOffice. Saving it there drops the exercises and votes from it.");
  if (exists(folder + "~$" + name))
    say(fullName_ +
        " is open in the presentation program. Saving it there undoes what is stored here meanwhile.");
  return text.empty() ? std::nullopt : std::optional<std::string>(text);
}

RestoreResult DeckFile::restoreFromBackup() {
  requireWritable();
  if (!exists(backupPath()))
    throw HostError(Fault::world, 53, "There is no backup of " + fullName_ + ".");
  const std::vector<BackupSlide> backup = parseBackup(readWhole(backupPath()), backupPath());
  const std::vector<SlideMark> here = marks();
  RestoreResult result;
  for (const BackupSlide& slide : backup) {
    host::Tags* target = tags_.get();
    if (slide.mark.id != 0) {
      const auto found = matchSlide(slide.mark, here);
      if (!found || !slides_[*found]->Damage().empty()) {
        result.notPlaced.push_back("slide " + std::to_string(slide.mark.index) + " \"" + slide.mark.title +
                                   "\"");
        continue;
      }
      target = &slides_[*found]->tags();
    }
    const std::vector<std::string> present = target->Names();
    for (const Tag& tag : slide.tags) {
      if (std::find(present.begin(), present.end(), tag.name) != present.end())
        continue;
      target->Add(tag.name, tag.value);
      ++result.tags;
    }
  }
  putBack_ = result.tags > 0;
  return result;
}

}  // namespace qrn::deck

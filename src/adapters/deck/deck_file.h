// The open deck: its slides, its journal and the road from one to the other.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "adapters/deck/backup.h"
#include "adapters/deck/deck.h"
#include "adapters/deck/journal.h"
#include "adapters/deck/lock.h"
#include "adapters/deck/master.h"
#include "adapters/deck/open_decks.h"
#include "adapters/deck/package.h"
#include "adapters/deck/pictures.h"
#include "adapters/deck/shapes.h"
#include "adapters/deck/slide_list.h"
#include "adapters/deck/slide_match.h"
#include "adapters/deck/tags.h"

namespace qrn::deck {

class DeckFile;

class DeckSlide : public host::Slide {
 public:
  DeckSlide(DeckFile& deck, const SlideEntry& entry, int index);
  int slideID() const override { return static_cast<int>(entry_.id); }
  int slideIndex() const override { return index_; }
  std::string Title() const override { return readable() ? page_.title() : ""; }
  bool Hidden() const override { return readable() && page_.hiddenSlide(); }
  std::string Damage() override;
  host::Tags& tags() override { return tags_; }
  std::vector<host::Shape*> Shapes() override;
  std::vector<host::Shape*> NotesPageShapes() override;
  void Export(const std::string& file, std::string_view format, int width, int height) override;

  const SlideEntry& entry() const { return entry_; }
  void setIndex(int index) { index_ = index; }
  TagStore& tagStore() { return tags_; }
  ShapePage& page() { return page_; }
  bool changed() const;
  void putShapeChanges(Parts& parts);
  void setSaved();
  SlideDrawing drawing();  // for the fallback painter
  SlideMark mark() const { return {entry_.id, index_, Title()}; }

 private:
  bool readable() const;
  void keep(const Change& change);
  DeckFile& deck_;
  SlideEntry entry_;
  int index_;
  mutable ShapePage page_;
  std::optional<ShapePage> notes_;
  bool notesSought_ = false;
  mutable std::optional<std::string> pageDamage_;  // once it has been looked at
  TagStore tags_;
};

class DeckFile final : public Deck {
 public:
  DeckFile(const std::string& file, OpenOptions options);
  ~DeckFile() override;
  DeckFile(const DeckFile&) = delete;
  DeckFile& operator=(const DeckFile&) = delete;
  std::string path() const override;
  std::string FullName() const override { return fullName_; }
  bool ReadOnly() const override;
  bool Saved() const override { return !journal_.started(); }
  std::string WhyNoVotes() const override;
  void Save() override;
  void SetRunTags(const std::vector<std::string>& names) override;
  host::Tags& tags() override { return *tags_; }
  int SlideCount() const override { return static_cast<int>(slides_.size()); }
  host::Slide& Slides(int index) override;
  host::Slide& AddTitleOnlySlide(int after) override;
  double SlideWidth() const override { return size_.width; }
  double SlideHeight() const override { return size_.height; }
  std::optional<host::MasterFont> MasterTitleFont() override { return master().titleFont(); }
  std::optional<host::MasterFont> MasterBodyFont() override { return master().bodyFont(); }
  std::int32_t SchemeColour(int entry) override { return master().schemeColour(entry); }
  bool picturesByLibreOffice() override { return pictures_.byLibreOffice(); }
  std::unique_ptr<host::PictureRun> ExportAll(int width, int height) override;
  std::optional<std::string> foreignSaveWarning() override;
  RestoreResult restoreFromBackup() override;

  bool current() const { return package_->stillOnDisk(); }
  // For its slides.
  const Parts& parts() const { return parts_; }
  void keep(const Change& change);
  MasterLook& master();
  void slideRestyled(DeckSlide& slide) { restyled_.insert(&slide); }
  void exportSlide(DeckSlide& slide, PictureRequest request);

 private:
  // deck_file.cpp
  void refuseSigned() const;
  void readSlides();
  DeckSlide& insertSlide(const SlideEntry& entry, int after);
  void requireWritable() const;
  DeckSlide* slideById(std::uint32_t id);
  std::vector<SlideMark> marks();
  std::shared_ptr<const PictureSource> pictureSource();
  // deck_place.cpp
  std::string standsAt() const;
  bool followDeck();
  bool moveTo(const std::string& now);
  void tellAway();
  void requireInPlace();
  void noteOpen() const;
  void findMovedJournal();
  int pendingOf(const std::string& journal) const;
  void tellOfLikeJournal(const OpenDeck& old);
  void takeUpJournal(const OpenDeck& old);
  std::string whereStored() const;
  std::string whereItStays() const;
  void tell(const std::string& text);
  // deck_journal.cpp
  using SlidesById = std::map<std::uint32_t, DeckSlide*>;  // by the journal's numbers
  using Left = std::map<std::string, int>;                 // why changes were not applied, and how many
  void readOwnJournal();
  void turnAway(const JournalContent& content, const std::string& why);
  Left replay(const JournalContent& content, std::size_t from, SlidesById slides);
  std::string replayOne(const Change& change, SlidesById& slides);
  std::string replaySlide(const Change& change, SlidesById& slides);
  SlidesById ownSlides() const;
  SlidesById matchedSlides(const JournalContent& content);
  void goOnWith(const JournalContent& content, std::size_t from);
  void goOnWithCopy(const JournalContent& content, std::size_t from, const Left& left);
  std::string freeAside() const;
  void store(const Change& change);
  void storeInNewJournal(const Change& change, const HostError& failure);
  void writeJournalAnew(const Change* next = nullptr);
  void writeJournal(const std::vector<Change>& changes);
  void secureJournal();
  // deck_save.cpp
  bool changed() const;
  void writeDeck();
  Parts partsToSave();
  void putTags(Parts& parts);
  std::shared_ptr<Package> checkedCopy(const NewFile& file, const Parts& parts) const;
  bool sameDeck(const Parts& written) const;
  void takeOver(std::shared_ptr<Package> package);
  // deck_backup.cpp
  std::string backupPath() const { return backupOf(file_); }
  std::vector<BackupSlide> tagsForBackup();
  void keepOfDamaged(std::vector<BackupSlide>& tags);
  void saveBackup();
  std::optional<std::vector<BackupSlide>> wholeBackup() const;
  bool tagsDropped() override;
  bool taggedOnDisk() const;

  std::string fullName_;  // as the user named it
  std::string file_;      // the file itself, links followed
  OpenOptions options_;
  std::unique_ptr<Lock> lock_;
  std::shared_ptr<Package> package_;
  Parts parts_;  // the package with the slides added since
  std::string presentation_;
  SlideSize size_;
  std::unique_ptr<TagStore> tags_;
  std::vector<std::unique_ptr<DeckSlide>> slides_;
  std::unique_ptr<MasterLook> master_;
  Journal journal_;
  std::set<std::string> runTags_;
  std::set<std::uint32_t> marked_;  // slides that this journal tells of
  Pictures pictures_;
  std::shared_ptr<PictureSource> drawn_;  // the slides as they are to be drawn, but for those in restyled_
  std::set<DeckSlide*> restyled_;
  std::optional<bool> tagsDropped_;  // from the deck on the disk, by another program
  bool putBack_ = false;             // since then, from the backup
  bool backupDamaged_ = false;       // its backup cannot be read
  std::string warning_;              // what opening or a failing disk has to tell
  bool toldOfFailure_ = false, toldAway_ = false, toldOfLook_ = false;
  std::string away_;  // why the deck is not to be had any more, behind its name
};

}  // namespace qrn::deck

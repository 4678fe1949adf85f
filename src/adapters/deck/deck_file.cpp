#include "adapters/deck/deck_file.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "adapters/deck/relationships.h"
#include "base/letter_case.h"

namespace qrn::deck {

namespace {

std::string realFile(const std::string& file) {
  char* real = ::realpath(file.c_str(), nullptr);
  if (real == nullptr)
    throwDisk("Cannot open", file);
  std::string path(real);
  std::free(real);
  return path;
}

std::unique_ptr<Lock> lockFor(const std::string& file, const OpenOptions& options) {
  return options.readOnly ? nullptr : std::make_unique<Lock>(file);
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines(1);
  for (const char c : text) {
    if (c == '\r' || c == '\v')
      lines.emplace_back();
    else
      lines.back().push_back(c);
  }
  return lines;
}

}  // namespace

std::unique_ptr<Deck> Deck::open(const std::string& file, OpenOptions options) {
  // Beside a program that is just saving, a reader may meet the new deck with the old journal, or the old
  // deck without it.
  for (int attempt = 1;; ++attempt) {
    try {
      auto deck = std::make_unique<DeckFile>(file, options);
      if (!options.readOnly || deck->current() || attempt == 3)
        return deck;
    } catch (const JournalRefused&) {
      if (!options.readOnly || attempt == 3)
        throw;
    }
  }
}

DeckFile::DeckFile(const std::string& file, OpenOptions options)
    : fullName_(std::filesystem::absolute(file).lexically_normal().string()),
      file_(realFile(file)),
      options_(std::move(options)),
      lock_(lockFor(file_, options_)),
      package_(std::make_shared<Package>(file_)),
      parts_(package_),
      presentation_(presentationPartOf(parts_)),
      size_(slideSizeOf(parts_, presentation_)),
      journal_(beside(file_, ".journal"), file_),
      pictures_(options_.cacheFolder, options_.fallbackPainter) {
  refuseSigned();
  readSlides();
  readOwnJournal();
  noteOpen();
}

// Its journal stands beside it when it is opened again, wherever that is.
DeckFile::~DeckFile() {
  if (options_.readOnly)
    return;
  try {
    if (journal_.started()) {
      const bool there = followDeck();
      secureJournal();
      if (!there)
        tellAway();
    } else {
      forget(file_);
    }
  } catch (const std::exception&) {  // the journal is found by its note
  }
}

// The deck as the file has it.
void DeckFile::readSlides() {
  parts_ = Parts(package_);
  tags_ = std::make_unique<TagStore>(
      0, [this] { return readTags(parts_, presentation_); },
      [this](const Change& change) {
        if (!tags_->damage().empty())
          throwBad(fullName_, "can store nothing of the whole deck: " + tags_->damage());
        if (runTags_.count(std::string(change.name)) != 0)
          return false;
        keep(change);
        return true;
      });
  slides_.clear();
  for (const SlideEntry& entry : slidesOf(parts_, presentation_))
    slides_.push_back(std::make_unique<DeckSlide>(*this, entry, SlideCount() + 1));
  marked_.clear();
}

void DeckFile::refuseSigned() const {
  if (!options_.readOnly && package_->hasFolder("_xmlsignatures/"))
    throwBad(
        file_,
        "is digitally signed, and storing votes in it would break the signature. Take the signature off in "
        "the presentation program, or open the deck read-only.");
}

std::string DeckFile::path() const {
  return folderOf(fullName_);
}

bool DeckFile::ReadOnly() const {
  const std::string place = standsAt();
  return options_.readOnly || (!place.empty() && ::access(place.c_str(), W_OK) != 0);
}

std::string DeckFile::WhyNoVotes() const {
  if (options_.readOnly)
    return fullName_ + " was opened read-only; nothing can be stored in it.";
  const std::string place = standsAt();
  if (place.empty())
    return fullName_ + " is gone: it was deleted or moved to another disk.";
  if (!folderWritable(place))
    return "Nothing can be stored in " + folderOf(place) +
           ", which is read-only. Copy the deck to another folder and open it there.";
  if (!mayReplace(place))
    return place + " cannot be saved: it is another user's, and in " + folderOf(place) +
           " everybody may replace their own files only. Copy the deck to another folder and open it there.";
  return "";
}

host::Slide& DeckFile::Slides(int index) {
  if (index < 1 || index > SlideCount())
    throw HostError(Fault::program, 9, "There is no slide " + std::to_string(index) + " in " + fullName_);
  return *slides_[static_cast<std::size_t>(index - 1)];
}

DeckSlide* DeckFile::slideById(std::uint32_t id) {
  const auto found = std::find_if(slides_.begin(), slides_.end(),
                                  [&](const auto& slide) { return slide->entry().id == id; });
  return found == slides_.end() ? nullptr : found->get();
}

std::vector<SlideMark> DeckFile::marks() {
  std::vector<SlideMark> all;
  for (const auto& slide : slides_) all.push_back(slide->mark());
  return all;
}

void DeckFile::requireWritable() const {
  if (options_.readOnly)
    throw HostError(Fault::world, 70, WhyNoVotes());
}

void DeckFile::SetRunTags(const std::vector<std::string>& names) {
  runTags_.clear();
  for (const std::string& name : names) runTags_.insert(foldCase(name));
}

void DeckFile::keep(const Change& change) {
  requireWritable();
  if (change.slide != 0 && marked_.count(change.slide) == 0) {
    const SlideMark mark = slideById(change.slide)->mark();
    store({Change::Kind::slide, mark.id, "", mark.title, static_cast<std::uint64_t>(mark.index)});
    marked_.insert(change.slide);
  }
  store(change);
}

DeckSlide& DeckFile::insertSlide(const SlideEntry& entry, int after) {
  slides_.insert(slides_.begin() + after, std::make_unique<DeckSlide>(*this, entry, after + 1));
  for (std::size_t i = 0; i < slides_.size(); ++i) slides_[i]->setIndex(static_cast<int>(i) + 1);
  drawn_.reset();
  return *slides_[static_cast<std::size_t>(after)];
}

host::Slide& DeckFile::AddTitleOnlySlide(int after) {
  requireWritable();
  if (after < 0 || after > SlideCount())
    throw HostError(Fault::program, 9, "There is no slide " + std::to_string(after) + " in " + fullName_);
  Parts changed = parts_;
  const SlideEntry entry = addTitleOnlySlide(changed, presentation_, after, 0);
  store({Change::Kind::newSlide, entry.id, "", "", static_cast<std::uint64_t>(after)});
  parts_ = std::move(changed);
  return insertSlide(entry, after);
}

MasterLook& DeckFile::master() {
  if (master_)
    return *master_;
  try {
    master_ = std::make_unique<MasterLook>(parts_, presentation_);
  } catch (const HostError& error) {
    if (error.fault() != Fault::badData)
      throw;
    master_ = std::make_unique<MasterLook>();
    if (!std::exchange(toldOfLook_, true))
      tell(std::string(error.what()) + " Fonts and colours of its slide master are not used.");
  }
  return *master_;
}

std::shared_ptr<const PictureSource> DeckFile::pictureSource() {
  if (!drawn_) {
    Parts parts = parts_;
    std::vector<SlideEntry> entries;
    for (const auto& slide : slides_) {
      slide->putShapeChanges(parts);
      entries.push_back(slide->entry());
    }
    drawn_ = std::make_shared<PictureSource>(std::move(parts), presentation_, std::move(entries));
    restyled_.clear();
  }
  if (!restyled_.empty() && drawn_.use_count() > 1)
    drawn_ = std::make_shared<PictureSource>(*drawn_);  // pictures on their way keep theirs
  for (DeckSlide* slide : restyled_)
    drawn_->change(static_cast<std::size_t>(slide->slideIndex() - 1), slide->page().changedText());
  restyled_.clear();
  return drawn_;
}

std::unique_ptr<host::PictureRun> DeckFile::ExportAll(int width, int height) {
  return pictures_.makeAll(pictureSource(), width, height);
}

void DeckFile::exportSlide(DeckSlide& slide, PictureRequest request) {
  request.slide = static_cast<std::size_t>(slide.slideIndex() - 1);
  request.slideChanged = slide.page().changed();
  pictures_.make(*pictureSource(), request, [&] { return slide.drawing(); });
}

DeckSlide::DeckSlide(DeckFile& deck, const SlideEntry& entry, int index)
    : deck_(deck),
      entry_(entry),
      index_(index),
      page_(
          entry.part, [&deck]() -> const Parts& { return deck.parts(); },
          [this] { deck_.slideRestyled(*this); }),
      tags_(
          entry.id,
          [&deck, part = entry.part] {
            requireSlidePart(deck.parts(), part);
            return readTags(deck.parts(), part);
          },
          [this](const Change& change) {
            keep(change);
            return true;
          }) {}

bool DeckSlide::readable() const {
  if (pageDamage_)
    return pageDamage_->empty();
  pageDamage_ = "";
  try {
    requireSlidePart(deck_.parts(), entry_.part);
    page_.xml();
  } catch (const HostError& error) {
    if (error.fault() != Fault::badData)
      throw;
    pageDamage_ = error.what();
  }
  return pageDamage_->empty();
}

std::string DeckSlide::Damage() {
  return readable() ? tags_.damage() : *pageDamage_;
}

void DeckSlide::keep(const Change& change) {
  if (const std::string damage = Damage(); !damage.empty())
    throw HostError(Fault::badData, 0,
                    "Nothing can be stored on slide " + std::to_string(index_) + ": " + damage);
  deck_.keep(change);
}

std::vector<host::Shape*> DeckSlide::Shapes() {
  return readable() ? page_.shapes() : std::vector<host::Shape*>();
}

std::vector<host::Shape*> DeckSlide::NotesPageShapes() {
  if (!notesSought_ && Damage().empty()) {
    const std::vector<Relationship> all = relationshipsOf(deck_.parts(), entry_.part);
    const Relationship* notes = byKind(all, "notesSlide");
    if (notes != nullptr && deck_.parts().has(notes->target))
      notes_.emplace(notes->target, [&deck = deck_]() -> const Parts& { return deck.parts(); });
    notesSought_ = true;
  }
  return notes_ ? notes_->shapes() : std::vector<host::Shape*>();
}

void DeckSlide::Export(const std::string& file, std::string_view format, int width, int height) {
  deck_.exportSlide(*this, {0, false, file, std::string(format), width, height});
}

bool DeckSlide::changed() const {
  return tags_.changed() || page_.changed() || (notes_ && notes_->changed());
}

void DeckSlide::putShapeChanges(Parts& parts) {
  if (page_.changed())
    parts.put(page_.part(), page_.changedText());
  if (notes_ && notes_->changed())
    parts.put(notes_->part(), notes_->changedText());
}

void DeckSlide::setSaved() {
  tags_.setSaved();
  page_.setSaved();
  if (notes_)
    notes_->setSaved();
}

SlideDrawing DeckSlide::drawing() {
  SlideDrawing drawing;
  if (!readable()) {
    drawing.title = "This slide is damaged";
    return drawing;
  }
  const MasterLook& master = deck_.master();
  std::int32_t back = master.backgroundIn(childOf(page_.xml().root(), Space::presentation, "cSld"));
  if (back < 0)
    back = master.background();
  drawing.background = back < 0 ? 0xffffff : back;
  drawing.textColour = std::max(0, master.schemeColour(2));
  for (const host::Shape* shape : page_.shapes()) {
    if (!shape->Visible() || !shape->HasTextFrame() || shape->Text().empty())
      continue;
    if (shape->Placeholder() == host::PlaceholderType::title && drawing.title.empty()) {
      drawing.title = shape->Text();
      continue;
    }
    for (std::string& line : linesOf(shape->Text())) drawing.lines.push_back(std::move(line));
  }
  return drawing;
}

}  // namespace qrn::deck

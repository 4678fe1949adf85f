// What a picture of a slide depends on, as a name.
#include <array>

#include "adapters/deck/picture_source.h"
#include "adapters/deck/relationships.h"
#include "adapters/deck/tags_part.h"
#include "adapters/deck/text.h"
#include "adapters/deck/xml.h"
#include "base/text.h"

namespace qrn::deck {

namespace {

// Parts that never show on a slide, or that are looked at in another way below.
bool isLeftOut(const std::string& part, const std::string& presentation) {
  static constexpr std::array<std::string_view, 6> folders = {"ppt/slides/", "ppt/tags/",  "ppt/notesslides/",
                                                              "docprops/",   "customxml/", "[content_types]"};
  const std::string name = lowerCase(part);
  for (const std::string_view folder : folders)
    if (name.rfind(folder, 0) == 0)
      return true;
  return part == presentation || part == relationshipsPartOf(presentation);
}

void addRelationships(Digest& digest, const Parts& parts, const std::string& part) {
  for (const Relationship& one : relationshipsOf(parts, part)) {
    if (one.kind == "tags" || one.kind == "notesSlide" || one.kind == "slide")
      continue;
    digest.add(one.id);
    digest.add(one.target);
  }
}

// The presentation without its tags, its list of slides and its sections.
std::string presentationLook(const PictureSource& source) {
  const Xml xml(withoutTags(source.parts(), source.presentation()), source.parts().file());
  Splices splices;
  for (const char* name : {"sldIdLst", "extLst"})
    if (const pugi::xml_node node = childOf(xml.root(), Space::presentation, name)) {
      const Xml::Extent place = xml.extent(node);
      splices.replace(place.begin, place.end, "");
    }
  return splices.applyTo(xml);
}

std::string commonVersion(const PictureSource& source) {
  Digest digest;
  for (const auto& [part, text] : source.parts().changed()) {
    if (isLeftOut(part, source.presentation()))
      continue;
    digest.add(part);
    digest.add(text);
  }
  for (const Entry& entry : source.parts().package().entries()) {
    if (isLeftOut(entry.name, source.presentation()) || source.parts().changed().count(entry.name) != 0)
      continue;
    digest.add(entry.name);
    digest.add(entry.crc);
    digest.add(entry.size);
  }
  digest.add(presentationLook(source));
  addRelationships(digest, source.parts(), source.presentation());
  return digest.text();
}

std::string versionOf(const PictureSource& source, const std::string& common, std::size_t slide) {
  const std::string& part = source.slides()[slide].part;
  Digest digest;
  digest.add(common);
  digest.add(slide);  // slide numbers are drawn
  digest.add(withoutTags(source.parts(), part));
  addRelationships(digest, source.parts(), part);
  return digest.text();
}

}  // namespace

PictureSource::PictureSource(Parts parts, std::string presentation, std::vector<SlideEntry> slides)
    : parts_(std::move(parts)),
      presentation_(std::move(presentation)),
      slides_(std::move(slides)),
      versions_(slides_.size()) {}

void PictureSource::change(std::size_t slide, std::string text) {
  parts_.put(slides_[slide].part, std::move(text));
  versions_[slide].clear();
  deck_.clear();
}

PictureSource PictureSource::only(std::size_t slide) const {
  PictureSource one(parts_, presentation_, {slides_[slide]});
  one.parts_.put(presentation_, presentationOfOneSlide(parts_, presentation_, slides_[slide].id));
  return one;
}

const std::string& PictureSource::slideVersion(std::size_t slide) const {
  if (common_.empty())
    common_ = commonVersion(*this);
  std::string& version = versions_[slide];
  if (version.empty())
    version = versionOf(*this, common_, slide);
  return version;
}

const std::string& PictureSource::deckVersion() const {
  if (!deck_.empty())
    return deck_;
  Digest digest;
  for (std::size_t slide = 0; slide < slides_.size(); ++slide) digest.add(slideVersion(slide));
  return deck_ = digest.text();
}

}  // namespace qrn::deck

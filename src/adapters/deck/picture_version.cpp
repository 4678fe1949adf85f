// What a picture of a slide depends on, as a name.
#include <array>
#include <set>

#include "adapters/deck/pictures.h"
#include "adapters/deck/relationships.h"
#include "adapters/deck/tags_part.h"
#include "adapters/deck/text.h"
#include "adapters/deck/xml.h"

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
  const Xml xml(withoutTags(source.parts, source.presentation), source.parts.file());
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
  std::set<std::string> changed;
  for (const auto& [part, text] : source.parts.changed()) {
    changed.insert(part);
    if (isLeftOut(part, source.presentation))
      continue;
    digest.add(part);
    digest.add(text);
  }
  for (const Entry& entry : source.parts.package().entries()) {
    if (isLeftOut(entry.name, source.presentation) || changed.count(entry.name) != 0)
      continue;
    digest.add(entry.name);
    digest.add(entry.crc);
    digest.add(entry.size);
  }
  digest.add(presentationLook(source));
  addRelationships(digest, source.parts, source.presentation);
  return digest.text();
}

std::string versionOf(const PictureSource& source, const std::string& common, std::size_t slide) {
  const std::string& part = source.slides[slide].part;
  Digest digest;
  digest.add(common);
  digest.add(slide);  // slide numbers are drawn
  digest.add(withoutTags(source.parts, part));
  addRelationships(digest, source.parts, part);
  return digest.text();
}

}  // namespace

std::string slideVersion(const PictureSource& source, std::size_t slide) {
  return versionOf(source, commonVersion(source), slide);
}

std::string deckVersion(const PictureSource& source) {
  const std::string common = commonVersion(source);
  Digest digest;
  for (std::size_t i = 0; i < source.slides.size(); ++i) digest.add(versionOf(source, common, i));
  return digest.text();
}

}  // namespace qrn::deck

#include "adapters/deck/slide_list.h"

#include <algorithm>
#include <set>

#include "adapters/deck/relationships.h"
#include "adapters/deck/shapes.h"
#include "adapters/deck/xml.h"
#include "base/text.h"

namespace qrn::deck {

namespace {

constexpr std::uint32_t kFirstId = 256, kLastId = 0x7FFFFFFF;
constexpr double kEmuPerPoint = 12700;
constexpr const char* kSlideType = "application/vnd.openxmlformats-officedocument.presentationml.slide+xml";

std::string label(const Parts& parts, const std::string& part) {
  return parts.file() + " (" + part + ")";
}

struct Layout {
  std::string part, titleType;  // of its title placeholder: "title" or "ctrTitle"
};

std::string titleTypeOf(const Xml& layout) {
  const pugi::xml_node content = childOf(layout.root(), Space::presentation, "cSld");
  for (const pugi::xml_node shape : childOf(content, Space::presentation, "spTree").children())
    if (placeholderOf(shape) == host::PlaceholderType::title)
      return placeholderName(shape);
  return "";
}

Layout titleLayoutOf(const Parts& parts, const std::string& presentation, const Xml& deck) {
  const std::vector<Relationship> ofDeck = relationshipsOf(parts, presentation);
  Layout best;
  const pugi::xml_node masters = childOf(deck.root(), Space::presentation, "sldMasterIdLst");
  for (const pugi::xml_node entry : masters.children()) {
    const Relationship* master = byId(ofDeck, relationshipAttribute(entry));
    if (master == nullptr || !parts.has(master->target))
      continue;
    const Xml masterXml(parts.read(master->target), label(parts, master->target));
    const std::vector<Relationship> ofMaster = relationshipsOf(parts, master->target);
    const pugi::xml_node layouts = childOf(masterXml.root(), Space::presentation, "sldLayoutIdLst");
    for (const pugi::xml_node layoutEntry : layouts.children()) {
      const Relationship* layout = byId(ofMaster, relationshipAttribute(layoutEntry));
      if (layout == nullptr || !parts.has(layout->target))
        continue;
      const Xml xml(parts.read(layout->target), label(parts, layout->target));
      const std::string title = titleTypeOf(xml);
      if (title.empty())
        continue;
      if (std::string_view(xml.root().attribute("type").value()) == "titleOnly")
        return {layout->target, title};
      if (best.part.empty())
        best = {layout->target, title};
    }
  }
  if (best.part.empty())
    throwBad(parts.file(), "has no slide layout with a title; no slide can be added.");
  return best;
}

// Not that of a slide that is missing, nor one that such a slide has left relationships of.
std::string freeSlidePart(const Parts& parts, const std::vector<SlideEntry>& slides) {
  for (int number = 1;; ++number) {
    const std::string name = "ppt/slides/slide" + std::to_string(number) + ".xml";
    const bool meant = std::any_of(slides.begin(), slides.end(), [&](const SlideEntry& slide) {
      return lowerCase(slide.part) == lowerCase(name);
    });
    if (!meant && !parts.has(name) && !parts.has(relationshipsPartOf(name)))
      return name;
  }
}

std::uint32_t freeSlideId(const std::vector<SlideEntry>& slides) {
  std::set<std::uint32_t> used;
  for (const SlideEntry& slide : slides) used.insert(slide.id);
  std::uint32_t id = used.empty() ? kFirstId : std::max(kFirstId, *used.rbegin() + 1);
  if (id > kLastId)
    for (id = kFirstId; used.count(id) != 0;) ++id;
  return id;
}

std::string slideText(const Dialect& dialect, const std::string& titleType) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n<p:sld xmlns:a=\"";
  text.append(dialect.drawing).append("\" xmlns:r=\"").append(dialect.relationships);
  text.append("\" xmlns:p=\"").append(dialect.presentation);
  text +=
      "\"><p:cSld><p:spTree><p:nvGrpSpPr><p:cNvPr id=\"1\" name=\"\"/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr>"
      "<p:grpSpPr><a:xfrm><a:off x=\"0\" y=\"0\"/><a:ext cx=\"0\" cy=\"0\"/><a:chOff x=\"0\" y=\"0\"/>"
      "<a:chExt cx=\"0\" cy=\"0\"/></a:xfrm></p:grpSpPr><p:sp><p:nvSpPr><p:cNvPr id=\"2\" name=\"Title 1\"/>"
      "<p:cNvSpPr><a:spLocks noGrp=\"1\"/></p:cNvSpPr><p:nvPr><p:ph type=\"" +
      titleType +
      "\"/></p:nvPr></p:nvSpPr><p:spPr/><p:txBody><a:bodyPr/><a:lstStyle/><a:p/></p:txBody></p:sp></p:spTree>"
      "</p:cSld><p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr></p:sld>";
  return text;
}

// The list of sections, where there is one, must name every slide: the new one joins that of its neighbour.
void joinSection(const Xml& deck, std::uint32_t neighbour, std::uint32_t id, Splices& splices) {
  const pugi::xml_node entry = deck.root().find_node([&](pugi::xml_node node) {
    return localName(node.name()) == "sldId" && localName(node.parent().name()) == "sldIdLst" &&
           localName(node.parent().parent().name()) == "section" &&
           node.attribute("id").as_uint() == neighbour;
  });
  if (entry)
    splices.insert(deck.extent(entry).end,
                   "<" + prefixOf(entry) + "sldId id=\"" + std::to_string(id) + "\"/>");
}

void enterSlide(Parts& parts, const std::string& presentation, const std::vector<SlideEntry>& slides,
                int after, const SlideEntry& slide, const std::string& relationship) {
  const Xml deck(parts.read(presentation), label(parts, presentation));
  const pugi::xml_node list = childOf(deck.root(), Space::presentation, "sldIdLst");
  const std::string prefix = prefixOf(deck.root()),
                    known = prefixFor(deck.root(), deck.dialect().relationships);
  const std::string entry =
      "<" + prefix + "sldId id=\"" + std::to_string(slide.id) + "\"" +
      (known.empty() ? " xmlns:r=\"" + std::string(deck.dialect().relationships) + "\" r:" : " " + known) +
      "id=\"" + relationship + "\"/>";
  Splices splices;
  const std::vector<pugi::xml_node> entries = childrenOf(list, Space::presentation, "sldId");
  if (!entries.empty() && after == 0) {
    splices.insert(deck.extent(entries.front()).begin, entry);
  } else if (!entries.empty()) {
    splices.insert(deck.extent(entries[static_cast<std::size_t>(after - 1)]).end, entry);
  } else if (list) {
    splices.append(deck, list, entry);
  } else {
    pugi::xml_node before;
    for (const char* name : {"sldMasterIdLst", "notesMasterIdLst", "handoutMasterIdLst"})
      if (const pugi::xml_node found = childOf(deck.root(), Space::presentation, name))
        before = found;
    splices.insert(deck.extent(before).end, "<" + prefix + "sldIdLst>" + entry + "</" + prefix + "sldIdLst>");
  }
  if (!slides.empty())
    joinSection(deck, slides[static_cast<std::size_t>(std::max(0, after - 1))].id, slide.id, splices);
  parts.put(presentation, splices.applyTo(deck));
}

}  // namespace

bool isSlideId(std::uint32_t id) {
  return id >= kFirstId && id <= kLastId;
}

std::string presentationPartOf(const Parts& parts) {
  if (!parts.has("[Content_Types].xml"))
    throwBad(parts.file(), "is not a presentation (it holds no list of contents).");
  contentTypeOf(parts, "");  // it must be readable, or nothing could be saved later
  const std::vector<Relationship> all = relationshipsOf(parts, "");
  const Relationship* main = byKind(all, "officeDocument");
  if (main == nullptr || main->target.empty())
    throwBad(parts.file(), "is not a presentation (it names no main part).");
  if (!parts.has(main->target))
    throwBad(parts.file(), "is broken (the part " + main->target + " is missing).");
  const Xml xml(parts.read(main->target), label(parts, main->target));
  if (!is(xml.root(), Space::presentation, "presentation"))
    throwBad(parts.file(), "is not a presentation (its main part is something else).");
  return main->target;
}

void requireSlidePart(const Parts& parts, const std::string& part) {
  if (part.empty())
    throwBad(parts.file(), "is broken (it does not say where this slide is).");
  if (!parts.has(part))
    throwBad(parts.file(), "is broken (the part " + part + " is missing).");
}

std::vector<SlideEntry> slidesOf(const Parts& parts, const std::string& presentation) {
  const Xml xml(parts.read(presentation), label(parts, presentation));
  const std::vector<Relationship> all = relationshipsOf(parts, presentation);
  std::vector<SlideEntry> slides;
  std::set<std::uint32_t> seen;
  const pugi::xml_node list = childOf(xml.root(), Space::presentation, "sldIdLst");
  for (const pugi::xml_node entry : childrenOf(list, Space::presentation, "sldId")) {
    const Relationship* slide = byId(all, relationshipAttribute(entry));
    const std::uint32_t id = entry.attribute("id").as_uint();
    if (id > kLastId || !seen.insert(id).second)
      throwBad(parts.file(), "is broken (two slides bear the number " + std::to_string(id) + ").");
    slides.push_back({id, slide == nullptr ? "" : slide->target});
  }
  return slides;
}

SlideSize slideSizeOf(const Parts& parts, const std::string& presentation) {
  const Xml xml(parts.read(presentation), label(parts, presentation));
  const pugi::xml_node size = childOf(xml.root(), Space::presentation, "sldSz");
  const double width = size.attribute("cx").as_double() / kEmuPerPoint,
               height = size.attribute("cy").as_double() / kEmuPerPoint;
  return width > 0 && height > 0 ? SlideSize{width, height} : SlideSize{};
}

SlideEntry addTitleOnlySlide(Parts& parts, const std::string& presentation, int after, std::uint32_t id) {
  const std::vector<SlideEntry> slides = slidesOf(parts, presentation);
  const Xml deck(parts.read(presentation), label(parts, presentation));
  const Layout layout = titleLayoutOf(parts, presentation, deck);
  Parts changed = parts;
  const SlideEntry slide{id != 0 ? id : freeSlideId(slides), freeSlidePart(parts, slides)};
  changed.put(slide.part, slideText(deck.dialect(), layout.titleType));
  addContentType(changed, slide.part, kSlideType);
  addRelationship(changed, slide.part, deck.dialect(), "slideLayout", layout.part);
  const std::string relationship =
      addRelationship(changed, presentation, deck.dialect(), "slide", slide.part);
  enterSlide(changed, presentation, slides, after, slide, relationship);
  parts = std::move(changed);
  return slide;
}

std::string presentationOfOneSlide(const Parts& parts, const std::string& presentation, std::uint32_t id) {
  const Xml xml(parts.read(presentation), label(parts, presentation));
  Splices splices;
  const pugi::xml_node list = childOf(xml.root(), Space::presentation, "sldIdLst");
  for (const pugi::xml_node entry : childrenOf(list, Space::presentation, "sldId")) {
    const Xml::Extent place = xml.extent(entry);
    if (entry.attribute("id").as_uint() != id)
      splices.replace(place.begin, place.end, "");
  }
  return splices.applyTo(xml);
}

}  // namespace qrn::deck

#include "adapters/deck/tags_part.h"

#include <algorithm>
#include <array>
#include <set>

#include "adapters/deck/relationships.h"
#include "adapters/deck/text.h"
#include "adapters/deck/xml.h"
#include "base/letter_case.h"

namespace qrn::deck {

namespace {

constexpr const char* kTagsType = "application/vnd.openxmlformats-officedocument.presentationml.tags+xml";
constexpr std::size_t kPieceLimit = 9000000;  // bytes of one escaped value
constexpr std::size_t kLongestEscape = 6;

// Where an owner refers to its list. Shapes have lists of their own deeper down; those are never looked at.
struct Place {
  pugi::xml_node parent;  // `cSld` of a slide, the root of the presentation
  pugi::xml_node list;    // its `custDataLst`, null when there is none
  pugi::xml_node tags;    // the `tags` element in it, null when there is none
  std::string id;         // of its relationship
};

Place placeIn(const Xml& xml) {
  Place place;
  const bool presentation = is(xml.root(), Space::presentation, "presentation");
  place.parent = presentation ? xml.root() : childOf(xml.root(), Space::presentation, "cSld");
  place.list = childOf(place.parent, Space::presentation, "custDataLst");
  place.tags = childOf(place.list, Space::presentation, "tags");
  place.id = relationshipAttribute(place.tags);
  return place;
}

std::string label(const Parts& parts, const std::string& part) {
  return parts.file() + " (" + part + ")";
}

bool isTag(pugi::xml_node node) {
  return is(node, Space::presentation, "tag");
}

bool isTagList(const Xml& xml) {
  return is(xml.root(), Space::presentation, "tagLst");
}

std::string tagElement(const std::string& prefix, const Tag& tag) {
  return "<" + prefix + "tag name=\"" + escapeAttribute(tag.name) + "\" val=\"" + escapeAttribute(tag.value) +
         "\"/>";
}

std::string newList(const Dialect& dialect, const std::vector<Tag>& pieces) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n<p:tagLst xmlns:a=\"";
  text.append(dialect.drawing).append("\" xmlns:r=\"").append(dialect.relationships);
  text.append("\" xmlns:p=\"").append(dialect.presentation).append("\">");
  for (const Tag& piece : pieces) text += tagElement("p:", piece);
  return text + "</p:tagLst>";
}

std::string changedList(const Xml& xml, const std::vector<Tag>& pieces) {
  Splices splices;
  std::set<std::string> seen;
  for (const pugi::xml_node node : xml.root().children()) {
    if (!isTag(node))
      continue;
    const std::string name = foldCase(node.attribute("name").value());
    const auto wanted =
        std::find_if(pieces.begin(), pieces.end(), [&](const Tag& tag) { return tag.name == name; });
    const bool first = seen.insert(name).second;
    if (wanted != pieces.end() && (!first || wanted->value == node.attribute("val").value()))
      continue;
    const Xml::Extent element = xml.extent(node);
    const Xml::AttributeExtent value = xml.attribute(node, "val");
    if (wanted == pieces.end())
      splices.replace(element.begin, element.end, "");
    else if (value.begin == std::string::npos)
      splices.replace(element.begin, element.end, tagElement(prefixOf(node), *wanted));
    else
      splices.replace(value.valueBegin - 1, value.end, "\"" + escapeAttribute(wanted->value) + "\"");
  }
  std::string added;
  for (const Tag& piece : pieces)
    if (seen.count(piece.name) == 0)
      added += tagElement(prefixOf(xml.root()), piece);
  if (!added.empty())
    splices.append(xml, xml.root(), added);
  return splices.applyTo(xml);
}

// The `tags` element that refers to `id`, in the words of this part.
std::string reference(const Xml& xml, const Place& place, const std::string& id) {
  const std::string known = prefixFor(place.parent, xml.dialect().relationships);
  const std::string declared =
      known.empty() ? " xmlns:r=\"" + std::string(xml.dialect().relationships) + "\" r:" : " " + known;
  return "<" + prefixOf(place.parent) + "tags" + declared + "id=\"" + id + "\"/>";
}

// Before the first element that may only follow the list; npos: at the end.
std::size_t newListPlace(const Parts& parts, const std::string& owner, const Xml& xml, const Place& place) {
  if (place.parent != xml.root()) {
    const pugi::xml_node tree = childOf(place.parent, Space::presentation, "spTree");
    if (!tree)
      throwBad(label(parts, owner), "is a slide without shapes element; it cannot hold tags.");
    return xml.extent(tree).end;
  }
  static constexpr std::array<std::string_view, 4> after = {"kinsoku", "defaultTextStyle", "modifyVerifier",
                                                            "extLst"};
  for (const pugi::xml_node child : place.parent.children())
    for (const std::string_view name : after)
      if (is(child, Space::presentation, name))
        return xml.extent(child).begin;
  return std::string::npos;
}

void refer(Parts& parts, const std::string& owner, const Xml& xml, const Place& place,
           const std::string& id) {
  Splices splices;
  if (place.tags) {
    const Xml::Extent old = xml.extent(place.tags);
    splices.replace(old.begin, old.end, reference(xml, place, id));
  } else if (place.list) {
    splices.append(xml, place.list, reference(xml, place, id));
  } else {
    const std::string prefix = prefixOf(place.parent);
    const std::string list =
        "<" + prefix + "custDataLst>" + reference(xml, place, id) + "</" + prefix + "custDataLst>";
    const std::size_t at = newListPlace(parts, owner, xml, place);
    if (at == std::string::npos)
      splices.append(xml, place.parent, list);
    else
      splices.insert(at, list);
  }
  parts.put(owner, splices.applyTo(xml));
}

std::string targetOf(const Parts& parts, const std::string& owner, const Place& place) {
  const std::vector<Relationship> all = relationshipsOf(parts, owner);
  const Relationship* found = place.id.empty() ? nullptr : byId(all, place.id);
  return found == nullptr || found->kind != "tags" ? "" : found->target;
}

}  // namespace

std::string tagsPartOf(const Parts& parts, const std::string& owner) {
  if (byKind(relationshipsOf(parts, owner), "tags") == nullptr)
    return "";  // most slides: nothing to look for in the slide itself
  const Xml xml(parts.read(owner), label(parts, owner));
  return targetOf(parts, owner, placeIn(xml));
}

std::vector<Tag> readTags(const Parts& parts, const std::string& owner) {
  const std::string part = tagsPartOf(parts, owner);
  std::vector<Tag> tags;
  if (part.empty() || !parts.has(part))
    return tags;
  const Xml xml(parts.read(part), label(parts, part));
  if (!isTagList(xml))
    return tags;
  std::set<std::string> seen;
  for (const pugi::xml_node node : xml.root().children()) {
    Tag tag{foldCase(node.attribute("name").value()), node.attribute("val").value()};
    if (isTag(node) && seen.insert(tag.name).second)
      tags.push_back(std::move(tag));
  }
  return joinLongValues(std::move(tags));
}

void writeTags(Parts& parts, const std::string& owner, const std::vector<Tag>& tags, bool apart) {
  const std::vector<Tag> pieces = splitLongValues(tags);
  const Xml xml(parts.read(owner), label(parts, owner));
  const Place place = placeIn(xml);
  if (!place.parent)
    throwBad(label(parts, owner), "is a slide without content; it cannot hold tags.");
  std::string part = targetOf(parts, owner, place);
  const bool present = !part.empty() && parts.has(part);
  if (present && !apart) {
    const Xml list(parts.read(part), label(parts, part));
    if (isTagList(list)) {
      parts.put(part, changedList(list, pieces));
      return;
    }
  }
  if (pieces.empty() && !place.tags)
    return;
  const bool known =
      !part.empty() && !present && !apart;  // referred to, but missing: it comes back under its name
  if (!known)
    part = parts.freeName("ppt/tags/tag");
  parts.put(part, newList(xml.dialect(), pieces));
  addContentType(parts, part, kTagsType);
  if (!known)
    refer(parts, owner, xml, place, addRelationship(parts, owner, xml.dialect(), "tags", part));
}

std::vector<Tag> splitLongValues(const std::vector<Tag>& tags) {
  std::vector<Tag> pieces;
  for (const Tag& tag : tags) {
    if (escapedLength(tag.value) <= kPieceLimit) {
      pieces.push_back(tag);
      continue;
    }
    std::string_view rest = tag.value;
    int number = 1;
    do {
      std::size_t cut = 0, length = 0;
      while (cut < rest.size()) {
        std::size_t next = cut + 1;
        while (next < rest.size() && (static_cast<unsigned char>(rest[next]) & 0xC0U) == 0x80U) ++next;
        const std::size_t more = escapedLength(rest.substr(cut, next - cut));
        if (length + more > kPieceLimit)
          break;
        length += more;
        cut = next;
      }
      pieces.push_back({number == 1 ? tag.name : tag.name + "#" + std::to_string(number),
                        std::string(rest.substr(0, cut))});
      rest.remove_prefix(cut);
      ++number;
    } while (!rest.empty());
  }
  return pieces;
}

std::vector<Tag> joinLongValues(std::vector<Tag> pieces) {
  const auto find = [&](const std::string& name) {
    return std::find_if(pieces.begin(), pieces.end(), [&](const Tag& tag) { return tag.name == name; });
  };
  std::set<std::string> joined;
  for (Tag& tag : pieces) {
    if (joined.count(tag.name) != 0 || tag.value.size() < kPieceLimit / kLongestEscape)
      continue;
    std::string_view last = tag.value;
    std::string whole;
    for (int number = 2; escapedLength(last) + kLongestEscape > kPieceLimit; ++number) {
      const auto next = find(tag.name + "#" + std::to_string(number));
      if (next == pieces.end())
        break;
      joined.insert(next->name);
      whole += (number == 2 ? tag.value : "") + next->value;
      last = next->value;
    }
    if (!whole.empty())
      tag.value = std::move(whole);
  }
  std::erase_if(pieces, [&](const Tag& tag) { return joined.count(tag.name) != 0; });
  return pieces;
}

std::string withoutTags(const Parts& parts, const std::string& owner) {
  const Xml xml(parts.read(owner), label(parts, owner));
  const Place place = placeIn(xml);
  if (!place.tags)
    return parts.read(owner);
  const pugi::xml_node only =
      childrenOf(place.list, Space::presentation, "custData").empty() ? place.list : place.tags;
  const Xml::Extent gone = xml.extent(only);
  Splices splices;
  splices.replace(gone.begin, gone.end, "");
  return splices.applyTo(xml);
}

}  // namespace qrn::deck

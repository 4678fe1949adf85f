#include "adapters/deck/xml.h"

#include <algorithm>
#include <cstring>

#include "adapters/deck/text.h"
#include "base/disk.h"

namespace qrn::deck {

namespace {

constexpr unsigned kParse = pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_doctype;

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// One past the `>` of the tag that begins at `at`.
std::size_t tagEnd(std::string_view text, std::size_t at) {
  char quote = 0;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (quote != 0)
      quote = c == quote ? '\0' : quote;
    else if (c == '"' || c == '\'')
      quote = c;
    else if (c == '>')
      return at + 1;
  }
  return text.size();
}

// One past a comment, CDATA section or processing instruction that begins at `at`; npos for an element's tag.
std::size_t otherEnd(std::string_view text, std::size_t at) {
  const auto past = [&](std::string_view start, std::string_view end) -> std::size_t {
    if (text.substr(at, start.size()) != start)
      return std::string_view::npos;
    const std::size_t found = text.find(end, at + start.size());
    return found == std::string_view::npos ? text.size() : found + end.size();
  };
  for (const auto& [start, end] : {std::pair{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}})
    if (const std::size_t there = past(start, end); there != std::string_view::npos)
      return there;
  return std::string_view::npos;
}

std::string_view uriOf(pugi::xml_node node, std::string_view prefix) {
  const std::string name = prefix.empty() ? "xmlns" : "xmlns:" + std::string(prefix);
  for (; node; node = node.parent())
    if (const auto attribute = node.attribute(name.c_str()))
      return attribute.value();
  return "";
}

std::string_view prefixOfName(std::string_view qualified) {
  const std::size_t colon = qualified.find(':');
  return colon == std::string_view::npos ? "" : qualified.substr(0, colon);
}

bool isSpace(std::string_view uri, Space space) {
  switch (space) {
    case Space::presentation:
      return uri == transitional().presentation || uri == strict().presentation;
    case Space::drawing:
      return uri == transitional().drawing || uri == strict().drawing;
    case Space::relationships:
      return uri == transitional().relationships || uri == strict().relationships;
  }
  return false;
}

}  // namespace

const Dialect& transitional() {
  static constexpr Dialect dialect{"http://schemas.openxmlformats.org/presentationml/2006/main",
                                   "http://schemas.openxmlformats.org/drawingml/2006/main",
                                   "http://schemas.openxmlformats.org/officeDocument/2006/relationships"};
  return dialect;
}

const Dialect& strict() {
  static constexpr Dialect dialect{"http://purl.oclc.org/ooxml/presentationml/main",
                                   "http://purl.oclc.org/ooxml/drawingml/main",
                                   "http://purl.oclc.org/ooxml/officeDocument/relationships"};
  return dialect;
}

Xml::Xml(std::string bytes, const std::string& where)
    : where_(where), encoding_(Encoding::of(bytes)), text_(encoding_.decode(std::move(bytes), where)) {
  const pugi::xml_parse_result result =
      document_.load_buffer(text_.data(), text_.size(), kParse, pugi::encoding_utf8);
  if (!result)
    throwBad(where, std::string("is broken XML (") + result.description() + " at byte " +
                        std::to_string(result.offset) + ").");
  for (const pugi::xml_node node : document_.children())
    if (node.type() == pugi::node_doctype)
      throwBad(where, "declares a document type, which no presentation part may do.");
  if (!document_.document_element())
    throwBad(where, "is broken XML (no element).");
}

const Dialect& Xml::dialect() const {
  const std::string_view uri = uriOf(root(), prefixOfName(root().name()));
  return uri == strict().presentation || uri == strict().drawing ? strict() : transitional();
}

Xml::Extent Xml::extent(pugi::xml_node node) const {
  const std::string_view text = text_;
  Extent extent{};
  extent.begin = static_cast<std::size_t>(node.offset_debug()) - 1;
  extent.startTagEnd = tagEnd(text, extent.begin);
  extent.selfClosing = text[extent.startTagEnd - 2] == '/';
  extent.contentEnd = extent.end = extent.startTagEnd;
  for (int depth = extent.selfClosing ? 0 : 1; depth > 0 && extent.end < text.size();) {
    const std::size_t tag = text.find('<', extent.end);
    if (tag == std::string_view::npos)
      break;
    if (const std::size_t past = otherEnd(text, tag); past != std::string_view::npos) {
      extent.end = past;
      continue;
    }
    extent.end = tagEnd(text, tag);
    if (text[tag + 1] == '/')
      --depth;
    else if (text[extent.end - 2] != '/')
      ++depth;
    extent.contentEnd = tag;
  }
  return extent;
}

Xml::AttributeExtent Xml::attribute(pugi::xml_node node, std::string_view name) const {
  const std::string_view text = text_;
  std::size_t at = static_cast<std::size_t>(node.offset_debug()) + std::strlen(node.name());
  const std::size_t end = tagEnd(text, at) - 1;
  while (at < end) {
    const std::size_t begin = at;
    while (at < end && isBlank(text[at])) ++at;
    const std::size_t nameBegin = at;
    while (at < end && text[at] != '=' && !isBlank(text[at])) ++at;
    const std::string_view found = text.substr(nameBegin, at - nameBegin);
    while (at < end && text[at] != '"' && text[at] != '\'') ++at;
    if (at >= end)
      break;
    const std::size_t valueBegin = at + 1, valueEnd = text.find(text[at], valueBegin);
    if (found == name)
      return {begin, valueBegin, valueEnd, valueEnd + 1, text[at]};
    at = valueEnd + 1;
  }
  return {std::string::npos, 0, 0, 0, '"'};
}

std::string_view localName(std::string_view qualified) {
  const std::size_t colon = qualified.find(':');
  return colon == std::string_view::npos ? qualified : qualified.substr(colon + 1);
}

bool is(pugi::xml_node node, Space space, std::string_view local) {
  const std::string_view name = node.name();
  return node.type() == pugi::node_element && localName(name) == local &&
         isSpace(uriOf(node, prefixOfName(name)), space);
}

pugi::xml_node childOf(pugi::xml_node parent, Space space, std::string_view local) {
  for (const pugi::xml_node child : parent.children())
    if (is(child, space, local))
      return child;
  return {};
}

std::vector<pugi::xml_node> childrenOf(pugi::xml_node parent, Space space, std::string_view local) {
  std::vector<pugi::xml_node> found;
  for (const pugi::xml_node child : parent.children())
    if (is(child, space, local))
      found.push_back(child);
  return found;
}

pugi::xml_node findBelow(pugi::xml_node parent, Space space, std::string_view local) {
  return parent.find_node([&](pugi::xml_node node) { return is(node, space, local); });
}

std::string prefixOf(pugi::xml_node node) {
  const std::string_view prefix = prefixOfName(node.name());
  return prefix.empty() ? "" : std::string(prefix) + ":";
}

std::string prefixFor(pugi::xml_node node, std::string_view uri) {
  for (pugi::xml_node scope = node; scope; scope = scope.parent())
    for (const pugi::xml_attribute attribute : scope.attributes()) {
      const std::string_view name = attribute.name();
      if (name.rfind("xmlns:", 0) != 0 || uri != attribute.value())
        continue;
      const std::string_view prefix = name.substr(6);
      if (uriOf(node, prefix) == uri)  // not hidden by a nearer declaration
        return std::string(prefix) + ":";
    }
  return "";
}

std::string relationshipAttribute(pugi::xml_node node, std::string_view local) {
  for (const pugi::xml_attribute attribute : node.attributes()) {
    const std::string_view name = attribute.name();
    if (localName(name) == local && name.find(':') != std::string_view::npos &&
        isSpace(uriOf(node, prefixOfName(name)), Space::relationships))
      return attribute.value();
  }
  return "";
}

bool isTrue(std::string_view value) {
  return value == "1" || value == "true" || value == "on";
}

void Splices::replace(std::size_t begin, std::size_t end, std::string text) {
  changes_.push_back({begin, end, std::move(text)});
}

void Splices::append(const Xml& xml, pugi::xml_node parent, const std::string& child) {
  const Xml::Extent place = xml.extent(parent);
  if (place.selfClosing)
    replace(place.startTagEnd - 2, place.startTagEnd, ">" + child + "</" + parent.name() + ">");
  else
    insert(place.contentEnd, child);
}

std::string Splices::applyTo(const Xml& xml) const {
  const std::string_view text = xml.text();
  std::vector<const Change*> order;
  std::size_t grown = text.size();
  for (const Change& change : changes_) {
    order.push_back(&change);
    grown += change.text.size();
  }
  std::stable_sort(order.begin(), order.end(),
                   [](const Change* a, const Change* b) { return a->begin < b->begin; });
  std::string out;
  out.reserve(grown);
  std::size_t at = 0;
  for (const Change* change : order) {
    if (change->begin < at)
      throw HostError(Fault::program, 5, "Two changes to one place of a slide");
    out.append(text.substr(at, change->begin - at)).append(change->text);
    at = change->end;
  }
  return xml.encoded(std::move(out.append(text.substr(at))));
}

}  // namespace qrn::deck

#include "adapters/deck/shapes.h"

#include <algorithm>
#include <array>

#include "adapters/deck/text.h"
#include "base/storable.h"
#include "base/text.h"

namespace qrn::deck {

namespace {

bool isShape(pugi::xml_node node) {
  static constexpr std::array<std::string_view, 6> kinds = {"sp",    "pic",   "graphicFrame",
                                                            "cxnSp", "grpSp", "contentPart"};
  return std::any_of(kinds.begin(), kinds.end(),
                     [&](std::string_view kind) { return is(node, Space::presentation, kind); });
}

bool isAlternate(pugi::xml_node node) {
  return localName(node.name()) == "AlternateContent";
}

pugi::xml_node properties(pugi::xml_node shape) {
  return findBelow(shape, Space::presentation, "cNvPr");
}

// CR, LF and CR LF all end a paragraph.
std::string joinedByCr(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
      ++i;
    out.push_back(text[i] == '\n' ? '\r' : text[i]);
  }
  return out;
}

std::string bytesOf(const Xml& xml, pugi::xml_node node) {
  if (!node)
    return "";
  const Xml::Extent place = xml.extent(node);
  return xml.text().substr(place.begin, place.end - place.begin);
}

// Paragraphs that look like the first one did. `declare` stands in each paragraph's start tag.
std::string paragraphs(std::string_view text, const std::string& prefix, const std::string& declare,
                       const std::string& paragraphLook, const std::string& runLook) {
  std::string out;
  for (const std::string_view paragraph : splitFields(text, '\r')) {
    out += "<" + prefix + "p" + declare + ">" + paragraphLook;
    bool first = true;
    for (const std::string_view line : splitFields(paragraph, '\v')) {
      if (!first)
        out += "<" + prefix + "br>" + runLook + "</" + prefix + "br>";
      if (!line.empty())
        out += "<" + prefix + "r>" + runLook + "<" + prefix + "t>" + escapeText(storable(line)) + "</" +
               prefix + "t></" + prefix + "r>";
      first = false;
    }
    out += "</" + prefix + "p>";
  }
  return out;
}

}  // namespace

std::string textOfBody(pugi::xml_node body) {
  std::string text;
  bool first = true;
  for (const pugi::xml_node paragraph : childrenOf(body, Space::drawing, "p")) {
    if (!first)
      text += '\r';
    first = false;
    for (const pugi::xml_node part : paragraph.children()) {
      if (is(part, Space::drawing, "br"))
        text += '\v';
      else if (is(part, Space::drawing, "r") || is(part, Space::drawing, "fld"))
        text += childOf(part, Space::drawing, "t").text().get();
    }
  }
  return text;
}

std::string placeholderName(pugi::xml_node shape) {
  for (const pugi::xml_node child : shape.children()) {
    const pugi::xml_node own = childOf(child, Space::presentation, "nvPr");
    if (const pugi::xml_node placeholder = childOf(own, Space::presentation, "ph"))
      return placeholder.attribute("type").as_string("obj");
  }
  return "";
}

host::PlaceholderType placeholderOf(pugi::xml_node shape) {
  const std::string name = placeholderName(shape);
  if (name.empty())
    return host::PlaceholderType::none;
  if (name == "title" || name == "ctrTitle")
    return host::PlaceholderType::title;
  return name == "body" ? host::PlaceholderType::body : host::PlaceholderType::other;
}

ShapePage::ShapePage(std::string part, Source parts, std::function<void()> restyled)
    : part_(std::move(part)), parts_(std::move(parts)), restyled_(std::move(restyled)) {}

ShapePage::~ShapePage() = default;

void ShapePage::load() {
  if (xml_)
    return;
  xml_ = std::make_unique<Xml>(parts_().read(part_), parts_().file() + " (" + part_ + ")");
  for (const pugi::xml_node node : shapeNodes()) shapes_.push_back(std::make_unique<DeckShape>(*this, node));
}

std::vector<pugi::xml_node> ShapePage::shapeNodes() {
  std::vector<pugi::xml_node> nodes;
  const pugi::xml_node content = childOf(xml_->root(), Space::presentation, "cSld");
  for (const pugi::xml_node node : childOf(content, Space::presentation, "spTree").children())
    if (isShape(node) || isAlternate(node))
      nodes.push_back(node);
  return nodes;
}

const Xml& ShapePage::xml() {
  load();
  return *xml_;
}

std::vector<host::Shape*> ShapePage::shapes() {
  load();
  std::vector<host::Shape*> alive;
  for (const auto& shape : shapes_)
    if (!shape->deleted())
      alive.push_back(shape.get());
  return alive;
}

std::string ShapePage::title() {
  for (const host::Shape* shape : shapes())
    if (shape->Placeholder() == host::PlaceholderType::title)
      return shape->Text();
  return "";
}

bool ShapePage::hiddenSlide() {
  const pugi::xml_attribute show = xml().root().attribute("show");
  return show && !isTrue(show.value());
}

bool ShapePage::changed() const {
  return std::any_of(shapes_.begin(), shapes_.end(), [](const auto& shape) { return shape->changed(); });
}

std::string ShapePage::changedText() {
  load();
  Splices splices;
  for (const auto& shape : shapes_) shape->describe(splices);
  return splices.applyTo(*xml_);
}

void ShapePage::setSaved() {
  if (!xml_)
    return;
  std::erase_if(shapes_, [](const auto& shape) { return shape->deleted(); });
  if (parts_().read(part_) == xml_->text())
    return;
  xml_ = std::make_unique<Xml>(parts_().read(part_), parts_().file() + " (" + part_ + ")");
  const std::vector<pugi::xml_node> nodes = shapeNodes();
  for (std::size_t i = 0; i < shapes_.size() && i < nodes.size(); ++i) shapes_[i]->setSaved(nodes[i]);
}

std::vector<pugi::xml_node> DeckShape::branches() const {
  if (!isAlternate(outer_))
    return {outer_};
  std::vector<pugi::xml_node> found;
  for (const pugi::xml_node branch : outer_.children())
    for (const pugi::xml_node node : branch.children())
      if (isShape(node))
        found.push_back(node);
  return found;
}

pugi::xml_node DeckShape::inner() const {
  const std::vector<pugi::xml_node> all = branches();
  return all.empty() ? pugi::xml_node() : all.front();
}

pugi::xml_node DeckShape::body() const {
  return childOf(inner(), Space::presentation, "txBody");
}

std::string DeckShape::Name() const {
  return properties(inner()).attribute("name").value();
}

bool DeckShape::HasTextFrame() const {
  // The picture of the slide on a notes page is written as a shape, but takes no text.
  return is(inner(), Space::presentation, "sp") && placeholderName(inner()) != "sldImg";
}

std::string DeckShape::Text() const {
  return text_ ? *text_ : textOfBody(body());
}

void DeckShape::SetText(std::string_view text) {
  if (!HasTextFrame())
    throw HostError(Fault::program, 5, "The shape " + Name() + " holds no text");
  std::string joined = joinedByCr(text);
  if (joined == Text())
    return;
  text_ = std::move(joined);
  page_.restyled();
}

void DeckShape::SetVisible(bool visible) {
  visible_ = visible;
  page_.restyled();
}

void DeckShape::Delete() {
  deleted_ = true;
  page_.restyled();
}

bool DeckShape::visibleInPart() const {
  return !isTrue(properties(inner()).attribute("hidden").value());
}

bool DeckShape::Visible() const {
  return visible_.value_or(visibleInPart());
}

host::PlaceholderType DeckShape::Placeholder() const {
  return placeholderOf(inner());
}

bool DeckShape::changed() const {
  return deleted_ || Visible() != visibleInPart() || (text_ && *text_ != textOfBody(body()));
}

void DeckShape::describe(Splices& splices) const {
  if (deleted_) {
    const Xml::Extent place = page_.xml().extent(outer_);
    splices.replace(place.begin, place.end, "");
    return;
  }
  if (Visible() != visibleInPart())
    describeVisible(splices);
  if (text_ && *text_ != textOfBody(body()))
    describeText(splices);
}

void DeckShape::describeVisible(Splices& splices) const {
  const Xml& xml = page_.xml();
  for (const pugi::xml_node branch : branches()) {
    const pugi::xml_node node = properties(branch);
    if (!node)
      continue;
    const Xml::AttributeExtent hidden = xml.attribute(node, "hidden");
    if (hidden.begin == std::string::npos) {
      if (!Visible())
        splices.insert(xml.extent(node).begin + 1 + std::string_view(node.name()).size(), " hidden=\"1\"");
    } else if (Visible()) {
      splices.replace(hidden.begin, hidden.end, "");
    } else {
      splices.replace(hidden.valueBegin, hidden.valueEnd, "1");
    }
  }
}

void DeckShape::describeText(Splices& splices) const {
  const Xml& xml = page_.xml();
  const std::string_view uri = xml.dialect().drawing;
  const pugi::xml_node shape = inner(), frame = body();
  const std::vector<pugi::xml_node> old = childrenOf(frame, Space::drawing, "p");
  const std::string known = prefixFor(shape, uri);
  const std::string prefix = known.empty() ? "a:" : known;
  const std::string declare = known.empty() ? " xmlns:a=\"" + std::string(uri) + "\"" : "";
  const pugi::xml_node first = old.empty() ? pugi::xml_node() : old.front();
  const pugi::xml_node run = findBelow(frame, Space::drawing, "r");
  const std::string text =
      paragraphs(*text_, prefix, declare, bytesOf(xml, childOf(first, Space::drawing, "pPr")),
                 bytesOf(xml, childOf(run, Space::drawing, "rPr")));
  if (!old.empty()) {
    splices.replace(xml.extent(old.front()).begin, xml.extent(old.back()).end, text);
  } else if (frame) {
    splices.append(xml, frame, text);
  } else {
    pugi::xml_node before = childOf(shape, Space::presentation, "style");
    if (!before)
      before = childOf(shape, Space::presentation, "spPr");
    if (!before)
      throwBad(page_.part(), "holds a shape without properties, which takes no text.");
    const std::string own = prefixOf(shape);
    splices.insert(xml.extent(before).end, "<" + own + "txBody><" + prefix + "bodyPr" + declare + "/><" +
                                               prefix + "lstStyle" + declare + "/>" + text + "</" + own +
                                               "txBody>");
  }
}

void DeckShape::setSaved(pugi::xml_node node) {
  outer_ = node;
  visible_.reset();
  text_.reset();
}

}  // namespace qrn::deck

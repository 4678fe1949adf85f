#include "adapters/deck/master.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "adapters/deck/relationships.h"
#include "adapters/deck/shapes.h"

namespace qrn::deck {

namespace {

constexpr std::int32_t kNoColour = -1;
constexpr std::array<std::string_view, 10> kEntries = {"bg1",     "tx1",     "bg2",     "tx2",     "accent1",
                                                       "accent2", "accent3", "accent4", "accent5", "accent6"};

std::int32_t fromHex(std::string_view hex) {
  if (hex.size() != 6 || hex.find_first_not_of("0123456789abcdefABCDEF") != std::string_view::npos)
    return kNoColour;
  const long rgb = std::stol(std::string(hex), nullptr, 16);
  return static_cast<std::int32_t>(((rgb & 0xFF) << 16) | (rgb & 0xFF00) | (rgb >> 16));
}

// Thousandths of a percent, or percent with its sign in strict decks, as a fraction.
double fraction(pugi::xml_attribute value) {
  const std::string_view text = value.value();
  return value.as_double() / (!text.empty() && text.back() == '%' ? 100.0 : 100000.0);
}

struct Hsl {
  double h, s, l;
};

Hsl toHsl(const std::array<double, 3>& c) {
  const double high = std::max({c[0], c[1], c[2]}), low = std::min({c[0], c[1], c[2]}), span = high - low;
  Hsl out{0, 0, (high + low) / 2};
  if (span <= 0)
    return out;
  out.s = span / (1 - std::abs(2 * out.l - 1));
  if (high == c[0])
    out.h = std::fmod((c[1] - c[2]) / span + 6, 6);
  else
    out.h = high == c[1] ? (c[2] - c[0]) / span + 2 : (c[0] - c[1]) / span + 4;
  return out;
}

std::array<double, 3> toRgb(const Hsl& c) {
  const double chroma = (1 - std::abs(2 * c.l - 1)) * c.s, low = c.l - chroma / 2;
  const double x = chroma * (1 - std::abs(std::fmod(c.h, 2) - 1));
  static constexpr int order[6][3] = {{2, 1, 0}, {1, 2, 0}, {0, 2, 1}, {0, 1, 2}, {1, 0, 2}, {2, 0, 1}};
  const std::array<double, 3> level = {low, low + x, low + chroma};
  const auto& places = order[static_cast<int>(c.h) % 6];
  return {level[static_cast<std::size_t>(places[0])], level[static_cast<std::size_t>(places[1])],
          level[static_cast<std::size_t>(places[2])]};
}

// Lightness and saturation changes, shade and tint as the drawing language defines them for plain colours.
std::int32_t modified(std::int32_t colour, pugi::xml_node node) {
  std::array<double, 3> c = {(colour & 0xFF) / 255.0, (colour >> 8 & 0xFF) / 255.0,
                             (colour >> 16 & 0xFF) / 255.0};
  for (const pugi::xml_node change : node.children()) {
    const double amount = fraction(change.attribute("val"));
    const std::string_view name = localName(change.name());
    Hsl hsl = toHsl(c);
    if (name == "lumMod" || name == "lumOff") {
      hsl.l = std::clamp(name == "lumMod" ? hsl.l * amount : hsl.l + amount, 0.0, 1.0);
      c = toRgb(hsl);
    } else if (name == "satMod") {
      hsl.s = std::clamp(hsl.s * amount, 0.0, 1.0);
      c = toRgb(hsl);
    } else if (name == "shade") {
      for (double& part : c) part *= amount;
    } else if (name == "tint") {
      for (double& part : c) part = part * amount + 1 - amount;
    }
  }
  std::int32_t out = 0;
  for (std::size_t i = 0; i < 3; ++i)
    out |= static_cast<std::int32_t>(std::lround(std::clamp(c[i], 0.0, 1.0) * 255)) << (8 * i);
  return out;
}

pugi::xml_node firstLevel(pugi::xml_node style) {
  return childOf(childOf(style, Space::drawing, "lvl1pPr"), Space::drawing, "defRPr");
}

std::unique_ptr<Xml> readXml(const Parts& parts, const std::string& part) {
  if (part.empty() || !parts.has(part))
    return nullptr;
  return std::make_unique<Xml>(parts.read(part), parts.file() + " (" + part + ")");
}

}  // namespace

MasterLook::MasterLook(const Parts& parts, const std::string& presentation) {
  const Xml deck(parts.read(presentation), parts.file() + " (" + presentation + ")");
  const pugi::xml_node list = childOf(deck.root(), Space::presentation, "sldMasterIdLst");
  const std::string id = relationshipAttribute(childOf(list, Space::presentation, "sldMasterId"));
  const std::vector<Relationship> all = relationshipsOf(parts, presentation);
  const Relationship* master = byId(all, id);
  if (master == nullptr || !(master_ = readXml(parts, master->target)))
    return;
  for (const pugi::xml_attribute entry : childOf(master_->root(), Space::presentation, "clrMap").attributes())
    map_[entry.name()] = entry.value();
  const std::vector<Relationship> ofMaster = relationshipsOf(parts, master->target);
  const Relationship* theme = byKind(ofMaster, "theme");
  if (theme == nullptr || !(theme_ = readXml(parts, theme->target)))
    return;
  for (const pugi::xml_node colour : findBelow(theme_->root(), Space::drawing, "clrScheme").children())
    scheme_[std::string(localName(colour.name()))] = colourIn(colour);
  for (const auto& [family, name] : {std::pair{"majorFont", "+mj-"}, {"minorFont", "+mn-"}}) {
    const pugi::xml_node font = findBelow(theme_->root(), Space::drawing, family);
    for (const auto& [script, end] : {std::pair{"latin", "lt"}, {"ea", "ea"}, {"cs", "cs"}})
      themeFonts_[std::string(name) + end] =
          childOf(font, Space::drawing, script).attribute("typeface").value();
  }
}

std::int32_t MasterLook::plainColour(pugi::xml_node node) const {
  const std::string_view name = localName(node.name()), value = node.attribute("val").value();
  if (name == "srgbClr")
    return fromHex(value);
  if (name == "schemeClr")
    return named(std::string(value));
  if (name == "sysClr") {
    const std::int32_t last = fromHex(node.attribute("lastClr").value());
    if (last != kNoColour)
      return last;
    return value == "window" ? 0xffffff : value == "windowText" ? 0 : kNoColour;
  }
  if (name == "scrgbClr") {
    std::int32_t colour = 0;
    int shift = 0;
    for (const char* part : {"r", "g", "b"}) {
      const double level = std::clamp(fraction(node.attribute(part)), 0.0, 1.0);
      colour |= static_cast<std::int32_t>(std::lround(level * 255)) << shift;
      shift += 8;
    }
    return colour;
  }
  if (name == "prstClr")
    return value == "white" ? 0xffffff : value == "black" ? 0 : kNoColour;
  return kNoColour;
}

std::int32_t MasterLook::colourIn(pugi::xml_node parent) const {
  for (const pugi::xml_node node : parent.children()) {
    const std::int32_t colour = plainColour(node);
    if (colour != kNoColour)
      return modified(colour, node);
  }
  return kNoColour;
}

std::int32_t MasterLook::named(const std::string& name) const {
  const auto mapped = map_.find(name);
  const auto colour = scheme_.find(mapped == map_.end() ? name : mapped->second);
  return colour == scheme_.end() ? kNoColour : colour->second;
}

std::int32_t MasterLook::schemeColour(int entry) const {
  if (entry < 1 || entry > static_cast<int>(kEntries.size()))
    return kNoColour;
  return named(std::string(kEntries[static_cast<std::size_t>(entry - 1)]));
}

std::int32_t MasterLook::backgroundIn(pugi::xml_node content) const {
  const pugi::xml_node background = childOf(content, Space::presentation, "bg");
  const pugi::xml_node own = childOf(background, Space::presentation, "bgPr");
  if (const pugi::xml_node fill = childOf(own, Space::drawing, "solidFill"))
    return colourIn(fill);
  return colourIn(childOf(background, Space::presentation, "bgRef"));
}

std::int32_t MasterLook::background() const {
  return master_ ? backgroundIn(childOf(master_->root(), Space::presentation, "cSld")) : kNoColour;
}

pugi::xml_node MasterLook::placeholderShape(std::string_view type) const {
  const pugi::xml_node content = childOf(master_->root(), Space::presentation, "cSld");
  for (const pugi::xml_node shape :
       childrenOf(childOf(content, Space::presentation, "spTree"), Space::presentation, "sp"))
    if (placeholderName(shape) == type)
      return shape;
  return {};
}

std::string MasterLook::typeface(std::string_view name) const {
  const auto found = themeFonts_.find(std::string(name));
  if (found != themeFonts_.end())
    return found->second;
  return name.rfind('+', 0) == 0 ? "" : std::string(name);
}

void MasterLook::apply(pugi::xml_node properties, host::MasterFont& font) const {
  if (const auto size = properties.attribute("sz"))
    font.size = size.as_double() / 100;
  if (const auto bold = properties.attribute("b"))
    font.bold = isTrue(bold.value());
  if (const auto italic = properties.attribute("i"))
    font.italic = isTrue(italic.value());
  if (const auto underline = properties.attribute("u"))
    font.underline = std::string_view(underline.value()) != "none";
  if (const auto latin = childOf(properties, Space::drawing, "latin"))
    font.name = typeface(latin.attribute("typeface").value());
  const std::int32_t colour = colourIn(childOf(properties, Space::drawing, "solidFill"));
  if (colour != kNoColour)
    font.colour = colour;
}

// The shape's own first run wins over its list style, that over the master's text styles.
std::optional<host::MasterFont> MasterLook::font(std::string_view placeholder, std::string_view style) const {
  const pugi::xml_node shape = master_ ? placeholderShape(placeholder) : pugi::xml_node();
  if (!shape)
    return std::nullopt;
  host::MasterFont font;
  font.name = typeface(placeholder == "title" ? "+mj-lt" : "+mn-lt");
  font.size = 18;  // what a text without any size has
  font.colour = std::max(0, named("tx1"));
  const pugi::xml_node styles = childOf(master_->root(), Space::presentation, "txStyles");
  apply(firstLevel(childOf(styles, Space::presentation, style)), font);
  const pugi::xml_node body = childOf(shape, Space::presentation, "txBody");
  apply(firstLevel(childOf(body, Space::drawing, "lstStyle")), font);
  apply(childOf(findBelow(body, Space::drawing, "r"), Space::drawing, "rPr"), font);
  return font;
}

}  // namespace qrn::deck

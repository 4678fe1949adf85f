// The look of the slide master: fonts of title and body, the colour scheme behind its colour map.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "adapters/deck/package.h"
#include "adapters/deck/xml.h"
#include "host/presentation.h"

namespace qrn::deck {

class MasterLook {
 public:
  MasterLook() = default;  // no look at all
  // Of the first slide master of the presentation part. A deck without master or theme has no look: fonts are
  // absent, colours -1.
  MasterLook(const Parts& parts, const std::string& presentation);
  std::optional<host::MasterFont> titleFont() const { return font("title", "titleStyle"); }
  std::optional<host::MasterFont> bodyFont() const { return font("body", "bodyStyle"); }
  std::int32_t schemeColour(int entry) const;  // 1 to 10, red lowest; -1 when not available
  std::int32_t background() const;             // plain colour behind the slides, -1 when it is none
  // Colour inside a fill element or reference (`solidFill`, `bgRef`), -1 when it is none that can be told.
  std::int32_t colourIn(pugi::xml_node parent) const;
  std::int32_t backgroundIn(pugi::xml_node content) const;  // of a `cSld`

 private:
  std::optional<host::MasterFont> font(std::string_view placeholder, std::string_view style) const;
  pugi::xml_node placeholderShape(std::string_view type) const;
  void apply(pugi::xml_node properties, host::MasterFont& font) const;
  std::string typeface(std::string_view name) const;
  std::int32_t named(const std::string& name) const;
  std::int32_t plainColour(pugi::xml_node node) const;

  std::unique_ptr<Xml> master_, theme_;
  std::map<std::string, std::string> map_;         // bg1 -> lt1
  std::map<std::string, std::int32_t> scheme_;     // lt1 -> colour
  std::map<std::string, std::string> themeFonts_;  // +mj-lt, +mn-lt
};

}  // namespace qrn::deck

// The shapes of a slide or of a notes page. What is changed is kept beside the part's text and put into it
// when the deck is written, so that a shape hidden and shown again leaves the part as it was.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/deck/package.h"
#include "adapters/deck/xml.h"
#include "host/presentation.h"

namespace qrn::deck {

class DeckShape;

class ShapePage {
 public:
  using Source = std::function<const Parts&()>;
  // `restyled` is called when a shape may look different from now on.
  ShapePage(
      std::string part, Source parts, std::function<void()> restyled = [] {});
  ~ShapePage();
  const std::string& part() const { return part_; }
  std::vector<host::Shape*> shapes();
  std::string title();  // text of the title placeholder
  bool hiddenSlide();
  const Xml& xml();
  bool changed() const;
  std::string changedText();  // of the part, with the changes in it
  void restyled() { restyled_(); }
  void setSaved();  // the part on the disk has them now; shapes stay the same objects

 private:
  void load();
  std::vector<pugi::xml_node> shapeNodes();
  std::string part_;
  Source parts_;
  std::function<void()> restyled_;
  std::unique_ptr<Xml> xml_;
  std::vector<std::unique_ptr<DeckShape>> shapes_;
};

class DeckShape : public host::Shape {
 public:
  DeckShape(ShapePage& page, pugi::xml_node node) : page_(page), outer_(node) {}
  std::string Name() const override;
  bool HasTextFrame() const override;
  std::string Text() const override;
  void SetText(std::string_view text) override;
  bool Visible() const override;
  void SetVisible(bool visible) override;
  void Delete() override;
  host::PlaceholderType Placeholder() const override;

  bool deleted() const { return deleted_; }
  bool changed() const;
  void describe(Splices& splices) const;  // its changes
  void setSaved(pugi::xml_node node);

 private:
  std::vector<pugi::xml_node> branches() const;
  pugi::xml_node inner() const;  // the shape itself inside alternate content
  pugi::xml_node body() const;
  bool visibleInPart() const;
  void describeVisible(Splices& splices) const;
  void describeText(Splices& splices) const;
  ShapePage& page_;
  pugi::xml_node outer_;
  std::optional<bool> visible_;
  std::optional<std::string> text_;
  bool deleted_ = false;
};

// Paragraphs joined by CR, line breaks inside a paragraph as VT.
std::string textOfBody(pugi::xml_node body);
host::PlaceholderType placeholderOf(pugi::xml_node shape);
// Type attribute of the shape's placeholder; "obj" when it has a placeholder without type, "" without one.
std::string placeholderName(pugi::xml_node shape);

}  // namespace qrn::deck

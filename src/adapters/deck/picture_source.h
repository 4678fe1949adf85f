// The deck as it is to be drawn, and names for what its slides look like.
#pragma once

#include <string>
#include <vector>

#include "adapters/deck/package.h"
#include "adapters/deck/slide_list.h"

namespace qrn::deck {

class PictureSource {
 public:
  // `parts` with the changes of shapes in them.
  PictureSource(Parts parts, std::string presentation, std::vector<SlideEntry> slides);
  const Parts& parts() const { return parts_; }
  const std::string& presentation() const { return presentation_; }
  const std::vector<SlideEntry>& slides() const { return slides_; }
  // The part of the slide reads so from now on.
  void change(std::size_t slide, std::string text);
  // The deck with this slide alone.
  PictureSource only(std::size_t slide) const;

  // Name of what the slide looks like: the same as long as nothing that is drawn changes; tags, notes and
  // other slides do not count. Each is computed once.
  const std::string& slideVersion(std::size_t slide) const;
  const std::string& deckVersion() const;

 private:
  Parts parts_;
  std::string presentation_;
  std::vector<SlideEntry> slides_;
  mutable std::string common_, deck_;  // "" until asked for, also below
  mutable std::vector<std::string> versions_;
};

}  // namespace qrn::deck

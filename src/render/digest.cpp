#include "render/digest.h"

#include <algorithm>

namespace qrn::render {

namespace {

// Several small values in one number.
std::uint64_t packed(std::int32_t high, std::int32_t low) {
  return static_cast<std::uint64_t>(static_cast<std::uint32_t>(high)) << 32 | static_cast<std::uint32_t>(low);
}

}  // namespace

Digest& Digest::add(const std::string& text) {
  add(static_cast<std::uint64_t>(text.size()));
  for (std::size_t at = 0; at < text.size(); at += 8) {
    std::uint64_t piece = 0;
    std::memcpy(&piece, text.data() + at, std::min<std::size_t>(8, text.size() - at));
    add(piece);
  }
  return *this;
}

std::uint64_t textDigest(const host::Element& label) {
  const host::SurfaceFont& font = label.font;
  const int style = font.bold | font.italic << 1 | font.underline << 2 | label.wordWrap << 3 |
                    static_cast<int>(label.align) << 4;
  return Digest()
      .add(label.caption)
      .add(font.name)
      .add(font.size)
      .add(packed(label.colour, style))
      .add(label.wordWrap ? label.width : 0.0)
      .value();
}

std::uint64_t shapeDigest(const host::Element& e) {
  const int flags = e.opaque | e.gradient << 1 | e.bordered << 2 | static_cast<int>(e.fill) << 3 |
                    e.borderStyle << 8 | static_cast<int>(e.kind) << 16 | static_cast<int>(e.toward) << 20 |
                    e.roundOneSide << 24;
  return Digest()
      .add(packed(e.colour, e.backColour))
      .add(packed(e.backColourEnd, flags))
      .add(e.opacity)
      .add(e.borderWidth)
      .add(e.cornerRadius)
      .add(e.ringWidth)
      .add(static_cast<std::uint64_t>(static_cast<std::uint32_t>(e.ringColour)))
      .add(e.width)
      .add(e.height)
      .value();
}

std::uint64_t elementDigest(const host::Element& e) {
  Digest digest;
  digest.add(shapeDigest(e));
  if (e.kind == host::Element::Kind::line)
    digest.add(e.x1).add(e.y1).add(e.x2).add(e.y2);
  else
    digest.add(e.left).add(e.top);
  if (e.kind == host::Element::Kind::label || e.kind == host::Element::Kind::code)
    digest.add(textDigest(e));
  return digest.value() | 1;
}

}  // namespace qrn::render

// The pages: what is compiled in, and the page to project with its QR code.
#pragma once

#include <string>
#include <string_view>

#include "host/controller.h"

namespace qrn::controller {

struct Asset {
  std::string_view path;
  std::string_view type;
  std::string_view body;
};
// The files of web/, by path as the browser asks for them. Null when there is none.
const Asset* findAsset(std::string_view path);

std::string escapeHtml(std::string_view text);
// The page to project: the address in large type, its QR code, the number of phones joined. Without an
// address for phones, and in a rehearsal, it says so and shows no code.
std::string joinPage(const host::RoomState& room);
// A QR code as an SVG picture, dark on white with the quiet zone around it; "" when the text is too long.
std::string qrSvg(const std::string& text);

}  // namespace qrn::controller

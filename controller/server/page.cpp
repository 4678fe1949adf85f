#include "controller/server/page.h"

#include <qrencode.h>

#include <memory>

#include "adapters/link/wire/wire.h"

namespace qrn::controller {

namespace {

constexpr int quietZone = 4;  // modules around the code that must stay white

std::string replaced(std::string text, std::string_view mark, const std::string& value) {
  for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + value.size()))
    text.replace(at, mark.size(), value);
  return text;
}

}  // namespace

std::string escapeHtml(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '&')
      result += "&amp;";
    else if (c == '<')
      result += "&lt;";
    else if (c == '>')
      result += "&gt;";
    else if (c == '"')
      result += "&quot;";
    else if (c == '\'')
      result += "&#39;";
    else
      result += c;
  }
  return result;
}

// The page brings itself up to date from the same lines as long as it stands.
std::string joinPage(const host::RoomState& room) {
  return replaced(std::string(findAsset("/join")->body), "%ROOM%", escapeHtml(link::roomText(room)));
}

std::string qrSvg(const std::string& text) {
  const std::unique_ptr<QRcode, decltype(&QRcode_free)> code(
      QRcode_encodeString8bit(text.c_str(), 0, QR_ECLEVEL_M), &QRcode_free);
  if (!code)
    return "";
  const int width = code->width;
  const std::string size = std::to_string(width + 2 * quietZone);
  std::string path;
  for (int y = 0; y < width; ++y)
    for (int x = 0; x < width; ++x)
      if ((code->data[y * width + x] & 1U) != 0U)
        path += "M" + std::to_string(x + quietZone) + " " + std::to_string(y + quietZone) + "h1v1h-1z";
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + size + " " + size +
         "\" shape-rendering=\"crispEdges\"><path fill=\"#fff\" d=\"M0 0h" + size + "v" + size +
         "H0z\"/><path d=\"" + path + "\"/></svg>\n";
}

}  // namespace qrn::controller

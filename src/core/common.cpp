#include "core/common.h"

#include <algorithm>

#include "base/text.h"
#include "core/glo.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/presentation.h"
#include "host/system.h"

namespace qrn {

namespace {

bool isLineEnd(std::string_view separator) {
  return separator == "\r\n" || separator == "\r" || separator == "\n";
}

std::string_view lineEndOf(std::string_view text) {
  if (text.find("\r\n") != std::string_view::npos)
    return "\r\n";
  if (text.find('\r') != std::string_view::npos)
    return "\r";
  return text.find('\n') != std::string_view::npos ? "\n" : "\r\n";
}

}  // namespace

void SplitPPTTag(std::string text, std::string_view separator, std::vector<std::string>& result) {
  result.clear();
  while (!text.empty() && (text.back() == '\r' || text.back() == '\n')) text.pop_back();
  if (text.empty())
    return;
  const std::string_view used = isLineEnd(separator) ? lineEndOf(text) : separator;
  std::size_t from = 0;
  while (!used.empty()) {
    const std::size_t to = text.find(used, from);
    if (to == std::string::npos)
      break;
    result.push_back(text.substr(from, to - from));
    from = to + used.size();
  }
  result.push_back(text.substr(from));
}

void HomogoniseLineFeeds(std::string& text) {
  constexpr std::string_view kMarker = "^|^";
  std::string out;
  out.reserve(text.size() + text.size() / 32);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\r' || c == '\n') {
      out += "\r\n";
      if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
        ++i;
    } else if (c == '^' && text.compare(i, kMarker.size(), kMarker) == 0) {
      out += "\r\n";
      i += kMarker.size() - 1;
    } else {
      out += c;
    }
  }
  text = std::move(out);
}

std::string getField(std::string_view line, int n) {
  const auto fields = splitFields(line, ',');
  if (n < 1 || static_cast<std::size_t>(n) > fields.size())
    return "";
  return replaceAll(std::string(fields[static_cast<std::size_t>(n - 1)]), "\"", "");
}

bool fileExists(const std::string& path) {
  return host::host().files->fileExists(path);
}

bool folderExists(const std::string& path) {
  return host::host().files->folderExists(path);
}

std::string readTextFile(const std::string& path) {
  return fileExists(path) ? host::host().files->read(path) : std::string();
}

std::string joinPath(const std::string& folder, const std::string& tail) {
  std::string rest = tail;
  std::replace(rest.begin(), rest.end(), '\\', kPathSeparator);
  rest.erase(0, std::min(rest.find_first_not_of(kPathSeparator), rest.size()));
  if (folder.empty())
    return rest;
  const bool ended = folder.back() == kPathSeparator || folder.back() == '/';
  return folder + (ended ? "" : std::string(1, kPathSeparator)) + rest;
}

bool Check4Form(const std::string& name1, const std::string& name2, const std::string& name3,
                const std::string& name4) {
  const auto loaded = [](const std::string& name) {
    return !name.empty() && host::host().forms->isLoaded(name);
  };
  return loaded(name1) || loaded(name2) || loaded(name3) || loaded(name4);
}

bool Check4App(const std::string& exeName) {
  if (upperCase(exeName) == "POWERPNT.EXE") {
    const auto* program = host::host().presentationProgram;
    return program != nullptr && program->Running();
  }
  return host::host().environment->processRuns(exeName);
}

ScreenDimensions GetScreenDimensions() {
  return glo.screen;
}

void setScreenDimensions(double width, double height) {
  if (width > 0 && height > 0)
    glo.screen = {width, height};
}

}  // namespace qrn

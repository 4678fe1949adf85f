#include "adapters/deck/deck_fixture.h"

#include <gtest/gtest.h>
#include <zip.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "base/text.h"
#include "support/cases.h"

namespace qrn::test {

namespace {

constexpr const char* kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n";
constexpr const char* kRelationships = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
constexpr const char* kNames =
    " xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
    "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\" "
    "xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\"";

std::string numbered(const std::string& text, int slide) {
  return replaceAll(replaceAll(text, "#", std::to_string(slide)), "@", std::to_string(301 - slide));
}

// What stands in [[KIND ...]], as often as its kind says; `slide` is that of the part, 0 for others.
std::string piece(const std::string& kind, const std::string& text, int slide, const DeckOptions& options) {
  std::string all;
  if (kind == "*")
    for (int i = 1; i <= options.slides; ++i) all += numbered(text, i);
  else if (kind == "T" ? options.tagged : kind == "1T" ? slide == 1 && options.tagged : slide == 2)
    all = text;
  return all;
}

std::string made(std::string text, int slide, const DeckOptions& options) {
  for (std::size_t at; (at = text.find("[[")) != std::string::npos;) {
    const std::size_t blank = text.find(' ', at), end = text.find("]]", at);
    text.replace(
        at, end + 2 - at,
        piece(text.substr(at + 2, blank - at - 2), text.substr(blank + 1, end - blank - 1), slide, options));
  }
  if (slide > 0)
    text = numbered(text, slide);
  if (options.absolute)
    text = replaceAll(replaceAll(text, "\"slides/", "\"/ppt/slides/"), "\"../tags/tag2", "\"/ppt/tags/tag2");
  text = replaceAll(replaceAll(text, "\"~", std::string("\"") + kRelationships), "~", kNames);
  if (options.strict)
    for (const char* dialect : {"presentationml", "drawingml", "officeDocument"})
      text = replaceAll(text, std::string("schemas.openxmlformats.org/") + dialect + "/2006",
                        std::string("purl.oclc.org/ooxml/") + dialect);
  return (options.bom ? "\xEF\xBB\xBF" : "") + (kHead + text);
}

// Name and text of the parts as they stand in the file.
const PartList& templates() {
  static const PartList all = [] {
    PartList parts;
    std::ifstream file(QUORIN_DECK_PARTS);
    for (std::string line; std::getline(file, line);)
      if (line.starts_with("=== "))
        parts.emplace_back(line.substr(4), "");
      else if (!parts.empty())
        parts.back().second += unescaped(line.substr(std::min<std::size_t>(2, line.size())));
    return parts;
  }();
  return all;
}

}  // namespace

PartList deckParts(const DeckOptions& options) {
  PartList parts;
  const PartList& all = templates();
  for (std::size_t i = 0; i < all.size(); ++i) {
    const auto& [name, text] = all[i];
    if (name.find('#') != std::string::npos) {  // a slide and its relationships
      for (int slide = 1; slide <= options.slides; ++slide)
        for (const std::size_t at : {i, i + 1})
          parts.emplace_back(numbered(all[at].first, slide), made(all[at].second, slide, options));
      ++i;
    } else if (const std::size_t tagged = name.find(" [[T"); tagged == std::string::npos || options.tagged) {
      parts.emplace_back(name.substr(0, tagged), made(text, 0, options));
    }
  }
  parts.emplace_back("ppt/media/image1.png", std::string("\x89PNG\r\n\0\0not a picture", 20));
  return parts;
}

std::string& part(PartList& parts, const std::string& name) {
  const auto found =
      std::find_if(parts.begin(), parts.end(), [&](const auto& one) { return one.first == name; });
  if (found == parts.end())
    return parts.emplace_back(name, "").second;
  return found->second;
}

void writeZip(const std::string& path, const PartList& parts) {
  zip_t* zip = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
  ASSERT_NE(zip, nullptr) << path;
  for (const auto& [name, text] : parts) {
    zip_source_t* source = zip_source_buffer(zip, text.data(), text.size(), 0);
    const zip_int64_t index = zip_file_add(zip, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    ASSERT_GE(index, 0) << name;
    const bool media = name.find("/media/") != std::string::npos;
    zip_set_file_compression(zip, static_cast<zip_uint64_t>(index), media ? ZIP_CM_STORE : ZIP_CM_DEFLATE, 1);
  }
  ASSERT_EQ(zip_close(zip), 0) << zip_strerror(zip);
}

PartList readZip(const std::string& path, bool packed) {
  PartList parts;
  zip_t* zip = zip_open(path.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
  if (zip == nullptr) {
    ADD_FAILURE() << path << " is no whole zip file";
    return parts;
  }
  for (zip_int64_t i = 0; i < zip_get_num_entries(zip, 0); ++i) {
    zip_stat_t info;
    zip_stat_index(zip, static_cast<zip_uint64_t>(i), 0, &info);
    std::string text(packed ? info.comp_size : info.size, '\0');
    zip_file_t* file = zip_fopen_index(zip, static_cast<zip_uint64_t>(i), packed ? ZIP_FL_COMPRESSED : 0);
    EXPECT_EQ(zip_fread(file, text.data(), text.size()), static_cast<zip_int64_t>(text.size())) << info.name;
    zip_fclose(file);
    parts.emplace_back(info.name, std::move(text));
  }
  zip_discard(zip);
  return parts;
}

std::string changeOf(const std::string& before, const std::string& after) {
  std::size_t from = 0, end = 0;
  const std::size_t least = std::min(before.size(), after.size());
  while (from < least && after[from] == before[from]) ++from;
  while (end < least - from && after[after.size() - 1 - end] == before[before.size() - 1 - end]) ++end;
  return escaped(before.substr(from, before.size() - end - from)) + " => " +
         escaped(after.substr(from, after.size() - end - from));
}

std::string replaced(std::string text, std::string_view what, std::string_view by) {
  const std::size_t at = text.find(what);
  EXPECT_NE(at, std::string::npos) << what;
  return at == std::string::npos ? text : text.replace(at, what.size(), by);
}

std::string stateOf(host::Presentation& deck) {
  std::string state;
  const auto add = [&state](host::Tags& tags) {
    std::vector<std::string> names = tags.Names();
    std::sort(names.begin(), names.end());
    for (const std::string& name : names) state += name + "=" + tags.Item(name) + ";";
    state += "|";
  };
  add(deck.tags());
  for (int i = 1; i <= deck.SlideCount(); ++i) add(deck.Slides(i).tags());
  return state;
}

TempFolder::TempFolder() {
  ::setenv("XDG_STATE_HOME", (path() + "-state").c_str(), 1);
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path() + "-state", ignored);
}

std::string TempFolder::deck(const DeckOptions& options) const {
  writeZip(file("talk.pptx"), deckParts(options));
  return file("talk.pptx");
}

}  // namespace qrn::test

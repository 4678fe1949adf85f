#include "deck/bench_deck.h"

#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string_view>

namespace qrn::bench {

namespace {

constexpr std::string_view kP = "http://schemas.openxmlformats.org/presentationml/2006/main";
constexpr std::string_view kA = "http://schemas.openxmlformats.org/drawingml/2006/main";
constexpr std::string_view kR = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

using PartList = std::vector<std::pair<std::string, std::string>>;

std::string relationships(const std::vector<std::array<std::string, 3>>& all) {
  std::string text = "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
  for (const auto& one : all)
    text += "<Relationship Id=\"" + one[0] + "\" Type=\"" + std::string(kR) + "/" + one[1] + "\" Target=\"" +
            one[2] + "\"/>";
  return text + "</Relationships>";
}

std::string noise(std::int64_t megabytes) {
  std::mt19937_64 random(1);
  std::string bytes(static_cast<std::size_t>(megabytes) << 20, '\0');
  for (std::size_t i = 0; i + 8 <= bytes.size(); i += 8) {
    const std::uint64_t number = random();
    std::copy_n(reinterpret_cast<const char*>(&number), 8, bytes.begin() + static_cast<std::ptrdiff_t>(i));
  }
  return bytes;
}

PartList partsOf(int slides, std::int64_t megabytes) {
  PartList parts;
  parts.emplace_back("[Content_Types].xml",
                     "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default "
                     "Extension=\"xml\" ContentType=\"application/xml\"/></Types>");
  parts.emplace_back("_rels/.rels", relationships({{"r1", "officeDocument", "ppt/presentation.xml"}}));
  const std::string names = " xmlns:p=\"" + std::string(kP) + "\" xmlns:r=\"" + std::string(kR) +
                            "\" xmlns:a=\"" + std::string(kA) + "\">";
  std::string list = "<p:presentation" + names + "<p:sldIdLst>";
  std::vector<std::array<std::string, 3>> of;
  for (int i = 1; i <= slides; ++i) {
    const std::string number = std::to_string(i);
    list += "<p:sldId id=\"" + std::to_string(255 + i) + "\" r:id=\"r" + number + "\"/>";
    of.push_back({"r" + number, "slide", "slides/slide" + number + ".xml"});
    parts.emplace_back("ppt/slides/slide" + number + ".xml",
                       "<p:sld" + names +
                           "<p:cSld><p:spTree><p:sp><p:nvSpPr><p:cNvPr id=\"2\" name=\"Title\"/></p:nvSpPr>"
                           "<p:txBody><a:p><a:r><a:t>Question " +
                           number + "</a:t></a:r></a:p></p:txBody></p:sp></p:spTree></p:cSld></p:sld>");
  }
  parts.emplace_back("ppt/presentation.xml", list + "</p:sldIdLst></p:presentation>");
  parts.emplace_back("ppt/_rels/presentation.xml.rels", relationships(of));
  parts.emplace_back("ppt/media/film.mp4", noise(megabytes));
  return parts;
}

}  // namespace

BenchDeck::BenchDeck(int slides, std::int64_t megabytes) {
  const char* base = std::getenv("TMPDIR");
  folder_ = std::string(base == nullptr ? "/tmp" : base) + "/deck_benchXXXXXX";
  if (::mkdtemp(folder_.data()) == nullptr)
    std::abort();
  const PartList parts = partsOf(slides, megabytes);
  zip_t* zip = zip_open(file().c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
  for (const auto& [name, text] : parts) {
    const zip_int64_t at =
        zip_file_add(zip, name.c_str(), zip_source_buffer(zip, text.data(), text.size(), 0), 0);
    if (name.find("media") != std::string::npos)
      zip_set_file_compression(zip, static_cast<zip_uint64_t>(at), ZIP_CM_STORE, 0);
  }
  if (zip_close(zip) != 0)
    std::abort();
}

BenchDeck::~BenchDeck() {
  std::filesystem::remove_all(folder_);
}

}  // namespace qrn::bench

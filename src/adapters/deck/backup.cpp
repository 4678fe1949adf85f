#include "adapters/deck/backup.h"

#include <zlib.h>

#include <array>
#include <charconv>
#include <cstdio>

#include "base/letter_case.h"

namespace qrn::deck {

namespace {

constexpr std::string_view kFirstLine = "quorin matrix deck backup 1\n";

std::string checksumLine(std::string_view text) {
  const auto sum = ::crc32_z(0, reinterpret_cast<const Bytef*>(text.data()), text.size());
  std::array<char, 16> line{};
  std::snprintf(line.data(), line.size(), "end %08lx\n", static_cast<unsigned long>(sum));
  return line.data();
}

std::string encoded(const std::string& name) {
  std::string out;
  for (const char c : name) {
    if (c == ' ')
      out += "%20";
    else if (c == '%')
      out += "%25";
    else if (c == '\n')
      out += "%0A";
    else
      out.push_back(c);
  }
  return out;
}

std::string decoded(std::string_view name) {
  std::string out;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const std::string_view code = name.substr(i, 3);
    const char c = code == "%20" ? ' ' : code == "%25" ? '%' : code == "%0A" ? '\n' : '\0';
    out.push_back(c != 0 ? c : name[i]);
    i += c != 0 ? 2 : 0;
  }
  return out;
}

class Reader {
 public:
  Reader(std::string_view text, const std::string& file) : rest_(text), file_(file) {}
  bool atEnd() const { return rest_.empty(); }
  std::vector<std::string_view> words() {
    const std::size_t end = rest_.find('\n');
    if (end == std::string_view::npos)
      fail();
    std::vector<std::string_view> found;
    for (std::string_view line = rest_.substr(0, end); !line.empty();) {
      const std::size_t blank = line.find(' ');
      found.push_back(line.substr(0, blank));
      line.remove_prefix(blank == std::string_view::npos ? line.size() : blank + 1);
    }
    rest_.remove_prefix(end + 1);
    return found;
  }
  std::string bytes(std::size_t count) {
    if (count >= rest_.size())
      fail();
    std::string text(rest_.substr(0, count));
    rest_.remove_prefix(count + 1);
    return text;
  }
  std::size_t number(std::string_view text) const {
    std::size_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
      fail();
    return value;
  }
  [[noreturn]] void fail() const { throwBad(file_, "is no whole backup of a deck."); }

 private:
  std::string_view rest_;
  const std::string& file_;
};

}  // namespace

std::string backupText(const std::vector<BackupSlide>& slides) {
  std::string text(kFirstLine);
  for (const BackupSlide& slide : slides) {
    text += "slide " + std::to_string(slide.mark.id) + " " + std::to_string(slide.mark.index) + " " +
            std::to_string(slide.mark.title.size()) + "\n" + slide.mark.title + "\n";
    for (const Tag& tag : slide.tags) {
      text += "tag " + encoded(tag.name) + " " + std::to_string(tag.value.size()) + "\n";
      text.append(tag.value).push_back('\n');
    }
  }
  return text + checksumLine(text);
}

std::vector<BackupSlide> parseBackup(const std::string& text, const std::string& file) {
  const std::size_t endLength = checksumLine("").size();
  const std::string_view all = text;
  const std::size_t bodyLength = all.size() < endLength ? 0 : all.size() - endLength;
  Reader reader(all.substr(0, bodyLength), file);
  if (all.rfind(kFirstLine, 0) != 0 || bodyLength < kFirstLine.size() ||
      all.substr(bodyLength) != checksumLine(all.substr(0, bodyLength)))
    reader.fail();
  reader.words();
  std::vector<BackupSlide> slides;
  while (!reader.atEnd()) {
    const std::vector<std::string_view> line = reader.words();
    if (line.size() == 4 && line[0] == "slide") {
      BackupSlide slide;
      slide.mark.id = static_cast<std::uint32_t>(reader.number(line[1]));
      slide.mark.index = static_cast<int>(reader.number(line[2]));
      slide.mark.title = reader.bytes(reader.number(line[3]));
      slides.push_back(std::move(slide));
    } else if (line.size() == 3 && line[0] == "tag" && !slides.empty()) {
      const std::string name = foldCase(decoded(line[1]));
      slides.back().tags.push_back({name, reader.bytes(reader.number(line[2]))});
    } else {
      reader.fail();
    }
  }
  return slides;
}

std::string backupOf(const std::string& deck) {
  return beside(deck, ".backup");
}

void writeBackup(const std::string& deck, const std::string& text, bool keepOld) {
  const std::string path = backupOf(deck);
  if (keepOld && exists(path)) {
    const std::string aside = freeBeside(deck, ".backup");
    if (std::rename(path.c_str(), aside.c_str()) != 0)
      throwDisk("Cannot keep the old backup as", aside);
  }
  saveText(path, text, {deck});
}

}  // namespace qrn::deck

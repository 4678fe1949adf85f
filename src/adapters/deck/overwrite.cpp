#include "adapters/deck/overwrite.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <filesystem>

#include "base/disk.h"

namespace qrn::deck {

namespace {

bool oneFile(const std::string& a, const std::string& b) {
  struct stat first {
  }, second{};
  return ::stat(a.c_str(), &first) == 0 && ::stat(b.c_str(), &second) == 0 && first.st_ino == second.st_ino &&
         first.st_dev == second.st_dev;
}

// By what it is, or by a name that a file beside the deck has or may come to have.
bool belongsTo(const std::string& target, const std::string& deck) {
  for (const char* suffix : {"", ".journal", ".backup", ".lock"}) {
    const std::string own = beside(deck, suffix), name = nameOf(own);
    if (oneFile(target, own))
      return true;
    const bool named = nameOf(target) == name || (*suffix != '\0' && nameOf(target).starts_with(name + "."));
    if (named && oneFile(folderOf(target), folderOf(own)))
      return true;
  }
  return false;
}

bool isDeck(const std::string& file) {
  constexpr std::array<const char*, 6> kEndings{".pptx", ".pptm", ".ppsx", ".ppsm", ".potx", ".potm"};
  std::string ending = std::filesystem::path(file).extension().string();
  for (char& c : ending) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
  return exists(file) && std::find(kEndings.begin(), kEndings.end(), ending) != kEndings.end();
}

}  // namespace

std::string whyNotOverwritten(const std::string& target, const std::string& deck) {
  const std::string real = behindLinks(target);
  for (const std::string& known : {deck, behindLinks(deck)})
    if (!deck.empty() && belongsTo(real, known))
      return target + " is the deck " + deck + " or belongs to it, and is not written over";
  return isDeck(real) ? target + " is a deck, and is not written over" : "";
}

}  // namespace qrn::deck

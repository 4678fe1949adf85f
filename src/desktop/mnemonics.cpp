#include "desktop/mnemonics.h"

#include <algorithm>

#include "render/fonts.h"

namespace qrn::desktop {

namespace {

// Where a letter that is still free stands: at the beginning of a word, else anywhere; -1: nowhere.
qsizetype placeOfLetter(const QString& caption, const QString& taken) {
  for (const bool anywhere : {false, true})
    for (qsizetype at = 0; at < caption.size(); ++at) {
      const bool begins = at == 0 || caption[at - 1].isSpace();
      if ((begins || anywhere) && caption[at].isLetterOrNumber() && !taken.contains(caption[at].toLower()))
        return at;
    }
  return -1;
}

}  // namespace

void Mnemonics::sync() {
  std::vector<std::string> captions;
  for (const Part& part : parts_) captions.push_back(part.caption());
  if (captions == shown_)
    return;
  shown_ = captions;
  QString taken;
  for (std::size_t at = 0; at < parts_.size(); ++at) {
    QString text = render::toQt(captions[at]);
    const qsizetype letter =
        std::count(captions.begin(), captions.end(), captions[at]) > 1 ? -1 : placeOfLetter(text, taken);
    if (letter >= 0)
      taken += text[letter].toLower();
    const QString before = text.left(std::max<qsizetype>(0, letter)).replace('&', "&&"),
                  behind = text.mid(std::max<qsizetype>(0, letter)).replace('&', "&&");
    parts_[at].show(before + (letter < 0 ? "" : "&") + behind);
  }
}

}  // namespace qrn::desktop

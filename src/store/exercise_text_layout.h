// The last lines before the named settings: pictures, alignment, colours and places of each assessment.
#pragma once

#include <array>

#include "core/exercise.h"
#include "store/exercise_text_archive.h"
#include "store/exercise_text_fonts.h"

namespace qrn::mtx {

// False when the section ended early and the line took the place of the option that follows it.
bool readPictureLines(TextReader& a, Exercise& x);

// Per assessment but the last: what is shown, and the picture behind it. Then one option.
template <class Archive>
void pictureLines(Archive& a, Exercise& x) {
  if constexpr (Archive::reading) {
    if (readPictureLines(a, x))
      a.line(I(x.runByShowAverages[9]));
  } else {
    for (std::size_t i = 0; i + 1 < x.assessments.size(); ++i)
      a.line(B(x.assessments[i].showTitleText), B(x.assessments[i].showScaleText),
             T1(x.assessments[i].imageFile));
    a.line(I(x.runByShowAverages[9]));
  }
}

// Places on the screen that an exercise is laid out for.
template <class Archive>
class Places {
 public:
  Places(Archive& a, const ScreenDimensions& screen) : a_(a), screen_(screen) {}
  void label(LayoutRect& place) { a_.values(across(place.left), down(place.top), across(place.width)); }
  void box(LayoutRect& place) {
    a_.values(down(place.height), across(place.left), down(place.top), across(place.width));
  }
  void corner(LayoutRect& place) { a_.values(across(place.left), down(place.top)); }

 private:
  Fraction across(float& value) const { return Fraction(value, screen_.width); }
  Fraction down(float& value) const { return Fraction(value, screen_.height); }

  Archive& a_;
  const ScreenDimensions& screen_;
};

// One line that readers take whole and split at every comma.
template <class Line>
void layoutLine(Line& a, Exercise& x, AssessmentRecord& s) {
  a.values(B(s.showTitleText), B(s.showScaleText), InLine(s.imageFile), I(s.voteType), I(s.graphType),
           B(s.chartOutline), B(s.chartAxis));
  Places places(a, x.layoutScreen);
  places.label(s.lbl_Risk);
  places.label(s.lbl_Assessment);
  places.box(s.img_chart);
  places.corner(s.Img_VC);
  for (LayoutRect* box : {&s.lbl_PCAPrompt, &s.lbl_PCAItem0, &s.lbl_PCAItem1}) places.box(*box);
  for (int& step : s.pcaScale) a.values(I(step));
  a.values(I(s.pcaScaleRow));
  a.values(InLine(s.pcaQuestion));
  if constexpr (Line::reading)
    if (s.voteType != scaleKind::sifter && s.voteType != scaleKind::balance)
      s.pcaQuestion.clear();  // only comparing assessments have a question
  a.values(S(s.sifterCutoff), B(x.templateFlag));
  a.endLine();
}

template <class Archive>
void assessmentLook(Archive& a, Exercise& x, AssessmentRecord& s) {
  a.line(I(s.titleAlign));
  a.line(I(s.itemAlign));
  a.line(I(s.scaleAlign));
  font(a, s.font2, true);
  std::int32_t colour = s.font4Colour;
  bool flag = s.font4Flag;
  const auto fourth = [&](FontRecord& f) {
    a.line(T(f.name), D(f.size), B(f.bold), B(f.italic), B(f.underline), B(f.strikethrough), L(f.colour),
           L(colour), B(flag));
  };
  if (fontLine(a, s.font4, fourth, true)) {
    s.font4Colour = colour;
    s.font4Flag = flag;
  }
  for (std::size_t point = 0; point < 10; ++point) a.line(L(s.pointColours[point]));
  const auto layout = [&](auto& line) { layoutLine(line, x, s); };
  if constexpr (Archive::reading) {
    const AssessmentRecord before = s;
    const bool flagBefore = x.templateFlag;
    if (const auto wrong = a.wholeLine(layout)) {
      a.countDamage();
      if (*wrong > 0) {  // commas in a text without quotes have shifted them
        s = before;
        x.templateFlag = flagBefore;
      }
    }
  } else {
    a.wholeLine(layout);
  }
  for (std::size_t c = 0; c < 10; ++c) {
    Places(a, x.layoutScreen).label(s.lbl_Criteria[c]);
    a.endLine();
  }
}

// A text that quotes something in the place of the abstain flag, or where the next assessment should begin,
// has come to its named settings. Texts of older versions stop before that flag or anywhere behind it.
template <class Archive>
void lastLines(Archive& a, Exercise& x) {
  a.untilEnd([&] {
    if constexpr (Archive::reading)
      if (a.nextIsQuoted())
        return;
    a.line(B(x.opt_abstain));
    for (std::size_t i = 0; i + 1 < x.assessments.size(); ++i) {
      if constexpr (Archive::reading)
        if (a.nextIsQuoted())
          return;
      assessmentLook(a, x, x.assessments[i]);
    }
  });
}

}  // namespace qrn::mtx

#include "store/exercise_text_layout.h"

#include "base/text.h"

namespace qrn::mtx {

bool readPictureLines(TextReader& a, Exercise& x) {
  for (std::size_t i = 0; i + 1 < x.assessments.size(); ++i) {
    AssessmentRecord& assessment = x.assessments[i];
    const std::string_view line = a.wholeLine();
    if (trimBlanks(line).empty())
      return true;
    if (line.find(',') == std::string_view::npos) {
      const std::string value = replaceAll(std::string(line), "\"", "");
      if (TextReader option(value); !option.atEnd())
        option.line(I(x.runByShowAverages[9]));
      return false;
    }
    TextReader fields(line);
    try {
      fields.line(B(assessment.showTitleText), B(assessment.showScaleText), T1(assessment.imageFile));
    } catch (const InputPastEnd&) {
      // fewer fields leave the rest as it stood
    }
  }
  return true;
}

}  // namespace qrn::mtx

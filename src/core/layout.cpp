#include "core/layout.h"

namespace qrn {

AssessmentRecord fitted(AssessmentRecord assessment, const ScreenDimensions& from,
                        const ScreenDimensions& to) {
  if (from == to)
    return assessment;
  const auto fit = [&](LayoutRect& place) {
    for (float* across : {&place.width, &place.left})
      *across = static_cast<float>(*across / from.width * to.width);
    for (float* down : {&place.height, &place.top})
      *down = static_cast<float>(*down / from.height * to.height);
  };
  for (LayoutRect* place :
       {&assessment.lbl_Risk, &assessment.lbl_Assessment, &assessment.img_chart, &assessment.Img_VC,
        &assessment.lbl_PCAPrompt, &assessment.lbl_PCAItem0, &assessment.lbl_PCAItem1})
    fit(*place);
  for (LayoutRect& place : assessment.lbl_Criteria) fit(place);
  return assessment;
}

void fitLayout(Exercise& x, const ScreenDimensions& screen) {
  for (AssessmentRecord& assessment : x.assessments)
    assessment = fitted(std::move(assessment), x.layoutScreen, screen);
  x.layoutScreen = screen;
}

}  // namespace qrn

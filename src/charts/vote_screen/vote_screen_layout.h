// Where things stand on a vote screen: the assessment's stored places where they are set, else places that
// suit every screen and every number of options.
#pragma once

#include <string>
#include <vector>

#include "core/records.h"

namespace qrn {

struct Place {
  double Left = 0, Top = 0, Width = 0, Height = 0;  // twips
  double Right() const { return Left + Width; }
  double Bottom() const { return Top + Height; }
};

// What decides the places beside the assessment.
struct ScreenNeeds {
  double width = 0, height = 0;  // twips
  int options = 0;
  bool bars = false;
  std::string statsCorner;  // "TL", "TR", "BL", "BR"; "" when statistics are not shown
  double statsWidth = 0, statsHeight = 0;
};

struct ScreenPlaces {
  Place risk, assessment, options, bars, count, stats, status, keypads;
  bool riskStored = false, assessmentStored = false;
  std::vector<Place> criteria;    // stored places of the options, empty when they follow from `options`
  bool barsBesideOptions = true;  // each bar stands in the row of its option
};

// `optionShare` is the part of the width that options take when bars stand beside them.
ScreenPlaces screenPlaces(const AssessmentRecord& assessment, const ScreenNeeds& needs, double optionShare);

// `place` moved, and if need be narrowed, so that it lies inside a screen of that size.
Place movedInside(Place place, double width, double height);

}  // namespace qrn

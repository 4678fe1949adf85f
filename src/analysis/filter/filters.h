// Which keypads count: demographic questions of the presentation and the groups chosen from them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/session.h"
#include "host/surface.h"

namespace qrn {

// Rebuilds glo.demographicQuestions from the slides that carry the tag "qrnVote". Choices made before (or
// kept in the exercise) are put back onto the questions that are still there.
void GetDemographicVoteInfo();

// Keeps the chosen groups and the default question in glo.demographics, for saving, whether or not the filter
// is on. Without questions read from a presentation the choices of the file stay.
void keepDemographicChoices();

// Which keypads count now: glo.keypadIncluded at the length it has, everyone or those that the filter leaves.
void includeKeypads();

// Whether position `keypad` (from 0) of such flags counts; beyond their end nobody does.
inline bool keypadCounts(const std::vector<int>& included, std::size_t keypad) {
  return keypad < included.size() && included[keypad] == 1;
}

// At least as many keypads as have answered `question`.
std::size_t roomForAnswers(const DemographicInfo& question);

// The filter alone: narrows glo.keypadIncluded (1 counts; 0 and -1 do not) and names it in
// glo.demographicFilterText.
void createFilter();

// Applies one group to glo.keypadIncluded: the keypads whose answer, in the last answer line of `votesText`,
// is `optionNumber`.
void makeFilter(std::string_view votesText, int optionNumber);

// makeFilter on any array of flags: -1 not yet matched, 0 refused, 1 counted. `anyGroup` is the OR operator.
void applyGroup(std::vector<int>& included, std::string_view votesText, int optionNumber, bool anyGroup);

// Filters by group `groupIndex` (from 0) of the default question alone. -1 or an index above its groups
// switches the filter off and gives false.
bool SetDemographicFilter(int groupIndex, std::string& caption);

// The line on a graph that tells of the filter.
struct FilterLine {
  bool visible = false;
  std::string caption;
  std::int32_t colour = 0;
  host::Align align = host::Align::left;
  double left = 0, top = 0;  // twips
  bool operator==(const FilterLine&) const = default;
};

// Places the line of `width` x `height` twips into the corner chosen for the statistics box of an area (all
// twips). `graphFilter`: the graph is narrowed by its own filter form.
FilterLine showFilter(double areaLeft, double areaTop, double areaWidth, double areaHeight, double width,
                      double height, bool graphFilter = false);

// Caption of showFilter; "" when no filter applies.
std::string filterCaption(bool graphFilter = false);

}  // namespace qrn

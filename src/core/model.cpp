#include "core/model.h"

#include <optional>

#include "core/common.h"
#include "core/edit.h"
#include "core/glo.h"
#include "host/presentation.h"
#include "host/surface.h"

namespace qrn {
namespace {

using host::RGB;

struct Shades {
  std::int32_t first, second, third;
};

constexpr std::array<Shades, kPointColours> kBarColours{
    {{RGB(0, 255, 0), RGB(0, 220, 0), RGB(0, 185, 0)},
     {RGB(255, 255, 0), RGB(220, 220, 0), RGB(185, 185, 0)},
     {RGB(255, 0, 0), RGB(220, 0, 0), RGB(185, 0, 0)},
     {RGB(0, 0, 255), RGB(0, 0, 220), RGB(0, 0, 185)},
     {RGB(254, 141, 30), RGB(219, 106, 0), RGB(184, 71, 0)},
     {RGB(152, 89, 6), RGB(117, 54, 0), RGB(82, 19, 0)},
     {RGB(78, 150, 91), RGB(43, 115, 56), RGB(8, 80, 21)},
     {RGB(222, 67, 251), RGB(187, 32, 216), RGB(152, 0, 181)},
     {RGB(220, 220, 220), RGB(185, 185, 185), RGB(150, 150, 150)},
     {RGB(9, 115, 109), RGB(0, 80, 74), RGB(0, 45, 39)},
     {RGB(255, 255, 255), RGB(220, 220, 220), RGB(185, 185, 185)}}};

constexpr std::array<std::int32_t, kBands> kBandColours{65280, 33023, 255, 0};
constexpr std::array<const char*, kAssessments> kOrdinals{"1st", "2nd", "3rd", "4th", "5th",
                                                          "6th", "7th", "8th", "9th"};
constexpr const char* kFirstLabel = "Type low performance/low value scale here";

LookUpList lookUpList(const char* name, std::vector<std::string> values) {
  values.emplace_back();
  return {name, std::move(values)};
}

void setDefaultLookUpLists() {
  glo.ownerLists.clear();
  for (const char* name : {"Risk", "Project", "Process", "Program", "Initiative"})
    glo.ownerLists.push_back(lookUpList(name, {}));
  glo.ownerLists.emplace_back();
  glo.rootCauseLists = {
      lookUpList("Root cause", {"Human", "Technology", "Organisational", "External", "Process"}),
      lookUpList("Benefit", {"Customer", "Community", "Our Org.", "Others"}),
      lookUpList("Urgency", {"Immediate 1-2 yrs", "Strategic 2-4 yrs", "Future 5 yrs+"}),
      lookUpList("Barrier", {"Physical", "Financial", "People"}),
      lookUpList("Significance", {"Strategic", "Important", "Nice to have"}),
      lookUpList("Focus", {"High", "Medium", "Low"}),
      lookUpList("When to do", {"Now", "3m", "6m", "12m", "2y", "3y", "4y+"}),
      LookUpList{}};
}

void setAssessmentDefaults() {
  for (std::size_t a = 0; a < kAssessments; ++a) {
    glo.assessmentTitles[a] = std::string(kOrdinals[a]) + " assessment";
    AssessmentInfoRecord& info = glo.assessmentInfo[a];
    info.active = a == 0;
    info.votingOrder = static_cast<int>(a);
    info.endMessage = std::string("End of ") + kOrdinals[a] + " assessment";
    for (std::size_t b = 0; b < kBands; ++b) info.bands[b] = {kBandColours[b], 1.0F, 1.0F, ""};
  }
  glo.assessmentTitles[9] = "MultiPlot 1";
  glo.assessmentTitles[10] = "MultiPlot 2";
  for (auto& labels : glo.scaleLabels) labels = {kFirstLabel, ""};
}

std::optional<host::MasterFont> masterFont(bool title) {
  if (glo.oPresentation == nullptr)
    return std::nullopt;
  try {
    return title ? glo.oPresentation->MasterTitleFont() : glo.oPresentation->MasterBodyFont();
  } catch (const std::exception&) {
    return std::nullopt;  // a host that is gone has no fonts to give
  }
}

std::int32_t schemeColour(int entry) {
  if (glo.oPresentation == nullptr)
    return -1;
  try {
    return glo.oPresentation->SchemeColour(entry);
  } catch (const std::exception&) {
    return -1;
  }
}

FontRecord fontOr(const std::optional<host::MasterFont>& master, double defaultSize) {
  if (!master || master->name.empty())
    return {"Arial", defaultSize};
  return {master->name, master->size, master->bold, master->italic, master->underline, false, master->colour};
}

// The six accents of the scheme colour the first six points. The entries before them are backgrounds and
// text: bars in those would not be seen.
std::array<std::int32_t, kPointColours> defaultPointColours() {
  constexpr std::size_t kAccents = 6;
  constexpr int kFirstAccent = 5;
  std::array<std::int32_t, kPointColours> colours = glo.barColours1;
  for (std::size_t point = 0; point < kAccents; ++point)
    if (const std::int32_t colour = schemeColour(kFirstAccent + static_cast<int>(point)); colour != -1)
      colours[point] = colour;
  return colours;
}

}  // namespace

void initXYVote() {
  static_cast<Exercise&>(glo) = Exercise{};
  exerciseHistory().begin();
  glo.layoutScreen = GetScreenDimensions();
  setDefaultBarColours();
  setAssessmentDefaults();
  setDefaultLookUpLists();
  CategoryRecord unallocated;
  unallocated.CategoryName = "unallocated";
  glo.categories = {unallocated, CategoryRecord{}};
  glo.scaleFonts.fill({"Arial", 14});
  for (auto& bands : glo.scatterBands) bands = {{{65280, 0, 0}, {33023, 0, 0}, {255, 0, 0}}};
  glo.gridColWidths.assign(100, 1000);
  glo.gridColWidths[0] = glo.gridColWidths[1] = 500;
  glo.gridColWidths[2] = 0;
  InitAssessmentInfo(false);
  for (std::size_t a = 0; a < kAssessments; ++a)
    glo.assessments[a].scalePointCount = glo.labelCount(static_cast<int>(a));
}

void InitAssessmentInfo(bool keepFonts) {
  if (!keepFonts)
    glo.assessments.fill(AssessmentRecord{});
  glo.usePPTBackground = true;
  const auto title = masterFont(true), body = masterFont(false);
  const auto colours = defaultPointColours();
  const AssessmentRecord fresh;
  for (AssessmentRecord& assessment : glo.assessments) {
    if (!keepFonts) {
      assessment.titleFont = fontOr(title, 16);
      assessment.font2 = fontOr(body, 18);
      assessment.font3 = {"Arial", 16};
      assessment.font4 = {"Arial", 20};
    }
    assessment.pointColours = colours;
    assessment.voteType = assessment.startFrom = 1;
    assessment.graphType = fresh.graphType;
    assessment.imageFile.clear();
    assessment.showTitleText = assessment.showScaleText = assessment.chartOutline = true;
    assessment.pcaScale = fresh.pcaScale;
    assessment.pcaScaleRow = fresh.pcaScaleRow;
    assessment.pcaQuestion = fresh.pcaQuestion;
    assessment.sifterCutoff = fresh.sifterCutoff;
  }
}

bool isDefaultPointColour(std::size_t point, std::int32_t colour) {
  return point >= kPointColours || colour == kBarColours[point].first ||
         colour == defaultPointColours()[point];
}

void setDefaultBarColours() {
  for (std::size_t point = 0; point < kPointColours; ++point) {
    glo.barColours1[point] = kBarColours[point].first;
    glo.barColours2[point] = kBarColours[point].second;
    glo.barColours3[point] = kBarColours[point].third;
  }
}

void setRemainingAssessments() {
  glo.remainingAssessments.fill(-1);
  std::size_t next = 0;
  for (int a = 0; a < kAssessments; ++a)
    if (a != glo.matrixAxes[0] && a != glo.matrixAxes[1])
      glo.remainingAssessments[next++] = a + 1;
}

}  // namespace qrn

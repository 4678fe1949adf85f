// The records an exercise is made of. Booleans are 16-bit in the files (-1 true, 0 false); colours are 32-bit
// with red lowest, 0x80000005 being the system window colour; single precision is float.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace qrn {

inline constexpr int kAssessments = 9;    // voted assessments, index 0 to 8
inline constexpr int kSlots = 11;         // per-item values: nine assessments and two multi-plots
inline constexpr int kRounds = 11;        // stored rounds per assessment
inline constexpr int kPointColours = 11;  // colours of vote points, index 0 to 10
inline constexpr int kBands = 4;          // ragging bands per assessment
inline constexpr int kOverlays = 100;
inline constexpr int kZoomSteps = 7;
inline constexpr std::int32_t kSystemWindowColour = static_cast<std::int32_t>(0x80000005);

struct FontRecord {
  std::string name{};
  double size = 0;  // points
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strikethrough = false;
  std::int32_t colour = 0;
  bool operator==(const FontRecord&) const = default;
};

// A place on a voting screen: width, height, left, top. Twips in memory, fractions of the screen in files.
struct LayoutRect {
  float width = 0, height = 0, left = 0, top = 0;
  bool operator==(const LayoutRect&) const = default;
};

// Inside of a screen that voting screens fill, in twips: 1024x768 pixels where nothing else is known.
struct ScreenDimensions {
  double width = 15360, height = 11520;
  bool operator==(const ScreenDimensions&) const = default;
};

struct RoundRecord {
  std::string label;
  float average = 0;
  int counted = 0;  // votes that the average is made of
  bool operator==(const RoundRecord&) const = default;
};

// Stored rounds of one item: rounds[assessment][round]. Most items have none, so the table is made at the
// first touch that could write; reading one that was never touched gives empty rounds.
class RoundTable {
 public:
  using Row = std::array<RoundRecord, kRounds>;
  Row& operator[](std::size_t assessment) {
    if (rows_.empty())
      rows_.resize(kSlots);
    return rows_.at(assessment);
  }
  const Row& operator[](std::size_t assessment) const {
    static const Row none{};
    return rows_.empty() ? none : rows_.at(assessment);
  }
  bool operator==(const RoundTable& other) const {
    for (std::size_t a = 0; a < static_cast<std::size_t>(kSlots); ++a)
      if ((*this)[a] != other[a])
        return false;
    return true;
  }

 private:
  std::vector<Row> rows_;
};

// What a file keeps of an item ("risk"). `ID` is its identity, 0-based; `sortKey` is set once and names its
// vote records.
struct KeptItem {
  std::string text;
  int ID = 0;
  std::array<float, kSlots> benchmark{};
  std::array<bool, kSlots> active{};
  int sortKey = 0;
  bool voting = false;
  std::string notes;
  std::vector<std::string> owners{""};  // with the spare element at the top: one empty string when none
  std::vector<std::string> rootCauses{""};
  std::string text3, text4, text5, shortText;
  bool newItem = false;
  bool operator==(const KeptItem&) const = default;
};

// What voting and computing make of it.
struct ItemScores {
  std::int32_t sifterScore = 0;
  std::array<float, kSlots> average{};
  std::array<int, kSlots> counted{};  // votes that each average is made of; whoever sets one sets the other
  RoundTable rounds;
  std::array<std::string, kSlots> plotText{};
  std::array<float, kSlots> standardDeviation{};
  std::array<float, kSlots> diversity{};
  float cumulative = 0;
  float weightedCumulative = 0;
  std::array<bool, kSlots> voted{};
  std::array<bool, kSlots> postalData{};
  std::string identifier;

  // Whether anybody's vote counted in `slot` (0 to 10). Where nobody's did, the average is 0 and no score.
  bool hasScore(std::size_t slot) const { return counted[slot] > 0; }
  bool operator==(const ItemScores&) const = default;
};

// One item. Two are equal when what is kept of them is: scores do not make an exercise another one.
struct RiskRecord : KeptItem, ItemScores {
  bool operator==(const RiskRecord& other) const {
    return static_cast<const KeptItem&>(*this) == static_cast<const KeptItem&>(other);
  }
};

struct AssessmentRecord {
  int scalePointCount = 0;
  int startFrom = 1;  // value of the first scale point, 0 or 1
  FontRecord titleFont, font2, font3, font4;
  std::int32_t font4Colour = 0;  // second colour of font4
  bool font4Flag = false;
  int titleAlign = 2, itemAlign = 2, scaleAlign = 2;
  std::string imageFile;
  int voteType = 1;  // a scaleKind
  bool showTitleText = true, showScaleText = true;
  LayoutRect lbl_Risk, lbl_Assessment, img_chart, Img_VC, lbl_PCAPrompt, lbl_PCAItem0, lbl_PCAItem1;
  std::array<LayoutRect, 11> lbl_Criteria{};
  std::array<int, 9> pcaScale{1, 3, 1, 4, 6, 2, 7, 9, 3};
  int pcaScaleRow = 1;
  std::string pcaQuestion = "Which do you prefer?";
  float sifterCutoff = 50;  // percent
  int graphType = 3;
  bool chartOutline = true, chartAxis = false;
  std::array<std::int32_t, kPointColours> pointColours{};
  bool operator==(const AssessmentRecord&) const = default;
};

struct BandRecord {
  std::int32_t colour = 0;
  float low = 0, high = 0;
  std::string label;
  bool operator==(const BandRecord&) const = default;
};

// Running-order record of one assessment.
struct AssessmentInfoRecord {
  bool active = false;
  std::string number;
  int votingOrder = 0;
  std::string endMessage;
  bool showEndMessage = false;
  bool messageFlag = false;
  std::array<BandRecord, kBands> bands{};
  int weight = 1;
  bool weightingOn = false;
  bool operator==(const AssessmentInfoRecord&) const = default;
};

// One category. `CategoryItems` holds item IDs and always ends in one spare element.
struct CategoryRecord {
  std::int32_t CategoryID = 0;
  std::string CategoryName;
  std::vector<int> CategoryItems{-1};
  bool Selected = true;
  bool Enabled = true;
  std::int32_t CategoryParent = 0;
  bool operator==(const CategoryRecord&) const = default;
};

struct MultiPlotRecord {
  bool Enabled = false;
  std::array<bool, 11> Assessments{};
  std::array<std::string, 10> ToolTips{};
  int PlotType = 0;
  bool ReverseCalc = false;
  bool operator==(const MultiPlotRecord&) const = default;
};

struct DemographicGroup {
  std::int32_t ID = 0;
  bool selected = false;
  std::string groupName;
  bool operator==(const DemographicGroup&) const = default;
};

struct DemographicQuestion {
  std::int32_t ID = 0;  // slideID
  std::vector<DemographicGroup> groups;
  bool selected = false;  // the default question
  bool operator==(const DemographicQuestion&) const = default;
};

// One piece of a boundary of the matrix graph: first the cell it belongs to, second 1 for a horizontal piece
// on its way, third 1 when it stands and 0 when deleted, fourth its colour.
struct OverlayBoundary {
  int first = 0, second = 0, third = 0;
  std::int32_t fourth = 0;
  bool operator==(const OverlayBoundary&) const = default;
};

struct OverlayRecord {
  std::string text = "Overlay text";
  std::int32_t colour = 0;
  std::string font = "Arial";
  bool bold = false, italic = false;
  int size = 16;
  bool visible = true;
  std::int32_t backColour = 0x8080ff;
  int style = 7;
  bool operator==(const OverlayRecord&) const = default;
};

struct LookUpList {
  std::string name;
  std::vector<std::string> values{""};  // with the spare element at the top
  bool operator==(const LookUpList&) const = default;
};

struct LookUpCombo {
  std::string name, text;
  bool operator==(const LookUpCombo&) const = default;
};

struct ScatterBand {
  std::int32_t colour = 0;
  float low = 0, high = 0;
  bool operator==(const ScatterBand&) const = default;
};

struct PaneRect {
  float left = 0, top = 0, width = 0, height = 0;  // fractions of the slide show
  bool operator==(const PaneRect&) const = default;
};

struct SifterSorterRecord {
  std::string title = "Include this item?", option1 = "Yes", option2 = "No";
  bool flag1 = false, flag2 = false;
  FontRecord titleFont{"Arial", 26}, option1Font{"Arial", 18}, option2Font{"Arial", 18};
  std::array<int, 2> pair1{}, pair2{};
  std::int32_t voteType = 0;
  std::int32_t calculateMode = 0;
  int includeRatio = 0;
  int maxNumberOfItemsVotedOn = 0;
  int allocateMaxPointsPerItem = 0;
  int allocateMaxPointsTotal = 0;
  int orderCreateListFromTopXItems = 0;
  bool operator==(const SifterSorterRecord&) const = default;
};

}  // namespace qrn

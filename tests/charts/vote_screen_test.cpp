// The vote screen: what it tells the controller, that all of it can be read on every screen, and its bars.
#include "charts/vote_screen/vote_screen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "charts/look/graph_look.h"
#include "core/glo.h"
#include "core/model.h"
#include "host/system.h"
#include "support/test_host.h"

namespace qrn {
namespace {

using host::Element;
using ::testing::ElementsAre;

struct PlainVoteForm : VoteForm {
  PlainVoteForm() : VoteForm("xyVoteRuntime") {}
  void ResetForNewVote() override {}
};

class VoteScreen : public ::testing::Test {
 protected:
  VoteScreen() {
    glo = Glo{};
    glo.oPresentation = &world.presentation;
    initXYVote();
    glo.risks.resize(2);
    glo.risks[0].text = "Fire";
    glo.risks[0].identifier = "A";
    options({"low", "high"});
    glo.liveVotes.assign(8, "-100");
  }
  void options(std::vector<std::string> labels) {
    labels.emplace_back();
    glo.scaleLabels[0] = std::move(labels);
  }
  void size(double width, double height) {
    form.ScaleWidth = width * 15;
    form.ScaleHeight = height * 15;
  }
  void show() { DisplayVote(0, 1, -1, form); }
  const Element& element(const char* array, int index) {
    Element* found = form.surface().find(array, index);
    if (found == nullptr)
      throw std::runtime_error(std::string(array) + " is not on the screen");
    return *found;
  }

  test::TestHost world;
  PlainVoteForm form;
};

TEST_F(VoteScreen, tellsTheControllerWhatIsVoted) {
  glo.assessments[0].startFrom = 0;
  glo.risks[0].text = "Fire\r\nin the attic";
  glo.CheckShowListItemIdentifier = true;
  glo.assessmentTitles[0] = "How\r\nlikely?";
  options({"low", "a|b", "high"});
  show();
  EXPECT_EQ(glo.preVoteText, "A: Fire in the attic");
  EXPECT_EQ(glo.voteTitle, "How likely?");
  EXPECT_EQ(glo.voteText, "|0.  low|1.  a/b|2.  high");
  EXPECT_EQ(form.lbl_Criteria[1].Caption, "1.  a|b");
  EXPECT_EQ(glo.startFrom, 0);
  EXPECT_EQ(glo.options, 2);
  EXPECT_EQ(form.txt_AssNum + "/" + form.txt_RiskNum, "0/0");
  options({});
  glo.risks[0].text.clear();
  glo.CheckShowListItemIdentifier = false;
  show();
  EXPECT_EQ(glo.voteText, "   Vote Now");
  EXPECT_EQ(form.lbl_Risk.Caption, "   ");
}

TEST_F(VoteScreen, writesNumbersInGroups) {
  for (const auto& [text, shown] : std::vector<std::pair<std::string, std::string>>{{"7", "7"},
                                                                                    {"999", "999"},
                                                                                    {"1000", "1,000"},
                                                                                    {"1234567", "1,234,567"},
                                                                                    {"K'Board", "K'Board"},
                                                                                    {"", ""}}) {
    form.SetVotesCastCount(text);
    EXPECT_EQ(form.uctl_votesCast.label.Caption, shown);
  }
}

TEST_F(VoteScreen, marksBarsByTheSetting) {
  EXPECT_EQ(BarMark(2, 5, 0), "(2)");
  EXPECT_EQ(BarMark(2, 5, 1), "40%");
  EXPECT_EQ(BarMark(2, 3, 2), "67% (2)");
  EXPECT_EQ(BarMark(0, 0, 2), "0% (0)");
}

// Everything inside the screen, nothing on top of something else, no text wider or higher than its place, no
// text lost, and every text readable on what is behind it.
void expectReadable(const VoteForm& form, std::size_t charactersExpected) {
  const host::Surface& surface = form.surface();
  const host::TextMeasure& measure = *host::host().textMeasure;
  const GraphLook look = chooseLook(surface);
  const auto ratio = [](double a, double b) { return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05); };
  std::vector<std::pair<std::string, const Element*>> texts;
  std::size_t characters = 0;
  for (const host::ElementArray& array : surface.arrays())
    for (const Element& e : array) {
      const std::string name = array.name() + std::to_string(e.index);
      if (!e.visible || array.name() == "graphPanel" || array.name() == "uctl_votesCast")
        continue;
      EXPECT_GE(e.left, -1) << name;
      EXPECT_GE(e.top, -1) << name;
      EXPECT_LE(e.left + e.width, surface.width + 1) << name;
      EXPECT_LE(e.top + e.height, surface.height + 1) << name;
      if (e.kind != Element::Kind::label)
        continue;
      EXPECT_LE(measure.TextWidth(e.caption, e.font.name, e.font.size, e.font.bold, e.font.italic),
                e.width + 1)
          << name << ": " << e.caption;
      const auto lines = static_cast<double>(std::count(e.caption.begin(), e.caption.end(), '\n') + 1);
      EXPECT_LE(lines * measure.LineHeight(e.font.name, e.font.size), e.height + 1) << name;
      const double luminance = contrastRatio(e.colour, 0) * 0.05 - 0.05;
      EXPECT_GE(ratio(luminance, look.lightText ? look.lightest : look.darkest), 4.5)
          << name << ": " << e.caption;
      if (array.name() == "lbl_Criteria")
        characters += static_cast<std::size_t>(
            std::count_if(e.caption.begin(), e.caption.end(), [](char c) { return c > ' '; }));
      texts.emplace_back(name, &e);
    }
  EXPECT_EQ(characters, charactersExpected);
  for (std::size_t i = 0; i < texts.size(); ++i)
    for (std::size_t j = i + 1; j < texts.size(); ++j) {
      const Element &a = *texts[i].second, &b = *texts[j].second;
      const bool apart = a.left + a.width <= b.left + 1 || b.left + b.width <= a.left + 1 ||
                         a.top + a.height <= b.top + 1 || b.top + b.height <= a.top + 1;
      EXPECT_TRUE(apart) << texts[i].first << " and " << texts[j].first;
    }
}

std::size_t letters(const VoteForm& form) {
  std::size_t count = 0;
  for (const VoteLabel& label : form.lbl_Criteria)
    count += static_cast<std::size_t>(
        std::count_if(label.Caption.begin(), label.Caption.end(), [](char c) { return c > ' '; }));
  return count;
}

TEST_F(VoteScreen, canBeReadOnEveryScreen) {
  const std::vector<std::pair<int, int>> screens{{1024, 768}, {1920, 1080}, {3840, 2160}};
  const std::string sentence = "a rather long text that goes on and on about one thing or the other ";
  const std::string word(70, 'W');
  glo.CheckAverageScoreIndicator = 1;
  for (const auto& [width, height] : screens)
    for (const int count : {2, 5, 11})
      for (const std::string& text : {std::string("short"), sentence + sentence, word})
        for (const char* corner : {"TL", "TR", "BL", "BR"}) {
          SCOPED_TRACE(std::to_string(width) + " options " + std::to_string(count) + " " + corner + " " +
                       text.substr(0, 9));
          size(width, height);
          glo.opt_StatsBoxPosition = corner;
          glo.risks[0].text = text == "short" ? text : sentence + text + sentence + sentence;
          options(std::vector<std::string>(static_cast<std::size_t>(count), text));
          show();
          form.ShowBars(true);
          form.ShowAverageScore(
              "Average: 3.33\nStandard Deviation: 1.25\nDiversity: 94.28%\nParticipants: 120", true);
          form.ShowVotesCastControl(false);
          expectReadable(form, letters(form));
        }
}

TEST_F(VoteScreen, canBeReadOnEveryBackground) {
  world.files.files["/pictures/any.jpg"] = "";
  glo.usePPTBackground = false;
  const std::vector<std::array<int, 3>> colours{
      {0, 0, 0}, {255, 255, 255}, {128, 128, 128}, {255, 255, 0}, {0, 0, 128}};
  for (const auto& start : colours)
    for (const auto& end : colours)
      for (const char* picture : {"", "/pictures/any.jpg"}) {
        glo.backgroundStart = start;
        glo.backgroundEnd = end;
        glo.assessments[0].imageFile = picture;
        show();
        expectReadable(form, letters(form));
      }
}

TEST_F(VoteScreen, keepsTypeLarge) {
  size(1024, 768);
  options({"very low", "low", "medium", "high", "very high"});
  show();
  EXPECT_GE(element("lbl_Criteria", 0).font.size, 24);
  EXPECT_GE(element("lbl_Risk", 0).font.size, 30);
  size(3840, 2160);
  form.LayOutAgain();
  EXPECT_GE(element("lbl_Criteria", 0).font.size, 24 * 2160.0 / 768 - 1);
}

TEST_F(VoteScreen, hasRoomForTheHintHowToAbstain) {
  glo.CheckAverageScoreIndicator = 0;
  glo.opt_abstain = true;
  show();
  form.ShowAverageScore("    Vote '0' to abstain", true);
  form.ShowVotesCastControl(false);
  expectReadable(form, letters(form));
}

TEST_F(VoteScreen, followsTheStoredLayout) {
  AssessmentRecord& stored = glo.assessments[0];
  stored.lbl_Risk = stored.lbl_Assessment = {6000, 0, 1000, 500};
  stored.lbl_Criteria[0] = {4000, 0, 2000, 4000};
  stored.lbl_Criteria[1] = {4000, 0, 2000, 6000};
  stored.img_chart = {5000, 3000, 9000, 4000};
  stored.Img_VC = {0, 0, 99999, 3000};
  options({"low", "high", "unplaced"});
  show();
  EXPECT_EQ(element("lbl_Risk", 0).left, 1000);
  EXPECT_EQ(element("lbl_Risk", 0).top, 500);
  EXPECT_EQ(element("lbl_Criteria", 1).top, 6000);
  EXPECT_GT(element("lbl_Criteria", 2).top, 6000);
  EXPECT_GE(element("lbl_assessment", 0).top, 500 + element("lbl_Risk", 0).height);  // under the item
  EXPECT_GE(element("bar", 0).left, 9000);
  EXPECT_LE(element("uctl_votesCast", 0).left + element("uctl_votesCast", 0).width, form.ScaleWidth);
  size(2048, 1536);  // twice the screen that the layout was made for
  form.LayOutAgain();
  EXPECT_EQ(element("lbl_Risk", 0).left, 2000);
  EXPECT_EQ(element("lbl_Criteria", 1).top, 12000);
}

TEST_F(VoteScreen, countsWhatTheAverageCounts) {
  glo.liveVotes = {"1", "2", "2", "-2", "9", "", "spare"};
  glo.postalVotes = {2, -2, 2, 2, 1};
  for (const auto& [mode, counts] :
       std::vector<std::pair<int, std::vector<int>>>{{0, {1, 2}}, {1, {0, 3}}, {2, {1, 5}}}) {
    glo.CheckUseLivePostal = mode;
    EXPECT_EQ(CountVotes(1, 2), counts) << mode;
  }
}

TEST_F(VoteScreen, growsTheBarsInPlace) {
  show();
  const Element* bar = &element("bar", 1);
  const std::size_t elements = form.surface().elementCount();
  glo.liveVotes = {"1", "2", "2", "-2", "9", "2", "-100"};
  form.UpdateBars();
  form.ShowBars(true);
  EXPECT_THAT(form.bars.counts, ElementsAre(1, 3));
  EXPECT_EQ(&element("bar", 1), bar);
  EXPECT_EQ(form.surface().elementCount(), elements);
  EXPECT_TRUE(bar->visible);
  EXPECT_NEAR(bar->width, 3 * element("bar", 0).width, 1);
  EXPECT_EQ(element("barMark", 1).caption, "(3)");
  form.ShowBars(false);
  EXPECT_FALSE(bar->visible);
  EXPECT_NEAR(bar->width, 3 * element("bar", 0).width, 1);
}

TEST_F(VoteScreen, hasNoBarsWhenTheyAreNotWanted) {
  glo.runByShowBarGraph = 0;
  show();
  EXPECT_EQ(form.surface().find("bar", 0), nullptr);
}

TEST_F(VoteScreen, hidesTextsThatAreSwitchedOff) {
  glo.assessments[0].showTitleText = glo.assessments[0].showScaleText = false;
  show();
  EXPECT_FALSE(element("lbl_assessment", 0).visible);
  EXPECT_FALSE(element("lbl_Criteria", 0).visible);
  EXPECT_EQ(glo.voteTitle, "") << "not on phones either";
  EXPECT_EQ(glo.voteText, "|1.  low|2.  high");
}

}  // namespace
}  // namespace qrn

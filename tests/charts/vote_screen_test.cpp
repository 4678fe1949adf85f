// The vote screen: what it tells the controller, what it says to the room, and that all of it has its place.
#include "charts/vote_screen/vote_screen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "charts/vote_screen/vote_model.h"
#include "charts/vote_screen/vote_words.h"
#include "core/glo.h"
#include "core/model.h"
#include "desktop/pictures/states/vote_states.h"
#include "host/system.h"
#include "support/test_host.h"

namespace qrn {
namespace {

using host::Element;

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
    glo.liveVotes = {"1", "2", "2", "-100"};
    glo.opt_StatsBoxPosition = "TR";
  }
  void options(std::vector<std::string> labels) {
    labels.emplace_back();
    glo.scaleLabels[0] = std::move(labels);
  }
  void show() { DisplayVote(0, 1, -1, form); }
  const Element* find(const char* array, int index) { return form.surface().find(array, index); }
  const Element& element(const char* array, int index) {
    const Element* found = find(array, index);
    if (found == nullptr)
      throw std::runtime_error(std::string(array) + " is not on the screen");
    return *found;
  }
  void resultUp() {
    form.UpdateBars();
    form.ShowBars(true);
    form.state = VoteState::resultUp;
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
  EXPECT_EQ(element("optionKey", 1).caption + element("lbl_Criteria", 1).caption, "1a|b");
  EXPECT_EQ(glo.startFrom, 0);
  EXPECT_EQ(glo.options, 2);
  EXPECT_EQ(form.txt_AssNum + "/" + form.txt_RiskNum, "0/0");
  glo.assessments[0].showTitleText = glo.assessments[0].showScaleText = false;
  show();
  EXPECT_EQ(find("lbl_assessment", 0), nullptr);
  EXPECT_EQ(find("lbl_Criteria", 0), nullptr);
  EXPECT_EQ(glo.voteTitle, "") << "not on phones either";
  EXPECT_EQ(glo.voteText, "|0.  low|1.  a/b|2.  high");
  options({});
  glo.risks[0].text.clear();
  glo.CheckShowListItemIdentifier = false;
  show();
  EXPECT_EQ(glo.voteText, "   Vote Now");
  EXPECT_EQ(form.lbl_Risk.Caption, "   ");
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

TEST_F(VoteScreen, saysTheCountInWords) {
  struct Case {
    const char* count;
    int voted, room;
    bool closed;
    std::vector<int> counts;
    const char *strong, *quiet, *told, *notice;
  };
  const Case cases[] = {
      {"7", 7, 20, false, {}, "7", "of 20 voted", "Waiting for... 3 4 and 11 more", ""},
      {"1,000", 1000, 1204, false, {}, "1,000", "of 1,204 voted", "Waiting for... 3 4 and 202 more", ""},
      {"20", 20, 20, false, {}, "20", "of 20 voted", "Everyone has voted", ""},
      {"K'Board", 3, 0, false, {}, "K'Board", "", "", ""},
      {"Wait", 20, 20, false, {}, "Wait", "", "Everyone has voted", ""},
      {"0", 0, 0, false, {}, "0", "voted", "No keypads yet. The vote counts each as it comes.", ""},
      {"", 18, 20, true, {9, 9}, "18", "of 20 voted", "2 did not vote", ""},
      {"", 20, 20, true, {9, 11}, "20", "of 20 voted", "Everyone has voted", ""},
      {"",
       0,
       20,
       true,
       {0, 0},
       "0",
       "of 20 voted",
       "20 did not vote",
       "Nobody has voted. 0 of 20 keypads pressed a key."},
      {"",
       4,
       20,
       true,
       {0, 0},
       "4",
       "of 20 voted",
       "16 did not vote",
       "4 voted, and none of these votes counts here. 3 abstained."},
  };
  for (const Case& c : cases) {
    VoteNow now;
    now.count = c.count;
    now.voted = c.voted;
    now.room = c.room;
    now.closed = c.closed;
    now.counts = c.counts;
    now.abstains = 3;
    if (c.room > 0)
      now.waiting = WaitingFor{"Waiting for...", {"3", "4"}, c.room - c.voted};
    EXPECT_EQ(countWords(now).strong, c.strong);
    EXPECT_EQ(countWords(now).quiet, c.quiet);
    EXPECT_EQ(toldWords(now, [](const std::string&) { return true; }), c.told) << c.count;
    EXPECT_EQ(noticeWords(now), c.notice);
  }
  VoteNow narrow;
  narrow.waiting = WaitingFor{"Waiting for...", {"3", "4", "5"}, 9};
  narrow.room = 9;
  const auto fits = [](std::size_t most) {
    return [most](const std::string& text) { return text.size() <= most; };
  };
  EXPECT_EQ(toldWords(narrow, fits(30)), "Waiting for... 3 4 and 7 more");
  EXPECT_EQ(toldWords(narrow, fits(1)), "Waiting for... 9 keypads");
  narrow.waiting = WaitingFor{"Waiting for...", {"3"}, 1};
  EXPECT_EQ(toldWords(narrow, fits(1)), "Waiting for... 1 keypad");
  EXPECT_EQ(barMark(2, 5, 0), (BarMark{"2", ""}));
  EXPECT_EQ(barMark(2, 5, 1), (BarMark{"40\u00a0%", ""}));
  EXPECT_EQ(barMark(2, 3, 2), (BarMark{"67\u00a0%", "  2"}));
  EXPECT_EQ(barMark(0, 0, 2), (BarMark{"0", ""}));
}

bool apart(const Element& a, const Element& b) {
  return a.right() <= b.left + 1 || b.right() <= a.left + 1 || a.bottom() <= b.top + 1 ||
         b.bottom() <= a.top + 1;
}

// Where the lines of a label stand; figures reach no lower than their line.
std::vector<Element> inkOf(const Element& e) {
  if (e.kind != Element::Kind::label || e.isBadge())
    return {e};
  const host::TextMeasure& measure = *host::host().textMeasure;
  const double share = e.align == host::Align::left ? 0 : e.align == host::Align::right ? 1 : 0.5;
  const double step = measure.LineHeight(e.font.name, e.font.size);
  std::vector<Element> lines;
  std::istringstream text(e.caption);
  for (std::string line; std::getline(text, line);) {
    Element ink = e;
    ink.width = measure.TextWidth(line, e.font.name, e.font.size, e.font.bold, e.font.italic);
    ink.left += (e.width - ink.width) * share;
    ink.top += step * static_cast<double>(lines.size());
    const bool figures = line.find_first_not_of("0123456789.") == std::string::npos;
    ink.height = figures ? measure.Ascent(e.font.name, e.font.size, e.font.bold, e.font.italic) : step;
    lines.push_back(ink);
  }
  return lines;
}

bool clear(const Element& a, const Element& b) {
  for (const Element& one : inkOf(a))
    for (const Element& other : inkOf(b))
      if (!apart(one, other))
        return false;
  return true;
}

// Everything on the screen, no text under the floor or outside its box, nothing on top of something else.
void expectInPlace(const host::Surface& surface) {
  const double floor = look::partOfHeight(look::Size::floor) * surface.height / 20;
  std::vector<std::pair<std::string, Element>> taken;
  for (const host::ElementArray& array : surface.arrays())
    for (const Element& e : array) {
      const std::string name = array.name() + std::to_string(e.index);
      EXPECT_TRUE(e.left >= -1 && e.top >= -1 && e.right() <= surface.width + 1 &&
                  e.bottom() <= surface.height + 1)
          << name;
      const bool solid = array.name() == "barTrack" || array.name() == "averageMark" || name == "joinCode0";
      if (e.kind != Element::Kind::label && !solid)
        continue;
      if (e.kind == Element::Kind::label) {
        EXPECT_GE(e.font.size, floor) << name;
        for (const Element& line : inkOf(e)) EXPECT_LE(line.width, e.width + 30) << name << ": " << e.caption;
      }
      taken.emplace_back(name, e);
    }
  for (std::size_t i = 0; i < taken.size(); ++i)
    for (std::size_t j = i + 1; j < taken.size(); ++j)
      EXPECT_TRUE(clear(taken[i].second, taken[j].second)) << taken[i].first << " and " << taken[j].first;
}

TEST_F(VoteScreen, hasRoomForEverythingInEveryState) {
  for (const auto& [width, height] : {std::pair(1024, 768), {1280, 1024}, {1920, 1080}, {3840, 2160}})
    for (const pictures::VoteState& state :
         pictures::voteStates(pictures::plainGround(true), width, height)) {
      SCOPED_TRACE(state.name + " " + std::to_string(width));
      expectInPlace(state.surface);
    }
}

TEST_F(VoteScreen, storedPlacesGiveWayAndFollowTheScreen) {
  AssessmentRecord& stored = glo.assessments[0];
  stored.lbl_Risk = stored.lbl_Assessment = {6000, 0, 1000, 500};
  stored.lbl_Criteria[0] = {4000, 0, 2000, 4000};
  stored.Img_VC = {0, 0, 99999, 3000};
  options({"low", "unplaced"});
  show();
  EXPECT_GE(element("lbl_assessment", 0).top, 500 + element("lbl_Risk", 0).height) << "under the item";
  EXPECT_GT(element("lbl_Criteria", 1).top, 4000);
  EXPECT_NEAR(element("uctl_votesCast", 0).right(), form.ScaleWidth, 1);
  form.ScaleWidth *= 2;  // twice the screen that the layout was made for
  form.ScaleHeight *= 2;
  form.LayOutAgain();
  EXPECT_EQ(element("lbl_Risk", 0).left, 2000);
}

// Options anywhere, of any width: their bars and marks stay clear of them.
TEST_F(VoteScreen, neverCoversOptionsWithBars) {
  test::SeededRandom random;
  int drawn = 0;
  for (int round = 0; round < 200; ++round) {
    const int count = 2 + round % 9;
    AssessmentRecord& stored = glo.assessments[0];
    const auto length = [&](double least, double most) {
      return static_cast<float>(least + random.Rnd() * (most - least));
    };
    const float width = length(2000, 15000), left = length(0, 8000), top = length(500, 6000),
                step = length(500, 900);
    for (int i = 0; i < count; ++i)
      stored.lbl_Criteria[static_cast<std::size_t>(i)] = {width, step, left,
                                                          top + step * static_cast<float>(i)};
    stored.img_chart = round % 3 == 0
                           ? LayoutRect{length(2000, 9000), length(2000, 6000), length(0, 9000), 3000}
                           : LayoutRect{};
    stored.scaleAlign = round % 3;
    options(std::vector<std::string>(static_cast<std::size_t>(count), "an option of some length"));
    show();
    resultUp();
    const host::Surface& surface = form.surface();
    for (const char* bars : {"barTrack", "bar", "barMark", "barCount", "barKey"})
      if (const host::ElementArray* array = surface.find(bars))
        for (const Element& bar : *array)
          for (const char* texts : {"lbl_Criteria", "optionKey", "lbl_Risk"})
            for (const Element& text : *surface.find(texts)) {
              ++drawn;
              ASSERT_TRUE(clear(bar, text))
                  << round << " " << bars << bar.index << " " << texts << text.index;
            }
  }
  EXPECT_GT(drawn, 5000);
}

TEST_F(VoteScreen, showsBarsAndTheAverageOnlyWhereTheyAreWanted) {
  options({"low", "middle", "high"});
  glo.CheckAverageScoreIndicator = 1;
  show();
  glo.liveVotes = {"1", "2", "3", "3", "-100"};
  EXPECT_EQ(find("bar", 0), nullptr) << "nobody follows the crowd";
  resultUp();
  form.average = 2.25;
  EXPECT_NE(find("bar", 0), nullptr);
  EXPECT_EQ(find("average", 0), nullptr) << "it belongs to the statistics";
  form.ShowAverageScore("Average: 2.25", true);
  EXPECT_EQ(element("average", 0).caption, "2.25");
  form.ShowBars(false);
  EXPECT_EQ(find("bar", 0), nullptr);
  EXPECT_NE(find("lbl_Criteria", 0), nullptr);
}

TEST_F(VoteScreen, offersTheCodeToJoinWhilePhonesAreInUse) {
  struct Link : test::ScriptedLink {
    host::RoomState room() const override { return state; }
    host::RoomState state;
  } link;
  link.linkUp = true;
  host::host().controller = &link;
  show();
  link.state.address = "192.168.1.20:7878";
  struct Case {
    long phones, rehearse;
    bool takes, shown;
  };
  for (const Case& c : {Case{0, 0, true, true},
                        {5, 0, true, true},
                        {0, 20, true, false},
                        {1, 20, true, true},
                        {0, 20, false, false}}) {
    link.state.phones = c.phones;
    link.state.rehearse = c.rehearse;
    link.state.takesPhones = c.takes;
    const Element* code = find("joinCode", 1);
    EXPECT_EQ(code != nullptr ? code->caption : "", c.shown ? "http://192.168.1.20:7878/" : "")
        << c.phones << c.rehearse;
  }
  link.state.takesPhones = true;
  form.state = VoteState::resultUp;
  EXPECT_EQ(find("joinCode", 1), nullptr);
  host::host().controller = nullptr;
}

// The picture is made when somebody looks, and only when something has changed.
TEST_F(VoteScreen, isDrawnAnewOnlyWhenSomethingHasChanged) {
  show();
  const Element* before = find("lbl_Risk", 0);
  EXPECT_EQ(find("lbl_Risk", 0), before);
  form.SetVotesCastCount("1000");
  EXPECT_EQ(element("uctl_votesCast", 1).caption, "1,000");
  glo.activeKeypads.assign(2000, "1");
  EXPECT_EQ(element("uctl_votesCast", 2).caption, "of 2,000 voted");
  EXPECT_NEAR(element("track", 1).width, element("track", 0).width / 2, 1);
  form.ShowVotesCastControl(false);
  EXPECT_EQ(find("uctl_votesCast", 0), nullptr) << "no click ends it any more";
}

}  // namespace
}  // namespace qrn

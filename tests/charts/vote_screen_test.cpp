// The vote screen: what it tells the controller, what it says to the room, and that all of it has its place.
#include "charts/vote_screen/vote_screen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

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
  ~VoteScreen() override { glo.oPresentation = nullptr; }
  void options(std::vector<std::string> labels) {
    labels.emplace_back();
    glo.scaleLabels[0] = std::move(labels);
  }
  void show() { DisplayVote(0, 1, -1, form); }
  const Element* find(const char* array, int index) { return form.surface().find(array, index); }
  void resultUp() {
    form.UpdateBars();
    form.ShowBars(true);
    form.state = VoteState::resultUp;
  }

  test::TestHost world;
  PlainVoteForm form;
};

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

// The picture is made when somebody looks, and only when something has changed.
TEST_F(VoteScreen, isDrawnAnewOnlyWhenSomethingHasChanged) {
  show();
  const Element* before = find("lbl_Risk", 0);
  EXPECT_EQ(find("lbl_Risk", 0), before);
  form.SetVotesCastCount("1000");
  EXPECT_EQ(find("uctl_votesCast", 1)->caption, "1,000");
  form.ShowVotesCastControl(false);
  EXPECT_EQ(find("uctl_votesCast", 0), nullptr) << "no click ends it any more";
}

}  // namespace
}  // namespace qrn

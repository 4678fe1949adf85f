#include "analysis/filter/filters.h"

#include <memory>

#include "analysis/filter/categories_membership.h"
#include "core/glo.h"
#include "host/xml_query.h"
#include "support/test_host.h"

namespace qrn::test {
namespace {

using Flags = std::vector<int>;

// "//Name" finds the text between <Name> and </Name>; a text without "<" is not well-formed.
class FlatXml : public host::XmlQuery {
 public:
  class Document : public host::XmlDocument {
   public:
    explicit Document(std::string_view xml) : text_(xml) {}
    std::optional<std::string> selectSingleNode(std::string_view query) const override {
      const std::string name(query.substr(2)), open = "<" + name + ">";
      const std::size_t start = text_.find(open), end = text_.find("</" + name + ">");
      if (start == std::string::npos || end == std::string::npos)
        return std::nullopt;
      return text_.substr(start + open.size(), end - start - open.size());
    }

   private:
    std::string text_;
  };
  std::unique_ptr<host::XmlDocument> loadXML(std::string_view text) override {
    return text.find('<') == std::string_view::npos ? nullptr : std::make_unique<Document>(text);
  }
};

class FilterTest : public ::testing::Test {
 protected:
  FilterTest() {
    glo = Glo();
    glo.oPresentation = &world.presentation;
    host::host().xmlQuery = &xml;
    glo.keypadIncluded.assign(4, 1);
  }
  ~FilterTest() override {
    host::host().xmlQuery = nullptr;
    glo = Glo();
  }
  DemographicInfo question(const std::string& votes, std::vector<DemographicInfoGroup> groups,
                           bool isDefault = false) {
    DemographicInfo info;
    info.votes = votes;
    info.groups = std::move(groups);
    info.isDefault = isDefault;
    return info;
  }

  TestHost world;
  FlatXml xml;
};

TEST_F(FilterTest, GroupsCombineByTheOperator) {
  const std::string department = "d,t,1;2;2;1;", site = "d,t,7;7;8;,";
  struct Case {
    const char* name;
    bool anyGroup;
    std::vector<DemographicInfo> questions;
    Flags included;
    const char* caption;
  };
  const Case cases[] = {
      {"one group",
       false,
       {question(department, {{1, "Sales", true}, {2, "Works", false}})},
       {1, 0, 0, 1},
       "Sales"},
      {"two questions, both",
       false,
       {question(department, {{1, "Sales", true}}), question(site, {{7, "North", true}})},
       {1, 0, 0, 0},
       "Sales AND North"},
      {"two questions, either",
       true,
       {question(department, {{1, "Sales", true}}), question(site, {{8, "South", true}})},
       {1, -1, 1, 1},
       "Sales OR South"},
      {"two groups of one question, both",
       false,
       {question(department, {{1, "Sales", true}, {2, "Works", true}})},
       {0, 0, 0, 0},
       "Sales AND Works"},
      {"two groups of one question, either",
       true,
       {question(department, {{1, "Sales", true}, {2, "Works", true}})},
       {1, 1, 1, 1},
       "Sales OR Works"},
      {"voted again",
       false,
       {question("d,t,2;2;\r\nd,t,1;2;\r\nno votes here", {{1, "Sales", true}})},
       {1, 0, 0, 0},
       "Sales"},
      {"no answers", false, {question("", {{1, "Sales", true}})}, {-1, -1, -1, -1}, "Sales"},
      {"too few fields", false, {question("1;2;", {{1, "Sales", true}})}, {-1, -1, -1, -1}, "Sales"},
      {"whole answers compare",
       true,
       {question("d,t,11;1;01; 1;", {{1, "Sales", true}})},
       {-1, 1, -1, -1},
       "Sales"},
      {"nothing chosen", false, {question(department, {{1, "Sales", false}})}, {-1, -1, -1, -1}, ""},
  };
  glo.demographicFilterOn = true;
  for (const Case& c : cases) {
    glo.demographicLogicalOperator = c.anyGroup ? -1 : 0;
    glo.demographicQuestions = c.questions;
    createFilter();
    EXPECT_EQ(glo.keypadIncluded, c.included) << c.name;
    EXPECT_EQ(glo.demographicFilterText, c.caption) << c.name;
  }
}

TEST_F(FilterTest, WithoutAFilterOnlyTheCaptionGoes) {
  glo.demographicFilterText = "Sales";
  glo.keypadIncluded = {1, 0, 1, 0};
  createFilter();
  EXPECT_EQ(glo.demographicFilterText, "");
  EXPECT_EQ(glo.keypadIncluded, (Flags{1, 0, 1, 0}));
}

TEST_F(FilterTest, DigitsChooseAGroupOfTheLastDefaultQuestion) {
  glo.demographicQuestions = {question("", {{1, "a", true}}, true),
                              question("", {{4, "b", true}, {5, "c", false}}, true)};
  std::string caption = "before";
  EXPECT_TRUE(SetDemographicFilter(1, caption));
  EXPECT_EQ(caption, "c");
  EXPECT_TRUE(glo.demographicFilterOn);
  EXPECT_FALSE(glo.demographicQuestions[0].groups[0].selected);
  EXPECT_FALSE(glo.demographicQuestions[1].groups[0].selected);
  EXPECT_TRUE(glo.demographicQuestions[1].groups[1].selected);
  EXPECT_FALSE(SetDemographicFilter(2, caption));
  EXPECT_FALSE(glo.demographicFilterOn);
  EXPECT_TRUE(SetDemographicFilter(0, caption));
  EXPECT_FALSE(SetDemographicFilter(-1, caption));
  EXPECT_FALSE(glo.demographicFilterOn);
  EXPECT_EQ(caption, "b");
}

TEST_F(FilterTest, QuestionsAreReadFromTheSlides) {
  MemorySlide& slide = world.presentation.slide(2);
  slide.tagStore.Add("qrnVote",
                     "<v><QID>q9</QID><group_info>x</group_info><options>2</options><startFrom>1</startFrom>"
                     "<GroupOption000>no</GroupOption000><GroupOption001>Sales</GroupOption001>"
                     "<GroupOption003>Works</GroupOption003><GroupOption004>no</GroupOption004></v>");
  slide.tagStore.Add("qrnVotes", "d,t,1;\n");
  slide.shapes.emplace_back("qrn_question", "Your department?");
  world.presentation.slide(3).tagStore.Add("qrnVote", "not xml");
  glo.demographics = {{257, {{1, false, ""}, {3, true, ""}}, true}};  // as the exercise has kept them
  GetDemographicVoteInfo();
  ASSERT_EQ(glo.demographicQuestions.size(), 2u);
  const DemographicInfo& read = glo.demographicQuestions[0];
  EXPECT_EQ(read.slideID, 257);
  EXPECT_EQ(read.slideIndex, 2);
  EXPECT_EQ(read.QID, "q9");
  EXPECT_EQ(read.questionText, "Your department?");
  EXPECT_EQ(read.votes, "d,t,1;\r\n");
  ASSERT_EQ(read.groupCount, 2);
  EXPECT_EQ(read.groups[0].groupName, "Sales");
  EXPECT_EQ(read.groups[1].optionNumber, 3);
  EXPECT_TRUE(read.isDefault);
  EXPECT_TRUE(read.groups[1].selected);
  EXPECT_TRUE(glo.demographicFilterOn);
  EXPECT_EQ(glo.demographicQuestions[1].groupCount, 0);

  glo.demographicQuestions[0].groups[0].selected = true;
  GetDemographicVoteInfo();  // read again: what was chosen since stays chosen
  EXPECT_TRUE(glo.demographicQuestions[0].groups[0].selected);
  for (const bool on : {true, false}) {
    glo.demographicFilterOn = on;  // of the run: the choice stays
    glo.demographics.clear();
    keepDemographicChoices();
    EXPECT_TRUE(glo.demographics[0].groups[0].selected);
    EXPECT_TRUE(glo.demographics[0].selected);
  }
}

TEST_F(FilterTest, TheFilterLineStandsInItsCorner) {
  glo.demographicFilterOn = true;
  glo.demographicFilterText = " Dept: Sales,Works ";
  glo.runByGraphLabelColour = 5;
  struct Case {
    const char* corner;
    double left, top;
    host::Align align;
  };
  for (const Case& c :
       {Case{"TL", 1240, 740, host::Align::left}, Case{"TR", 5760, 740, host::Align::right},
        Case{"BL", 1240, 3160, host::Align::left}, Case{"BR", 5760, 3160, host::Align::right}}) {
    glo.opt_StatsBoxPosition = c.corner;
    const FilterLine line = showFilter(1000, 500, 8000, 3000, 3000, 100);
    EXPECT_TRUE(line.visible);
    EXPECT_EQ(line.caption, "Filtered using: Dept Sales AND Works");
    EXPECT_EQ(line.colour, 5);
    EXPECT_EQ(line.left, c.left) << c.corner;
    EXPECT_EQ(line.top, c.top) << c.corner;
    EXPECT_EQ(line.align, c.align) << c.corner;
  }
  EXPECT_EQ(filterCaption(true), "Filtered View");
  glo.demographicFilterOn = false;
  EXPECT_FALSE(showFilter(0, 0, 1, 1, 1, 1).visible);
}

TEST_F(FilterTest, ASubcategoryCountsForTheOnesAbove) {
  glo.risks.assign(4, RiskRecord());
  for (int i = 0; i < 3; ++i) glo.risks[static_cast<std::size_t>(i)].ID = i;
  const auto category = [](int id, int parent, std::vector<int> items, bool selected) {
    CategoryRecord record;
    record.CategoryID = id;
    record.CategoryParent = parent;
    record.CategoryItems = std::move(items);
    record.Selected = selected;
    return record;
  };
  // 3 and 4 are each other's parents, which only a damaged file brings about
  glo.categories = {category(1, 0, {0, -1}, false), category(2, 0, {-1}, true),
                    category(3, 2, {1, -1}, false), category(4, 3, {2}, false), CategoryRecord()};
  EXPECT_TRUE(IsInCategory(glo.categories, 1, 1, glo.risks));
  EXPECT_FALSE(IsInCategory(glo.categories, 1, 0, glo.risks));
  EXPECT_FALSE(IsInCategory(glo.categories, 2, 3, glo.risks));  // the spare element is no entry
  EXPECT_TRUE(IsInCategorySingle(1));
  EXPECT_FALSE(IsInCategorySingle(0));
  glo.categories[2].CategoryParent = 4;
  EXPECT_FALSE(IsInCategory(glo.categories, 0, 2, glo.risks));
  EXPECT_TRUE(IsInCategorySingle({CategoryRecord()}, 0));
}

}  // namespace
}  // namespace qrn::test

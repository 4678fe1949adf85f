// Prints the exercise text of a sample: `first`, else the risk workshop. samples/build puts it into the
// decks.
#include <array>
#include <iostream>
#include <string>
#include <vector>

#include "adapters/system/machine.h"
#include "core/glo.h"
#include "core/model.h"
#include "host/host.h"
#include "store/exercise_text.h"

namespace {

using qrn::glo;

struct Assessment {
  const char* title;
  std::array<const char*, 5> scale;
};

struct Category {
  const char* name;
  std::vector<const char*> items;
};

struct Sample {
  const char *listTitle, *exerciseName;
  std::vector<Assessment> assessments;
  std::vector<Category> categories;  // without a name: the items belong to none
};

// Five ideas on two scales: ten votes.
const Sample& firstWorkshop() {
  static const Sample sample{"What shall we try first?",
                             "Team day",
                             {{"Value", {"Hardly any", "Some", "Fair", "High", "Very high"}},
                              {"Effort", {"An hour", "A day", "A week", "A month", "A quarter"}}},
                             {{"",
                               {"A meeting-free Wednesday", "One page that says who decides what",
                                "A morning with customers each month", "Pairing across the two offices",
                                "A shelf of reusable parts"}}}};
  return sample;
}

const Sample& riskWorkshop() {
  static const Sample sample{
      "Harbour bridge renewal: risks",
      "Harbour bridge renewal",
      {
          {"Likelihood", {"Rare", "Unlikely", "Possible", "Likely", "Almost certain"}},
          {"Impact", {"Minor", "Moderate", "Serious", "Major", "Severe"}},
          {"Urgency", {"Next year or later", "This year", "This quarter", "This month", "This week"}},
          {"Control",
           {"Fully controlled", "Well controlled", "Partly controlled", "Hardly controlled",
            "Not controlled"}},
      },
      {
          {"Ground and structure",
           {"Piles meet unmapped cables in the river bed",
            "The old bearings are weaker than the drawings say", "Steel arrives late or out of tolerance",
            "A flood reaches the cofferdam", "Temporary supports settle unevenly"}},
          {"People and safety",
           {"Work at height above live traffic", "Too few certified welders in the region",
            "Night shifts lead to fatigue", "A key engineer leaves in mid-project",
            "Divers cannot work because of the current"}},
          {"Money and contracts",
           {"The price of steel rises by a quarter", "The main contractor fails",
            "Claims for late access to the site", "The second part of the grant is not approved",
            "Exchange rates move against us"}},
          {"Neighbours and environment",
           {"Nesting birds stop work in spring", "Noise complaints lead to shorter hours",
            "Oil or paint reaches the water", "Detours choke the old town",
            "Divers find a wreck that must be protected"}},
      }};
  return sample;
}

void addAssessments(const Sample& sample) {
  for (std::size_t a = 0; a < sample.assessments.size(); ++a) {
    const Assessment& assessment = sample.assessments[a];
    glo.assessmentTitles[a] = assessment.title;
    glo.scaleLabels[a].assign(assessment.scale.begin(), assessment.scale.end());
    glo.scaleLabels[a].emplace_back();
    glo.assessments[a].scalePointCount = static_cast<int>(assessment.scale.size());
    glo.assessmentInfo[a].active = true;
  }
  glo.matrixAxes = {0, 1};
}

void addItems(const Sample& sample) {
  glo.risks.clear();
  glo.categories.resize(1);
  int id = 0;
  for (const Category& category : sample.categories) {
    qrn::CategoryRecord record;
    record.CategoryID = upperBound(glo.categories) + 1;
    record.CategoryName = category.name;
    record.CategoryItems.clear();
    for (const char* text : category.items) {
      qrn::RiskRecord risk;
      risk.text = text;
      risk.ID = id;
      risk.sortKey = id;
      risk.voting = true;
      risk.newItem = true;
      risk.active.fill(true);
      glo.risks.push_back(risk);
      record.CategoryItems.push_back(id++);
    }
    record.CategoryItems.push_back(-1);
    if (!record.CategoryName.empty())
      glo.categories.push_back(record);
    else
      glo.categories.front().CategoryItems = record.CategoryItems;
  }
  glo.categories.emplace_back();
  glo.risks.emplace_back();
}

}  // namespace

int main(int count, char** words) {
  const Sample& sample = count > 1 && std::string(words[1]) == "first" ? firstWorkshop() : riskWorkshop();
  qrn::system::MachineClock clock;
  qrn::system::MachineEnvironment environment;
  qrn::host::host().clock = &clock;
  qrn::host::host().environment = &environment;
  qrn::initXYVote();
  glo.listTitle = sample.listTitle;
  glo.exerciseName = sample.exerciseName;
  addAssessments(sample);
  addItems(sample);
  std::cout << qrn::writeExercise(glo);
  return 0;
}

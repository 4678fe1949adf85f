// Prints the exercise text of the sample risk workshop. samples/build puts it into the sample deck.
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

constexpr std::array<Assessment, 4> kAssessmentsOfWorkshop{{
    {"Likelihood", {"Rare", "Unlikely", "Possible", "Likely", "Almost certain"}},
    {"Impact", {"Minor", "Moderate", "Serious", "Major", "Severe"}},
    {"Urgency", {"Next year or later", "This year", "This quarter", "This month", "This week"}},
    {"Control",
     {"Fully controlled", "Well controlled", "Partly controlled", "Hardly controlled", "Not controlled"}},
}};

struct Category {
  const char* name;
  std::vector<const char*> items;
};

const std::vector<Category>& categories() {
  static const std::vector<Category> all{
      {"Ground and structure",
       {"Piles meet unmapped cables in the river bed", "The old bearings are weaker than the drawings say",
        "Steel arrives late or out of tolerance", "A flood reaches the cofferdam",
        "Temporary supports settle unevenly"}},
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
  };
  return all;
}

void addAssessments() {
  for (std::size_t a = 0; a < kAssessmentsOfWorkshop.size(); ++a) {
    const Assessment& assessment = kAssessmentsOfWorkshop[a];
    glo.assessmentTitles[a] = assessment.title;
    glo.scaleLabels[a].assign(assessment.scale.begin(), assessment.scale.end());
    glo.scaleLabels[a].emplace_back();
    glo.assessments[a].scalePointCount = static_cast<int>(assessment.scale.size());
    glo.assessmentInfo[a].active = true;
  }
  glo.matrixAxes = {0, 1};
}

void addItems() {
  glo.risks.clear();
  glo.categories.resize(1);
  int id = 0;
  for (const Category& category : categories()) {
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
    glo.categories.push_back(record);
  }
  glo.categories.emplace_back();
  glo.risks.emplace_back();
}

}  // namespace

int main() {
  qrn::system::MachineClock clock;
  qrn::system::MachineEnvironment environment;
  qrn::host::host().clock = &clock;
  qrn::host::host().environment = &environment;
  qrn::initXYVote();
  glo.listTitle = "Harbour bridge renewal: risks";
  glo.exerciseName = "Harbour bridge renewal";
  addAssessments();
  addItems();
  std::cout << qrn::writeExercise(glo);
  return 0;
}

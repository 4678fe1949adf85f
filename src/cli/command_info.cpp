// info: what is on each slide of a deck.
#include <iomanip>
#include <iostream>
#include <nlohmann/json.hpp>

#include "cli/commands.h"
#include "cli/workshop.h"
#include "core/glo.h"
#include "host/names.h"

namespace qrn::cli {

namespace {

using Json = nlohmann::ordered_json;

struct SlideInfo {
  int slide = 0, slideID = 0;
  std::string title, damage;
  bool exercise = false;
  int items = 0, assessments = 0, records = 0;
};

int activeAssessments() {
  int count = 0;
  for (const AssessmentInfoRecord& info : glo.assessmentInfo) count += info.active ? 1 : 0;
  return count;
}

SlideInfo readSlide(Workshop& workshop, int number) {
  SlideInfo info;
  host::Slide& slide = workshop.presentation().Slides(number);
  info.slide = number;
  info.slideID = slide.slideID();
  info.title = slide.Title();
  info.damage = slide.Damage();
  info.exercise = !slide.tags().Item(tagName::exercise).empty();
  if (info.exercise) {
    workshop.loadExercise(number);
    info.items = glo.itemCount();
    info.assessments = activeAssessments();
    info.records = static_cast<int>(glo.voteRecords.recordCount());
  }
  return info;
}

void printLine(const SlideInfo& info) {
  std::cout << std::setw(4) << info.slide << "  " << (info.title.empty() ? "(no title)" : info.title);
  if (!info.damage.empty())
    std::cout << "\n      damaged: " << info.damage;
  if (info.exercise)
    std::cout << "\n      exercise: " << info.items << " items, " << info.assessments << " assessments, "
              << info.records << " vote records";
  std::cout << "\n";
}

}  // namespace

void runInfo(const InfoArguments& arguments, const CliHooks& hooks) {
  Workshop workshop(arguments, Access::read, hooks);
  Json slides = Json::array();
  for (int number = 1; number <= workshop.presentation().SlideCount(); ++number) {
    const SlideInfo info = readSlide(workshop, number);
    if (!arguments.json)
      printLine(info);
    slides.push_back({{"slide", info.slide},
                      {"slideID", info.slideID},
                      {"title", info.title},
                      {"exercise", info.exercise},
                      {"items", info.items},
                      {"assessments", info.assessments},
                      {"records", info.records}});
    if (!info.damage.empty())
      slides.back()["damage"] = info.damage;
  }
  if (arguments.json)
    std::cout << Json{{"slides", slides}}.dump(-1, ' ', false, Json::error_handler_t::replace) << "\n";
}

}  // namespace qrn::cli

// results: the scores of every item, as a table or as JSON.
#include <iomanip>
#include <iostream>
#include <nlohmann/json.hpp>

#include "analysis/filter/filters.h"
#include "analysis/multiplot.h"
#include "cli/commands.h"
#include "cli/workshop.h"
#include "core/common.h"
#include "core/glo.h"
#include "store/scores/results.h"

namespace qrn::cli {

namespace {

// Numbers keep single precision: the shortest text that reads back as the same float.
using Json = nlohmann::basic_json<nlohmann::ordered_map, std::vector, std::string, bool, std::int64_t,
                                  std::uint64_t, float>;

Json assessmentJson(std::size_t a) {
  const AssessmentInfoRecord& info = glo.assessmentInfo[a];
  Json json;
  json["number"] = a + 1;
  json["title"] = glo.assessmentTitles[a];
  json["active"] = info.active;
  json["voteType"] = glo.assessments[a].voteType;
  json["startFrom"] = glo.assessments[a].startFrom;
  json["scale"] = Json::array();
  for (int i = 0; i < glo.labelCount(static_cast<int>(a)); ++i)
    json["scale"].push_back(glo.scaleLabels[a][static_cast<std::size_t>(i)]);
  json["weight"] = info.weight;
  json["weightingOn"] = info.weightingOn;
  return json;
}

Json numbersJson(const std::array<std::optional<float>, kSlots>& numbers) {
  Json json = Json::array();
  for (const std::optional<float>& number : numbers) json.push_back(number ? Json(*number) : Json());
  return json;
}

Json itemJson(const ItemResult& item) {
  Json json;
  json["identifier"] = item.identifier;
  json["id"] = item.id;
  json["sortKey"] = item.sortKey;
  json["text"] = item.text;
  json["voting"] = item.voting;
  json["average"] = numbersJson(item.average);
  json["standardDeviation"] = numbersJson(item.standardDeviation);
  json["diversity"] = numbersJson(item.diversity);
  json["participants"] = item.participants;
  json["abstains"] = item.abstains;
  return json;
}

void printJson(int slide, const std::vector<ItemResult>& items) {
  Json json;
  json["slide"] = slide;
  json["listTitle"] = glo.listTitle;
  json["listOrder"] = glo.listOrder;
  json["assessments"] = Json::array();
  for (std::size_t a = 0; a < kAssessments; ++a) json["assessments"].push_back(assessmentJson(a));
  json["items"] = Json::array();
  for (const ItemResult& item : items) json["items"].push_back(itemJson(item));
  if (const std::string filter = filterCaption(false); !filter.empty())
    json["filter"] = filter;
  json["dataMessage"] = glo.dataMessage;
  std::cout << json.dump(1, ' ', false, Json::error_handler_t::replace) << "\n";
}

std::size_t slotOfPlot(std::size_t plot) {
  return kAssessments + plot;
}

void addMultiPlots(std::vector<ItemResult>& items) {
  for (std::size_t plot = 0; plot < glo.multiPlot.size(); ++plot) {
    if (!multiPlotSetUp(static_cast<int>(plot)))
      continue;
    GetMultiPlotValues(static_cast<int>(plot));
    const std::size_t slot = slotOfPlot(plot);
    for (std::size_t i = 0; i < items.size(); ++i)
      if (glo.risks[i].hasScore(slot))
        items[i].average[slot] = glo.risks[i].average[slot];
  }
}

// A figure of the table; "-" where there is none.
std::string figure(const std::optional<float>& number, double unit = 1) {
  return number ? formatPlaces(static_cast<double>(*number) * unit, 2) + (unit == 1 ? "" : "%") : "-";
}

void printAssessment(std::size_t a, const std::vector<ItemResult>& items) {
  std::cout << "\nAssessment " << a + 1 << ": " << glo.assessmentTitles[a]
            << "\n average  deviation  diversity  participants  abstains  item\n";
  for (const ItemResult& item : items)
    std::cout << std::setw(8) << figure(item.average[a]) << std::setw(11) << figure(item.standardDeviation[a])
              << std::setw(11) << figure(item.diversity[a], 100) << std::setw(14) << item.participants[a]
              << std::setw(10) << item.abstains[a] << "  " << item.identifier << ": " << item.text << "\n";
}

void printMultiPlot(std::size_t plot, const std::vector<ItemResult>& items) {
  std::cout << "\nMultiPlot " << plot + 1;
  if (!multiPlotSetUp(static_cast<int>(plot))) {
    std::cout << " is not set up\n";
    return;
  }
  std::cout << ": " << multiPlotName(static_cast<int>(plot)) << "\n average  item\n";
  for (const ItemResult& item : items)
    std::cout << std::setw(8) << figure(item.average[slotOfPlot(plot)]) << "  " << item.identifier << ": "
              << item.text << "\n";
}

void printTable(const std::vector<ItemResult>& items) {
  std::cout << glo.listTitle << "\n";
  if (const std::string filter = filterCaption(false); !filter.empty())
    std::cout << filter << "\n";
  for (std::size_t a = 0; a < kAssessments; ++a)
    if (glo.assessmentInfo[a].active)
      printAssessment(a, items);
  for (std::size_t plot = 0; plot < glo.multiPlot.size(); ++plot) printMultiPlot(plot, items);
}

}  // namespace

void runResults(const ResultsArguments& arguments, const CliHooks& hooks) {
  Workshop workshop(arguments, Access::read, hooks);
  workshop.loadExercise(arguments.slide);
  std::vector<ItemResult> items = results();
  addMultiPlots(items);
  if (arguments.json)
    printJson(arguments.slide, items);
  else
    printTable(items);
}

}  // namespace qrn::cli

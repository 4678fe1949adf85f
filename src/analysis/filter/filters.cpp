#include "analysis/filter/filters.h"

#include <algorithm>
#include <charconv>
#include <memory>

#include "base/text.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/edit.h"
#include "core/glo.h"
#include "host/host.h"
#include "host/names.h"
#include "host/presentation.h"
#include "host/xml_query.h"

namespace qrn {

namespace {

constexpr const char* kModule = "modDemographics";
constexpr double kCornerDistance = 240;  // twips
constexpr int kHighestOption = 999;      // nodes are numbered with three digits

std::string optionNode(int option) {
  const std::string digits = std::to_string(option);
  return "//GroupOption" + std::string(digits.size() < 3 ? 3 - digits.size() : 0, '0') + digits;
}

int numberOf(const host::XmlDocument& xml, const char* query) {
  const double value = qrnVal(xml.selectSingleNode(query).value_or("0"));
  return static_cast<int>(std::clamp(value, 0.0, static_cast<double>(kHighestOption)));
}

void readGroups(const host::XmlDocument& xml, DemographicInfo& question) {
  question.QID = xml.selectSingleNode("//QID").value_or("");
  if (xml.selectSingleNode("//group_info").value_or("").empty())
    return;
  const int options = numberOf(xml, "//options"), startFrom = numberOf(xml, "//startFrom");
  for (int option = startFrom; option <= options + 1; ++option) {
    const std::optional<std::string> name = xml.selectSingleNode(optionNode(option));
    if (name)
      question.groups.push_back({option, *name, false});
  }
  question.groupCount = static_cast<std::int32_t>(question.groups.size());
}

DemographicInfo readQuestion(host::Slide& slide, const std::string& qrnVote) {
  DemographicInfo question;
  question.slideID = slide.slideID();
  question.slideIndex = slide.slideIndex();
  for (host::Shape* shape : slide.Shapes())
    if (shape->Name() == "qrn_question")
      question.questionText = shape->Text();
  question.votes = slide.tags().Item(tagName::convertedVotes);
  HomogoniseLineFeeds(question.votes);
  if (host::host().xmlQuery != nullptr)
    if (const auto xml = host::host().xmlQuery->loadXML(qrnVote))
      readGroups(*xml, question);
  return question;
}

void keepChoices(const DemographicInfo& before, DemographicInfo& question) {
  question.isDefault = before.isDefault;
  for (DemographicInfoGroup& group : question.groups)
    for (const DemographicInfoGroup& old : before.groups)
      if (old.optionNumber == group.optionNumber)
        group.selected = old.selected;
}

void takeChoices(const DemographicQuestion& kept, DemographicInfo& question) {
  question.isDefault = kept.selected;
  for (DemographicInfoGroup& group : question.groups)
    for (const DemographicGroup& old : kept.groups)
      if (old.ID == group.optionNumber && old.selected)
        group.selected = glo.demographicFilterOn = true;
}

// The last line of `votesText` that holds a ";".
std::string_view lastAnswerLine(std::string_view votesText) {
  const std::size_t mark = votesText.rfind(';');
  if (mark == std::string_view::npos)
    return {};
  const std::size_t before = votesText.rfind("\r\n", mark), after = votesText.find("\r\n", mark);
  const std::size_t start = before == std::string_view::npos ? 0 : before + 2;
  return votesText.substr(start, after == std::string_view::npos ? after : after - start);
}

// What reads best in one line: no ":" in it, and the operator in place of the commas.
std::string displayForm(const std::string& text) {
  const std::string shown(trimBlanks(replaceAll(text, ":", "")));
  return replaceAll(shown, ",", glo.demographicLogicalOperator != 0 ? " OR " : " AND ");
}

}  // namespace

void GetDemographicVoteInfo() {
  const std::vector<DemographicInfo> before = std::move(glo.demographicQuestions);
  glo.demographicQuestions.clear();
  if (glo.oPresentation == nullptr)
    return;
  for (int i = 1; i <= glo.oPresentation->SlideCount(); ++i)
    trapErrors(kModule, "GetDemographicVoteInfo", [&] {
      host::Slide& slide = glo.oPresentation->Slides(i);
      const std::string qrnVote = slide.tags().Item(tagName::question);
      if (!qrnVote.empty())
        glo.demographicQuestions.push_back(readQuestion(slide, qrnVote));
    });
  for (DemographicInfo& question : glo.demographicQuestions) {
    for (const DemographicInfo& old : before)
      if (old.slideID == question.slideID)
        keepChoices(old, question);
    if (before.empty())
      for (const DemographicQuestion& kept : glo.demographics)
        if (kept.ID == question.slideID)
          takeChoices(kept, question);
  }
}

void keepDemographicChoices() {
  if (glo.demographicQuestions.empty())
    return;  // not read, or a presentation without questions: what the file held stays
  std::vector<DemographicQuestion> choices;
  for (const DemographicInfo& question : glo.demographicQuestions) {
    DemographicQuestion kept{question.slideID, {}, question.isDefault};
    for (const DemographicInfoGroup& group : question.groups)
      kept.groups.push_back({group.optionNumber, group.selected, group.groupName});
    choices.push_back(std::move(kept));
  }
  // Those of a question that is not in the presentation now, or cannot be read, stay.
  for (const DemographicQuestion& held : glo.demographics)
    if (std::ranges::find(glo.demographicQuestions, held.ID, &DemographicInfo::slideID) ==
        glo.demographicQuestions.end())
      choices.push_back(held);
  if (choices == glo.demographics)
    return;
  glo.demographics = std::move(choices);
  exerciseHistory().touched();
}

void includeKeypads() {
  std::fill(glo.keypadIncluded.begin(), glo.keypadIncluded.end(), 1);
  if (glo.CheckFilter || glo.demographicFilterOn)
    createFilter();
}

std::size_t roomForAnswers(const DemographicInfo& question) {
  return question.votes.size() / 2 + 1;
}

void createFilter() {
  if (!glo.demographicFilterOn) {
    glo.demographicFilterText.clear();
    return;
  }
  const std::string joint = glo.demographicLogicalOperator != 0 ? " OR " : " AND ";
  std::fill(glo.keypadIncluded.begin(), glo.keypadIncluded.end(), -1);
  std::string caption;
  for (const DemographicInfo& question : glo.demographicQuestions)
    for (const DemographicInfoGroup& group : question.groups) {
      if (!group.selected)
        continue;
      makeFilter(question.votes, group.optionNumber);
      caption += (caption.empty() ? "" : joint) + group.groupName;
    }
  glo.demographicFilterText = caption;
}

void makeFilter(std::string_view votesText, int optionNumber) {
  applyGroup(glo.keypadIncluded, votesText, optionNumber, glo.demographicLogicalOperator != 0);
}

void applyGroup(std::vector<int>& included, std::string_view votesText, int optionNumber, bool anyGroup) {
  const std::string_view line = lastAnswerLine(votesText);
  const std::vector<std::string_view> fields = splitFields(line, ',');
  if (line.empty() || fields.size() < 3)
    return;
  const std::string wanted = std::to_string(optionNumber);
  std::string_view rest = fields[2];
  bool more = true;
  for (int& flag : included) {
    const std::size_t end = rest.find(';');
    const bool match = more && rest.substr(0, end) == wanted;
    more = more && end != std::string_view::npos;
    rest = more ? rest.substr(end + 1) : std::string_view();
    if (anyGroup)
      flag = match ? 1 : flag;
    else
      flag = match && flag != 0 ? 1 : 0;
  }
}

bool SetDemographicFilter(int groupIndex, std::string& caption) {
  glo.demographicFilterOn = false;
  if (groupIndex == -1)
    return false;
  DemographicInfo* chosen = nullptr;
  for (DemographicInfo& question : glo.demographicQuestions) {
    for (DemographicInfoGroup& group : question.groups) group.selected = false;
    if (question.isDefault)
      chosen = &question;
  }
  if (chosen == nullptr || groupIndex < 0 || groupIndex >= static_cast<int>(chosen->groups.size()))
    return false;
  DemographicInfoGroup& group = chosen->groups[static_cast<std::size_t>(groupIndex)];
  group.selected = true;
  caption = glo.demographicFilterText = group.groupName;
  glo.demographicFilterOn = true;
  return true;
}

std::string filterCaption(bool graphFilter) {
  if (graphFilter)
    return "Filtered View";
  if (!glo.demographicFilterOn || glo.demographicFilterText.empty())
    return "";
  return "Filtered using: " + displayForm(glo.demographicFilterText);
}

FilterLine showFilter(double areaLeft, double areaTop, double areaWidth, double areaHeight, double width,
                      double height, bool graphFilter) {
  FilterLine line;
  line.caption = filterCaption(graphFilter);
  line.visible = !line.caption.empty();
  line.colour = glo.runByGraphLabelColour;
  const std::string& corner = glo.opt_StatsBoxPosition;
  const bool right = corner == "TR" || corner == "BR", bottom = corner == "BL" || corner == "BR";
  line.align = right ? host::Align::right : host::Align::left;
  line.left = right ? areaLeft + areaWidth - kCornerDistance - width : areaLeft + kCornerDistance;
  line.top = bottom ? areaTop + areaHeight - kCornerDistance - height : areaTop + kCornerDistance;
  return line;
}

}  // namespace qrn

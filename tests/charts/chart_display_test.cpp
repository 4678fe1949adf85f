// Charts by themselves, told in case files: what fills them, how they lie, where their parts stand.
#include "charts/chart_display.h"

#include <map>
#include <optional>
#include <variant>

#include "base/errors.h"
#include "charts/chart_layout.h"
#include "charts/graph_fixture.h"
#include "core/common.h"

namespace qrn::test {
namespace {

class ChartCase : public GraphCase {
 protected:
  ChartCase() {
    glo.risks.assign(1, {});
    on("look", [this](const Words& words) { setLook(words[0], words.rest(1)); });
    // series bar|lying|line
    on("series", [this](const Words& words) {
      chart().AddSeries(words[0] == "bar"     ? SeriesKind::asBar
                        : words[0] == "lying" ? SeriesKind::asHorizBar
                                              : SeriesKind::asLine);
    });
    // points VALUE ...: of the last series
    on("points", [this](const Words& words) {
      const int last = chart().seriesCount() - 1;
      for (const std::string& word : words) chart().SERIES(last).Add(std::stod(word), "", 0xffffff, 7);
    });
    on("texts", [this](const Words& words) { chart().Axis.Bottom.Labels.Item = words; });
    on("text", [this](const Words& words) { tell('"' + GetItemText(words.number(0)) + '"'); });
    // ask FORM [ASSESSMENT [MODE LETTERS]]
    on("ask", [this](const Words& words) {
      request_.form = words[0];
      request_.assessment = words.size() > 1 ? words.number(1) : 1;
      request_.distributionAxisLabels = words.number(2);
      request_.distributionAxisLabelLength = words.number(3);
    });
    on("labelled", [this](const Words& words) {
      for (const char* line : {"ask ", "labels "}) runLine(line + words[0]);
    });
    on("diversity", [this](const Words&) { request_.drawDiversity = true; });
    on("data", [this](const Words& words) { data(words.number(0)); });
    // labels [data] [TITLE]
    on("labels", [this](const Words& words) {
      AddAxisLabels(request_, chart(), 0, words.word(0) == "data", words.word(1));
      std::string all;
      for (const std::string& text : chart().Axis.Bottom.Labels.Item)
        all += (all.empty() ? "" : " | ") + text;
      tell(all);
    });
    on("title", [this](const Words& words) {
      ResizeChartTitle(request_, chart(), words.rest(0));
      tell(chart().Header.Font.size);
    });
    on("pages", [this](const Words&) {
      tell(chart().pageCount(), ", from ", chart().firstPoint(), ", ", chart().pointsOnPage());
    });
    on("size", [this](const Words& words) {
      request_.width = words.number(0) * kTwipsPerPixel;
      request_.height = words.number(1) * kTwipsPerPixel;
    });
    on("back", [this](const Words&) { thereAndBack(); });
    on("nowhere", [this](const Words&) {
      for (const int n : {-1, chart().seriesCount()}) EXPECT_THROW(chart().SERIES(n), HostError);
    });
  }
  TChart& chart() { return model_.chart; }
  const host::Surface& surface() override {
    return lowered_.lower(chart(), request_.width, request_.height, "");
  }
  void setLook(const std::string& name, const std::string& text) {
    using Member = std::variant<bool*, int*, double*, std::string*, std::vector<std::string>*>;
    ChartAxis &left = chart().Axis.Left, &bottom = chart().Axis.Bottom;
    ChartSeries none, &series = chart().seriesCount() > 0 ? chart().SERIES(0) : none;
    const std::map<std::string, Member> members{
        {"Sub", &chart().Header.Sub},
        {"Header", &chart().Header.Visible},
        {"Text", &chart().Header.Text},
        {"Message", &chart().Message},
        {"page", &chart().Page.MaxPointsPerPage},
        {"current", &chart().Page.Current},
        {"scaleLast", &chart().Page.ScaleLastPage},
        {"selected", &chart().selectedPoint},
        {"highlight", &chart().highlightColour},
        {"left.title", &left.title},
        {"left.low", &left.Minimum},
        {"left.high", &left.Maximum},
        {"left.step", &left.Increment},
        {"left.auto", &left.Automatic},
        {"left.autoLow", &left.AutomaticMinimum},
        {"left.autoHigh", &left.AutomaticMaximum},
        {"left.inverted", &left.Inverted},
        {"left.grid", &left.GridPen.Visible},
        {"left.texts", &left.Labels.Item},
        {"bottom.title", &bottom.title},
        {"bottom.axis", &bottom.AxisPen.Visible},
        {"bottom.keyed", &bottom.Labels.Keyed},
        {"bottom.lines", &bottom.Labels.MultiLine},
        {"series.active", &series.Active},
        {"series.clear", &series.Transparent},
        {"series.gradient", &series.Gradient},
        {"series.start", &series.StartColor},
        {"series.pen", &series.BarPen.Width},
        {"series.ink", &series.BarPen.Color},
        {"series.percent", &series.inPercent},
        {"series.format", &series.ValueFormat},
    };
    std::visit([&](auto* member) { give(*member, text); }, members.at(name));
  }
  static void give(bool& member, const std::string& text) { member = text == "yes"; }
  static void give(std::string& member, const std::string& text) { member = text; }
  static void give(std::vector<std::string>& member, const std::string& text) { member = Words(text); }
  template <class Number>
  static void give(Number& member, const std::string& text) {
    member = static_cast<Number>(std::stod(text));
  }
  // The points of AddData and what the value axis makes of them.
  void data(int kind) {
    if (chart().seriesCount() == 0)
      chart().AddSeries(SeriesKind::asBar);
    AddData(request_, model_, kind, 0);
    const ChartAxis& axis = chart().Axis.Left;
    std::string all;
    for (const ChartPoint& point : chart().SERIES(0).points) all += formatPlaces(point.value, 0) + " ";
    tell(all, "and ", glo.abstainCount, ", axis ", axis.Automatic ? "by itself" : "", axis.Minimum, " to ",
         axis.Maximum, " by ", axis.Increment, ", rows ", model_.rows.size());
  }
  // Values and points lead to places and back.
  void thereAndBack() {
    surface();
    const ChartGeometry& geometry = lowered_.geometry();
    for (const double value : {chart().Axis.Left.Minimum, 2.5, chart().Axis.Left.Maximum})
      EXPECT_NEAR(geometry.valueAt(geometry.placeOf(value)), value, 1e-9);
    std::string all;
    for (int point = chart().firstPoint(); point <= chart().firstPoint() + chart().pointsOnPage(); ++point) {
      const ChartArea slot = geometry.slotOf(point);
      const std::optional<int> at = geometry.pointAt(slot.left + slot.width / 2, slot.top + slot.height / 2);
      all += at ? std::to_string(*at) + " " : "- ";
    }
    tell(all, geometry.pointAt(geometry.plot.left - 1, geometry.plot.top + 1) ? "beside" : "not beside");
  }

 private:
  ChartModel model_;
  ChartRequest request_{.form = "xyVoteRuntime", .width = 15360, .height = 11520};
  ChartSurface lowered_;
};

const bool kRegistered = registerCases<ChartCase>("ChartCase", QUORIN_CASES "/charts.case");

}  // namespace
}  // namespace qrn::test

// The chart as a retained model: series, axes, labels, header and page under the names the result forms use.
// Nothing here knows a pixel; chart_layout.h lowers a chart to positioned elements.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/records.h"
#include "host/surface.h"

namespace qrn {

enum class SeriesKind { asBar, asHorizBar, asLine };

struct ChartPen {
  bool Visible = true;
  std::int32_t Color = 0xffffff;
  int Width = 1;  // pixels at 1024x768
  bool operator==(const ChartPen&) const = default;
};

struct ChartPoint {
  double value = 0;
  std::string label;
  std::int32_t colour = 0xffffff;
  int item = host::kNoItem;  // ID of the item that it stands for
  bool operator==(const ChartPoint&) const = default;
};

struct ChartSeries {
  SeriesKind kind = SeriesKind::asBar;
  std::vector<ChartPoint> points;
  bool Active = true;
  bool Transparent = false;
  bool marks = true;                 // values are written at the points
  std::string ValueFormat = "0.00";  // "0", "0.00", "0.00%": how marks are written
  std::string PercentFormat = "0%";  // marks of a series shown in percent of its sum
  bool inPercent = false;
  ChartPen BarPen;
  bool Gradient = false;  // bars run from StartColor at the axis to their own colour
  std::int32_t StartColor = 0xffffff;

  void Add(double value, std::string label, std::int32_t colour, int item = host::kNoItem) {
    points.push_back({value, std::move(label), colour, item});
  }
  void Delete(int index);
  bool operator==(const ChartSeries&) const = default;
};

struct ChartLabels {
  std::vector<std::string> Item;
  bool MultiLine = false;
  bool Visible = true;
  FontRecord Font{"Arial", 12, true, false, false, false, 0xffffff};
  bool Keyed = false;  // "identifier: text"; where the text has no room the identifier stands alone
  int Separation = 0;  // percent of a slot kept free between two labels
  void Clear() { Item.clear(); }
  bool operator==(const ChartLabels&) const = default;
};

struct ChartAxis {
  bool Automatic = true, AutomaticMaximum = true, AutomaticMinimum = true;
  double Maximum = 0, Minimum = 0;
  double Increment = 0;  // 0: the layout picks a round step
  ChartPen AxisPen, GridPen;
  bool Inverted = false;
  ChartLabels Labels;
  std::string title;
  bool operator==(const ChartAxis&) const = default;
};

struct ChartHeader {
  std::vector<std::string> Text;  // one entry a line
  std::string Sub;                // below it: what else there is to know
  FontRecord Font{"Arial", 18, true, false, false, false, 0xffffff};
  bool Visible = true;
  bool operator==(const ChartHeader&) const = default;
};

struct ChartPage {
  int MaxPointsPerPage = 0;    // 0: all points on one page
  bool ScaleLastPage = false;  // false: the bars of a short last page keep their width
  int Current = 1;             // 1-based
  bool operator==(const ChartPage&) const = default;
};

struct ChartAxes {
  ChartAxis Bottom, Left;
  bool operator==(const ChartAxes&) const = default;
};

struct TChart {
  ChartAxes Axis;
  ChartHeader Header;
  ChartPage Page;
  double MarginTop = 4, MarginRight = 5, MarginBottom = 4, MarginLeft = 5;  // percent of the chart's area
  int selectedPoint = -1;             // highlighted bar of series 0, -1 for none
  std::int32_t highlightColour = -1;  // -1: the theme's
  std::string Message;                // said in place of bars when there are none

  int AddSeries(SeriesKind kind);  // returns its number
  int seriesCount() const { return static_cast<int>(series_.size()); }
  // Throws HostError (program) outside 0 to seriesCount() - 1.
  ChartSeries& SERIES(int n);
  const ChartSeries& SERIES(int n) const;

  int pointCount() const;  // of the longest active series
  int pageCount() const;   // at least 1
  // First point of the page shown and the number of points on it.
  int firstPoint() const;
  int pointsOnPage() const;
  bool operator==(const TChart&) const = default;

 private:
  std::vector<ChartSeries> series_;
};

}  // namespace qrn

#include "charts/tchart.h"

#include <algorithm>
#include <utility>

#include "base/errors.h"

namespace qrn {

void ChartSeries::Delete(int index) {
  points.erase(points.begin() + index);
}

int TChart::AddSeries(SeriesKind kind) {
  ChartSeries& added = series_.emplace_back();
  added.kind = kind;
  return seriesCount() - 1;
}

ChartSeries& TChart::SERIES(int n) {
  return const_cast<ChartSeries&>(std::as_const(*this).SERIES(n));
}

const ChartSeries& TChart::SERIES(int n) const {
  if (n < 0 || n >= seriesCount())
    throw HostError(Fault::program, 9, "The chart has no series " + std::to_string(n));
  return series_[static_cast<std::size_t>(n)];
}

int TChart::pointCount() const {
  std::size_t most = 0;
  for (const ChartSeries& series : series_)
    if (series.Active)
      most = std::max(most, series.points.size());
  return static_cast<int>(most);
}

int TChart::pageCount() const {
  const int points = pointCount();
  if (Page.MaxPointsPerPage <= 0 || points <= Page.MaxPointsPerPage)
    return 1;
  return (points + Page.MaxPointsPerPage - 1) / Page.MaxPointsPerPage;
}

int TChart::firstPoint() const {
  const int pages = pageCount();
  return pages == 1 ? 0 : (std::clamp(Page.Current, 1, pages) - 1) * Page.MaxPointsPerPage;
}

int TChart::pointsOnPage() const {
  const int rest = pointCount() - firstPoint();
  return pageCount() == 1 ? rest : std::min(rest, Page.MaxPointsPerPage);
}

}  // namespace qrn

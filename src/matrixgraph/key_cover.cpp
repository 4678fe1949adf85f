#include "matrixgraph/key_cover.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_map>

namespace qrn {

namespace {

using host::Element;

constexpr double kMayTouch = 0.9;  // of the distance at which two keys would just meet

struct Standing {
  PlottedItem* item;
  std::size_t pair;
  const Element* key;
};

double middleX(const Element& e) {
  return e.left + e.width / 2;
}

double middleY(const Element& e) {
  return e.top + e.height / 2;
}

bool meets(const Element& a, const Element& b) {
  const double across = std::fabs(middleX(a) - middleX(b)), up = std::fabs(middleY(a) - middleY(b));
  const double width = (a.width + b.width) / 2 * kMayTouch, height = (a.height + b.height) / 2 * kMayTouch;
  if (a.width == a.height && b.width == b.height)
    return std::hypot(across, up) < width;
  return across < width && up < height;
}

// Keys that are seen, by the cells that their middles lie in; a cell is as large as the largest key.
class Places {
 public:
  explicit Places(const std::vector<Standing>& standing) {
    for (const Standing& one : standing) {
      width_ = std::max(width_, one.key->width);
      height_ = std::max(height_, one.key->height);
    }
  }
  void add(std::size_t front, const Element& key) {
    cells_[cellOf(middleX(key), middleY(key))].push_back({front, &key});
  }
  struct Met {
    bool any = false;
    int over = -1;  // number of the key that lies over the middle, -1 for none
  };
  Met meeting(const Element& key) const {
    Met met;
    for (const int dx : {-1, 0, 1})
      for (const int dy : {-1, 0, 1}) {
        const auto cell = cells_.find(cellOf(middleX(key) + dx * width_, middleY(key) + dy * height_));
        if (cell == cells_.end())
          continue;
        for (const auto& [front, other] : cell->second) {
          met.any = met.any || meets(key, *other);
          if (std::fabs(middleX(key) - middleX(*other)) < other->width / 2 &&
              std::fabs(middleY(key) - middleY(*other)) < other->height / 2)
            met.over = static_cast<int>(front);
        }
      }
    return met;
  }

 private:
  std::int64_t cellOf(double x, double y) const {
    return (static_cast<std::int64_t>(std::floor(x / width_)) << 32) ^
           (static_cast<std::int64_t>(std::floor(y / height_)) & 0xffffffff);
  }
  double width_ = 1, height_ = 1;
  std::unordered_map<std::int64_t, std::vector<std::pair<std::size_t, const Element*>>> cells_;
};

// Keys that could be seen, those first that are to be seen before others.
std::vector<Standing> standingKeys(const host::Surface& surface, std::vector<PlottedItem>& plotted,
                                   const GraphView& view) {
  std::vector<Standing> ranks[3];
  for (std::size_t p = kPairs; p-- > 0;) {
    const GraphArray& keys = graphArray(Part::key, static_cast<int>(p));
    const host::ElementArray* elements = surface.find(keys.name);
    if (elements == nullptr)
      continue;
    for (PlottedItem& item : plotted) {
      item.covered[p] = false;
      if (isShown(keys, item, view))
        ranks[item.id == view.selectedItem ? 0
              : item.top                   ? 1
                                           : 2]
            .push_back({&item, p, elements->find(item.n[p])});
    }
  }
  for (const std::vector<Standing>& later : {ranks[1], ranks[2]})
    ranks[0].insert(ranks[0].end(), later.begin(), later.end());
  return std::move(ranks[0]);
}

}  // namespace

std::vector<KeyInFront> coverKeys(const host::Surface& surface, std::vector<PlottedItem>& plotted,
                                  const GraphView& view) {
  std::vector<KeyInFront> fronts;
  const std::vector<Standing> standing = standingKeys(surface, plotted, view);
  Places places(standing);
  for (const Standing& one : standing) {
    const Places::Met met = places.meeting(*one.key);
    one.item->covered[one.pair] = met.any;
    if (met.over >= 0)
      fronts[static_cast<std::size_t>(met.over)].behind.push_back(one.key->caption);
    if (met.any)
      continue;
    places.add(fronts.size(), *one.key);
    fronts.push_back({one.key, {}});
  }
  std::erase_if(fronts, [](const KeyInFront& front) { return front.behind.empty(); });
  return fronts;
}

}  // namespace qrn

// How a matrix model looks by its view: what is seen, what stands out, what is only hinted at. Nothing is
// built anew but the few numbers of hidden keys.
#include <algorithm>

#include "matrixgraph/key_cover.h"
#include "matrixgraph/matrix_model.h"
#include "matrixgraph/plot_items.h"

namespace qrn {

namespace {

using host::Element;

constexpr double kFaint = 0.26;       // of the way from the ground, for dots beside a single item
constexpr double kPickedRing = 0.16;  // of the type's size
constexpr double kLine = 1.5, kPickedLine = 3;
constexpr double kRise = 0.45;         // of its height, of the number beside a key
constexpr std::size_t kMostTold = 80;  // among more keys that hide others the numbers are noise
constexpr const char* kBehind = "keysBehind";

bool meets(const Element& a, const Element& b) {
  return a.left < b.right() && b.left < a.right() && a.top < b.bottom() && b.top < a.bottom();
}

void resize(Element& key, double factor) {
  const double x = key.left + key.width / 2, y = key.top + key.height / 2;
  key.width *= factor;
  key.height *= factor;
  key.left = x - key.width / 2;
  key.top = y - key.height / 2;
  key.cornerRadius *= factor;
  key.font.size *= factor;
}

}  // namespace

void MatrixModel::show(const GraphView& view) {
  undress();
  GraphView all = view;
  all.zoomedItem = host::kNoItem;
  const std::vector<KeyInFront> fronts =
      view.covering ? coverKeys(canvas.surface, plotted, all) : std::vector<KeyInFront>{};
  const bool zoomed = view.zoomedItem != host::kNoItem;
  for (const GraphArray& array : kGraphArrays) {
    host::ElementArray* elements = canvas.surface.find(array.name);
    if (elements == nullptr)
      continue;
    const std::int32_t disc = discs[static_cast<std::size_t>(array.pair)];
    const auto seen = [&](std::int32_t colour) {
      return zoomed ? blend(canvas.theme().ground, colour, kFaint) : colour;
    };
    const std::int32_t dot = seen(disc), topDot = seen(canvas.theme().highlight);
    for (const PlottedItem& item : plotted)
      if (Element* element = elements->find(item.n[static_cast<std::size_t>(array.pair)])) {
        element->visible = isShown(array, item, view);
        if (array.part == Part::dot)
          element->backColour = item.top && array.pair == lastPair ? topDot : dot;
      }
  }
  canvas.surface.remove(kBehind);
  if (!zoomed)
    tellBehind(fronts);
  dress(view);
}

// "+2" beside a key that hides two others, where that meets no other key.
void MatrixModel::tellBehind(const std::vector<KeyInFront>& fronts) {
  if (fronts.size() > kMostTold)
    return;
  std::vector<const Element*> taken;
  for (const Part part : {Part::key, Part::dot})
    for (const int pair : kAllPairs)
      if (const host::ElementArray* elements = canvas.surface.find(graphArray(part, pair).name))
        for (const Element& one : *elements)
          if (one.visible)
            taken.push_back(&one);
  int n = 0;
  for (const KeyInFront& front : fronts) {
    Element label = makeLabel("+" + std::to_string(front.behind.size()), canvas.captionFont);
    for (const std::string& caption : front.behind)
      label.toolTip += (label.toolTip.empty() ? "" : ", ") + caption;
    label.colour = canvas.theme().quiet;
    label.width = textWidth(label.caption, label.font);
    label.height = lineHeight(label.font);
    label.top = front.key->top - label.height * kRise;
    const auto free = [&](double left) {
      label.left = left;
      return left > 0 && label.right() < canvas.width() &&
             std::none_of(taken.begin(), taken.end(),
                          [&](const Element* other) { return meets(label, *other); });
    };
    if (free(front.key->right() + canvas.px(1)) || free(front.key->left - label.width - canvas.px(1)))
      taken.push_back(&canvas.surface.add(host::Layer::captions, kBehind, ++n, std::move(label)));
  }
}

void MatrixModel::grow(const GraphView& view) {
  undress();
  dress(view);
}

void MatrixModel::undress() {
  for (const Dressed& one : dressed_) {
    Element& element = *one.element;
    const double x = element.left + element.width / 2, y = element.top + element.height / 2;
    element = one.plain;
    if (element.kind == Element::Kind::line)
      continue;
    element.left = x - element.width / 2;  // it may have been dragged
    element.top = y - element.height / 2;
  }
  dressed_.clear();
}

void MatrixModel::dress(const GraphView& view) {
  const int picked = view.zoomedItem != host::kNoItem ? view.zoomedItem : view.selectedItem;
  const auto item =
      std::find_if(plotted.begin(), plotted.end(), [&](const PlottedItem& one) { return one.id == picked; });
  if (item == plotted.end())
    return;
  const look::Theme& theme = canvas.theme();
  const bool zoomed = picked == view.zoomedItem;
  for (const GraphArray& array : kGraphArrays) {
    host::ElementArray* elements = canvas.surface.find(array.name);
    Element* element =
        elements != nullptr ? elements->find(item->n[static_cast<std::size_t>(array.pair)]) : nullptr;
    if (element == nullptr ||
        (array.part != Part::key && array.part != Part::line && array.part != Part::blob))
      continue;
    dressed_.push_back({element, *element});
    if (array.part == Part::key) {
      element->ringColour = theme.text;
      element->ringWidth = kPickedRing / 2 * element->font.size * kTwipsPerPoint;
      if (zoomed) {
        dressKey(*element, theme.highlight);
        element->ringColour = theme.ground;
        resize(*element, view.growth);
      }
    } else if (zoomed) {
      element->colour = element->backColour = theme.highlight;
      if (array.part == Part::line)
        element->borderWidth = canvas.px(kPickedLine);
    }
  }
}

}  // namespace qrn

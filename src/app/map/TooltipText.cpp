#include "app/map/TooltipText.h"

#include "app/model/KindWord.h"
#include "scan/Format.h"
#include "treemap/NodeTint.h"

namespace tessaly {
namespace {

constexpr const char* separator = " · ";

std::string factsOf(const TreemapRect& rect) {
  std::string facts(KindWord::of(rect.node));
  if (rect.parentSize > 0) {
    const double share =
        static_cast<double>(rect.node.size()) / static_cast<double>(rect.parentSize) * 100;
    facts += separator + Format::fixed(share, 1) + "% of parent";
  }
  if (rect.node.isDir()) {
    facts += separator + std::to_string(rect.node.children().size()) + " items";
  }
  return facts;
}

}  // namespace

TooltipText TooltipText::of(const TreemapRect& rect, bool heatmap, double now) {
  TooltipText text;
  text.name = rect.node.name();
  text.size = Format::bytes(rect.node.size());
  text.facts = factsOf(rect);
  if (heatmap) text.age = NodeTint::ageLabel(rect.node.mtime(), now);
  text.path = rect.node.path();
  return text;
}

}  // namespace tessaly

#include "treemap/TreemapSelect.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>

namespace tessaly::TreemapSelect {

namespace {

constexpr double smallestBand = 4;

struct Touched {
  const TreemapRect* rect;
  std::string path;
};

}  // namespace

std::vector<DiskNode> hits(const std::vector<TreemapRect>& rects, const Rect& marquee) {
  if (marquee.width < smallestBand || marquee.height < smallestBand) return {};

  std::vector<Touched> touched;
  for (const TreemapRect& rect : rects) {
    if (overlap(rect.rect(), marquee)) touched.push_back({&rect, rect.node.path()});
  }

  // The paths of all folders above touched tiles: the part of each touched path before each of its
  // slashes.
  std::unordered_set<std::string_view> above;
  for (const Touched& tile : touched) {
    const std::string_view path = tile.path;
    for (std::size_t slash = path.find('/'); slash != std::string_view::npos;
         slash = path.find('/', slash + 1)) {
      above.insert(path.substr(0, slash));
    }
  }

  std::vector<DiskNode> nodes;
  for (const Touched& tile : touched) {
    if (!above.contains(tile.path)) nodes.push_back(tile.rect->node);
  }
  return nodes;
}

}  // namespace tessaly::TreemapSelect

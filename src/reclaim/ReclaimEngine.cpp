#include "reclaim/ReclaimEngine.h"

#include <algorithm>
#include <utility>

namespace tessaly::ReclaimEngine {

const std::vector<ReclaimPlace>& catalog(const Places& places) {
  return places.reclaimPlaces;
}

std::string pathOf(const ReclaimPlace& place, const std::string& home) {
  if (!place.elsewhere.empty()) return place.elsewhere;
  return home + (home.ends_with('/') ? "" : "/") + place.relativePath;
}

std::vector<ReclaimItem> probe(const std::string& home, const Measure& measure,
                               const std::vector<ReclaimPlace>& places) {
  std::vector<ReclaimItem> items;
  for (const ReclaimPlace& place : places) {
    std::string path = pathOf(place, home);
    const std::int64_t bytes = measure(path);
    if (bytes <= 0) continue;
    items.push_back({.id = place.id,
                     .label = place.label,
                     .relativePath = place.relativePath,
                     .note = place.note,
                     .caution = place.caution,
                     .path = std::move(path),
                     .bytes = bytes});
  }
  std::stable_sort(items.begin(), items.end(),
                   [](const ReclaimItem& a, const ReclaimItem& b) { return a.bytes > b.bytes; });
  return items;
}

bool isTrashAction(std::string_view id, const std::vector<ReclaimPlace>& places) {
  const auto place = std::find_if(places.begin(), places.end(),
                                  [&](const ReclaimPlace& each) { return each.id == id; });
  return place != places.end() && place->trashAction;
}

}  // namespace tessaly::ReclaimEngine

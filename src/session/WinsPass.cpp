#include "session/WinsPass.h"

#include <utility>

#include "platform/FileAccess.h"

namespace tessaly::WinsPass {

namespace {

bool hasEntries(const Engines& engines, const std::string& folder) {
  return engines.hasEntries ? engines.hasEntries(folder)
                            : FileAccess::ofMachine().hasEntries(folder);
}

}  // namespace

Found run(const Engines& engines, const Request& request, const IsCancelled& isCancelled) {
  Found found;
  if (engines.analyse) found.finds = engines.analyse(request.home, request.tree, isCancelled);
  const auto sight = [&](Trash::Location location) {
    const auto identity =
        engines.identify ? engines.identify(location.place) : FileIdentity::of(location.place);
    if (!identity) return false;
    std::string path = location.original;
    found.sightings.insert_or_assign(
        std::move(path), Sighting{.location = std::move(location), .identity = identity.value()});
    return true;
  };
  const auto sightInTree = [&](const std::string& path) {
    // The path of a tree has no links, and one that is there now must not be followed.
    if (!isCancelled() && !sight({.original = path, .place = path})) found.gone.insert(path);
  };
  const auto sightOutside = [&](const std::string& path) {
    if (!isCancelled()) sight(Trash::locate(path));
  };
  for (const TreeWin& win : found.finds.treeWins) sightInTree(win.path);
  for (const std::string& path : request.emptyFolders) {
    if (!isCancelled() && hasEntries(engines, path)) {
      found.filled.insert(path);
    } else {
      sightInTree(path);
    }
  }
  for (const ReclaimItem& item : found.finds.probes) sightOutside(item.path);
  for (const LargeOldFile& file : found.finds.largeOld) sightOutside(file.path);
  return found;
}

}  // namespace tessaly::WinsPass

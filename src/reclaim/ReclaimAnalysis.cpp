#include "reclaim/ReclaimAnalysis.h"

#include <utility>

#include "reclaim/ReclaimMeasure.h"

namespace tessaly::ReclaimAnalysis {

namespace {

// Starts no tool once the work is cancelled.
Shell::Run guarded(Shell::Run run, const IsCancelled& isCancelled) {
  if (!run) return Shell::cancellable(isCancelled);
  return [run = std::move(run), isCancelled](const std::string& path,
                                             const std::vector<std::string>& args, double timeout) {
    if (isCancelled && isCancelled()) {
      throw ToolError(ToolError::ownDomain, ToolError::givenUp, "given up: " + path);
    }
    return run(path, args, timeout);
  };
}

}  // namespace

Finds run(const std::string& home, const std::optional<DiskNode>& tree, const Services& services,
          const IsCancelled& isCancelled) {
  const Shell::Run tools = guarded(services.run, isCancelled);
  const auto isGivenUp = [&] { return isCancelled && isCancelled(); };
  const ReclaimEngine::Measure onMachine = ReclaimMeasure::onMachine(
      home, {.files = services.files, .volumes = services.volumes, .run = tools}, services.places);
  const auto measure = [&](const std::string& path) {
    return isGivenUp() ? std::int64_t{0} : onMachine(path);
  };

  Finds finds;
  finds.probes = ReclaimEngine::probe(home, measure, services.places);
  if (tree && !isGivenUp()) finds.treeWins = BigWinsEngine::findTreeWins(*tree);
  finds.largeOld =
      BigWinsEngine::largeOld(home, tools, {.files = services.files, .now = services.now});
  finds.snapshots = BigWinsEngine::localSnapshotCount(tools);
  return finds;
}

}  // namespace tessaly::ReclaimAnalysis

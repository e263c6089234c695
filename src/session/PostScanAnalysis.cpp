#include "session/PostScanAnalysis.h"

#include <memory>
#include <utility>

#include <QPointer>

#include "session/ScanSession.h"

namespace tessaly {

std::string PostScanAnalysis::idleScope(const std::string& root, const std::string& homeDirectory) {
  return root.starts_with(homeDirectory) ? homeDirectory : root;
}

void ScanSession::analyse(const DiskNode& result, const std::string& root) {
  PostScanAnalysis::FinishedScan scan{
      .tree = result,
      .root = root,
      .idleScope = PostScanAnalysis::idleScope(root, services_.homeDirectory)};
  auto pass = [&dispatch = services_.dispatch, session = QPointer(this), ended = sessionEnded_,
               stages = services_.analysis, scan = std::move(scan)] {
    std::vector<PostScanAnalysis::Publish> found;
    for (const PostScanAnalysis::Stage& stage : stages) {
      if (ended->isSet()) return;
      found.push_back(stage(scan));
    }
    // Not asked whether a newer scan has finished meanwhile: the lists of the one that ends last
    // stand until the next.
    dispatch.async(Dispatch::Queue::main, [session, found = std::move(found)] {
      for (const PostScanAnalysis::Publish& publish : found) {
        if (session && publish) publish(*session);
      }
    });
  };
  services_.dispatch.async(Dispatch::Queue::utility, std::move(pass));
}

}  // namespace tessaly

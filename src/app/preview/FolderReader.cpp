#include "app/preview/FolderReader.h"

#include <algorithm>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "app/preview/PreviewFailures.h"
#include "platform/UnicodeText.h"

namespace tessaly::FolderReader {

namespace {

struct Candidate {
  bool isFile = false;
  std::string lowercased;
  std::string name;

  bool operator<(const Candidate& other) const {
    return std::tie(isFile, lowercased, name) <
           std::tie(other.isFile, other.lowercased, other.name);
  }
};

// The smallest elements of all that are added, up to a limit.
class Foremost {
 public:
  explicit Foremost(std::size_t room) : room_(room) {}

  void add(Candidate candidate) {
    if (heap_.size() < room_) {
      heap_.push_back(std::move(candidate));
      std::push_heap(heap_.begin(), heap_.end());
    } else if (room_ > 0 && candidate < heap_.front()) {
      std::pop_heap(heap_.begin(), heap_.end());
      heap_.back() = std::move(candidate);
      std::push_heap(heap_.begin(), heap_.end());
    }
  }

  std::vector<Candidate> sorted() && {
    std::sort_heap(heap_.begin(), heap_.end());
    return std::move(heap_);
  }

 private:
  std::size_t room_;
  std::vector<Candidate> heap_;  // the largest first
};

}  // namespace

PreviewBody read(const HeldItem& folder, const PreviewRequest& request) {
  FolderPreview preview;
  Foremost foremost(request.limits.folderItems);
  bool isCancelled = false;
  const Outcome outcome = folder.forEachEntry([&](const HeldItem::Entry& entry) {
    isCancelled = request.isCancelled();
    if (isCancelled) return false;
    ++preview.count;
    foremost.add({.isFile = !entry.isFolder,
                  .lowercased = UnicodeText::lowercased(entry.name),
                  .name = std::string(entry.name)});
    return true;
  });
  if (!outcome) return PreviewFailures::of(outcome.error(), true);

  for (Candidate& candidate : std::move(foremost).sorted()) {
    isCancelled = isCancelled || request.isCancelled();
    if (isCancelled) return FactsOnly{};
    const std::int64_t size = candidate.isFile ? folder.entrySize(candidate.name) : 0;
    preview.items.push_back(
        {.name = std::move(candidate.name), .isDir = !candidate.isFile, .size = size});
  }
  if (isCancelled) return FactsOnly{};
  return preview;
}

}  // namespace tessaly::FolderReader

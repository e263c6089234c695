#include "reclaim/ReclaimMeasure.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

#include "platform/CheckedArithmetic.h"

namespace tessaly::ReclaimMeasure {

namespace {

class Measuring {
 public:
  Measuring(Services services, std::optional<std::string> trash)
      : services_(std::move(services)), trash_(std::move(trash)) {
    if (!services_.run) services_.run = Shell::cancellable({});
  }

  std::int64_t bytesAt(const std::string& path) const {
    return path == trash_ ? bytesInTrash() : bytesOf(path);
  }

 private:
  // du asks first, within a time limit, so the questions after it are asked of a disk that answers.
  std::int64_t bytesOf(const std::string& path) const {
    const std::int64_t bytes = Shell::duBytes(path, services_.run);
    if (bytes <= 0) return 0;
    const bool isFolder = services_.files.kindOf(path) == FileAccess::Kind::directory;
    return isFolder && !services_.files.hasEntries(path) ? 0 : bytes;
  }

  std::int64_t bytesInTrash() const {
    std::vector<CountedTrash> folders;
    add(services_.volumes.trashInHome(), folders);
    if (const Result<std::vector<MountedVolume>> volumes = services_.volumes.list()) {
      for (const MountedVolume& volume : volumes.value()) {
        if (answers(volume)) add(services_.volumes.trashOn(volume), folders);
      }
    }
    std::int64_t sum = 0;
    for (const CountedTrash& folder : folders) {
      for (const std::string& path : folder.contents) sum = checkedAdd(sum, bytesOf(path));
    }
    return sum;
  }

  // A call to a volume that does not answer could not be given up; a tool can.
  bool answers(const MountedVolume& volume) const {
    constexpr double timeout = 6;
    try {
      services_.run("/bin/df", {"-k", volume.path}, timeout);
      return true;
    } catch (...) {
      return false;
    }
  }

  // A folder may be visible on several mounts.
  static void add(const Result<std::vector<CountedTrash>>& found,
                  std::vector<CountedTrash>& folders) {
    if (!found) return;
    for (const CountedTrash& trash : found.value()) {
      const bool isKnown =
          std::any_of(folders.begin(), folders.end(), [&](const CountedTrash& other) {
            return other.device == trash.device && other.inode == trash.inode;
          });
      if (!isKnown) folders.push_back(trash);
    }
  }

  Services services_;
  std::optional<std::string> trash_;
};

}  // namespace

ReclaimEngine::Measure onMachine(const std::string& home, Services services,
                                 const std::vector<ReclaimPlace>& places) {
  const auto trash = std::find_if(places.begin(), places.end(),
                                  [](const ReclaimPlace& place) { return place.trashAction; });
  return [measuring =
              Measuring(std::move(services),
                        trash != places.end() ? std::optional(ReclaimEngine::pathOf(*trash, home))
                                              : std::nullopt)](const std::string& path) {
    return measuring.bytesAt(path);
  };
}

}  // namespace tessaly::ReclaimMeasure

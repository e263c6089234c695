#include "system/MountFigures.h"

#include <set>
#include <string>
#include <utility>

#include "system/DiskSpace.h"
#include "system/VolumeCalls.h"
#include "system/VolumeEngine.h"

namespace tessaly {

namespace {

template <class Answer>
using End = std::function<void(std::optional<Answer>)>;
using Mounts = std::vector<MountedVolume>;
using Trashes = Result<std::vector<CountedTrash>>;

// Keys of the questions that do not belong to a listed volume. Real paths begin with "/".
const VolumeCalls::Volume startup{0, "/"};
const VolumeCalls::Volume mountTable{0, "list of mounts"};
const VolumeCalls::Volume homeTrash{0, "Trash of the home"};

VolumeCalls::Volume keyOf(const MountedVolume& volume) {
  return {volume.id, volume.path};
}

// The start-up volume, as the list of mounts has it.
std::optional<MountedVolume> listedStartup(MountedVolumes& volumes) {
  const Result<Mounts> mounts = volumes.list();
  if (!mounts) return std::nullopt;
  for (const MountedVolume& volume : mounts.value()) {
    if (volume.path == startup.path) return volume;
  }
  return std::nullopt;
}

DiskUsage startupUsage(const MountFigures::VolumeUsage& volumeUsage, MountedVolumes& volumes) {
  std::optional<DiskUsage> usage = volumeUsage();
  const std::optional<MountedVolume> startupVolume = listedStartup(volumes);
  if (!startupVolume) return usage.value_or(DiskUsage());
  if (!usage) {
    const Result<VolumeFigures> figures = volumes.figures(*startupVolume);
    if (!figures) return {};
    usage = VolumeEngine::usageOf(figures.value());
  }
  usage->fileSystem = startupVolume->type;
  return *std::move(usage);
}

// The callers that wait for one figure. One query runs at a time; calls during it share the answer
// of the next one.
template <class Answer>
class Requests {
 public:
  using Take = MachineFigures::Take<Answer>;

  void ask(Take take, const std::function<void()>& look) {
    (isUnderWay_ ? waiting_ : asking_).push_back(std::move(take));
    if (isUnderWay_) return;
    isUnderWay_ = true;
    look();
  }

  void answer(const std::optional<Answer>& answer, const std::function<void()>& look) {
    const std::vector<Take> answered = std::exchange(asking_, std::exchange(waiting_, {}));
    isUnderWay_ = !asking_.empty();
    if (isUnderWay_) look();
    if (!answer) return;
    for (const Take& take : answered) take(*answer);
  }

 private:
  bool isUnderWay_ = false;
  std::vector<Take> asking_;
  std::vector<Take> waiting_;
};

// Collects one answer per index, and is done when the last one has come or was given up.
template <class Answer>
class Gathering {
 public:
  using Gathered = std::function<void(std::vector<std::optional<Answer>>)>;

  Gathering(std::size_t count, Gathered gathered)
      : answers_(count), left_(count), gathered_(std::move(gathered)) {}

  void take(std::size_t place, std::optional<Answer> answer) {
    answers_[place] = std::move(answer);
    if (--left_ == 0) gathered_(std::move(answers_));
  }

 private:
  std::vector<std::optional<Answer>> answers_;
  std::size_t left_;
  Gathered gathered_;
};

// The sum of all Trash folders; absent if none of `answers` is present. A Trash that is found on
// several mounts counts once.
std::optional<std::int64_t> itemsIn(const std::vector<std::optional<Trashes>>& answers) {
  bool isAnswered = false;
  std::int64_t items = 0;
  std::set<std::pair<std::uint64_t, std::uint64_t>> known;
  for (const std::optional<Trashes>& answer : answers) {
    if (!answer) continue;
    isAnswered = true;
    if (!answer->ok()) continue;
    for (const CountedTrash& trash : answer->value()) {
      if (known.emplace(trash.device, trash.inode).second) items += trash.items;
    }
  }
  return isAnswered ? std::optional(items) : std::nullopt;
}

}  // namespace

class MountFigures::Looks : public std::enable_shared_from_this<Looks> {
 public:
  Looks(Services services, const Places& places)
      : volumes_(std::move(services.volumes)),
        volumeUsage_(std::move(services.volumeUsage)),
        places_(places),
        calls_(services.dispatch) {
    if (!volumeUsage_) volumeUsage_ = [] { return DiskSpace::volumeUsage(); };
  }

  void askDisk(Take<DiskUsage> take) {
    disk_.ask(std::move(take), [this] { lookAtDisk(); });
  }

  void askVolumes(Take<std::vector<VolumeMount>> take) {
    list_.ask(std::move(take), [this] { lookAtVolumes(); });
  }

  void askTrashCount(Take<std::int64_t> take) {
    trash_.ask(std::move(take), [this] { lookAtTrash(); });
  }

 private:
  void lookAtDisk() {
    calls_.ask<DiskUsage>(
        startup, diskPatience,
        [volumes = volumes_, volumeUsage = volumeUsage_] {
          return startupUsage(volumeUsage, *volumes);
        },
        home<DiskUsage>([](Looks& looks, const std::optional<DiskUsage>& usage) {
          looks.disk_.answer(usage, [&looks] { looks.lookAtDisk(); });
        }));
  }

  void lookAtVolumes() {
    listMounts(home<Mounts>([](Looks& looks, const std::optional<Mounts>& mounts) {
      if (mounts) {
        looks.lookAtEach(VolumeEngine::listed(*mounts, looks.places_));
      } else {
        looks.takeVolumes(std::nullopt);
      }
    }));
  }

  void lookAtEach(std::vector<VolumeEngine::Listed> listed) {
    using Figures = Result<VolumeFigures>;
    const auto volumes =
        std::make_shared<const std::vector<VolumeEngine::Listed>>(std::move(listed));
    const auto gathered = [self = weak_from_this(), volumes](auto answers) {
      const auto looks = self.lock();
      if (!looks) return;
      std::vector<VolumeMount> all;
      for (std::size_t i = 0; i < answers.size(); ++i) {
        const std::optional<Figures>& answer = answers[i];
        std::optional<VolumeMount> volume =
            !answer        ? VolumeEngine::withoutFigures((*volumes)[i])
            : answer->ok() ? VolumeEngine::withFigures((*volumes)[i], answer->value())
                           : std::nullopt;
        if (volume) all.push_back(*std::move(volume));
      }
      looks->takeVolumes(std::move(all));
    };
    if (volumes->empty()) {
      takeVolumes(std::vector<VolumeMount>());
      return;
    }
    const auto gathering = std::make_shared<Gathering<Figures>>(volumes->size(), gathered);
    for (std::size_t i = 0; i < volumes->size(); ++i) {
      const MountedVolume& mount = (*volumes)[i].mount;
      calls_.ask<Figures>(
          keyOf(mount), volumePatience, [all = volumes_, mount] { return all->figures(mount); },
          [gathering, i](std::optional<Figures> answer) { gathering->take(i, std::move(answer)); });
    }
  }

  void takeVolumes(const std::optional<std::vector<VolumeMount>>& all) {
    list_.answer(all, [this] { lookAtVolumes(); });
  }

  void lookAtTrash() {
    listMounts(home<Mounts>([](Looks& looks, const std::optional<Mounts>& mounts) {
      looks.countTrash(mounts.value_or(Mounts()));
    }));
  }

  void countTrash(const Mounts& mounts) {
    const auto gathered = [self = weak_from_this()](const auto& answers) {
      const auto looks = self.lock();
      if (!looks) return;
      looks->trash_.answer(itemsIn(answers), [&looks] { looks->lookAtTrash(); });
    };
    const auto gathering = std::make_shared<Gathering<Trashes>>(mounts.size() + 1, gathered);
    const auto to = [&](std::size_t place) {
      return [gathering, place](std::optional<Trashes> answer) {
        gathering->take(place, std::move(answer));
      };
    };
    calls_.ask<Trashes>(
        homeTrash, trashPatience, [all = volumes_] { return all->trashInHome(); },
        to(mounts.size()));
    for (std::size_t i = 0; i < mounts.size(); ++i) {
      calls_.ask<Trashes>(
          keyOf(mounts[i]), trashPatience,
          [all = volumes_, mount = mounts[i]] { return all->trashOn(mount); }, to(i));
    }
  }

  // Passes an empty list if the mounts cannot be read.
  void listMounts(End<Mounts> end) {
    calls_.ask<Mounts>(
        mountTable, volumePatience,
        [volumes = volumes_] {
          Result<Mounts> mounts = volumes->list();
          return mounts ? std::move(mounts).value() : Mounts();
        },
        std::move(end));
  }

  // Calls `use` with the answer, unless this object is destroyed by then.
  template <class Answer, class Use>
  End<Answer> home(Use use) {
    return [self = weak_from_this(), use](const std::optional<Answer>& answer) {
      if (const auto looks = self.lock()) use(*looks, answer);
    };
  }

  const std::shared_ptr<MountedVolumes> volumes_;
  VolumeUsage volumeUsage_;
  const Places& places_;
  VolumeCalls calls_;
  Requests<DiskUsage> disk_;
  Requests<std::vector<VolumeMount>> list_;
  Requests<std::int64_t> trash_;
};

MountFigures::MountFigures(Services services, const Places& places)
    : looks_(std::make_shared<Looks>(std::move(services), places)) {}

MountFigures::~MountFigures() = default;

void MountFigures::askDisk(Take<DiskUsage> take) {
  looks_->askDisk(std::move(take));
}

void MountFigures::askVolumes(Take<std::vector<VolumeMount>> take) {
  looks_->askVolumes(std::move(take));
}

void MountFigures::askTrashCount(Take<std::int64_t> take) {
  looks_->askTrashCount(std::move(take));
}

}  // namespace tessaly

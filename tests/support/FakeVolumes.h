// File systems that tests define. Like the machine of a HandSteppedDispatch, only one thread may
// change them at a time.
#pragma once

#include <cerrno>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/MountedVolumes.h"

namespace tessaly {

class FakeVolumes final : public MountedVolumes {
 public:
  // Mounts a separate disk; if `figures` is absent, its figures cannot be read.
  void mount(const std::string& path, std::optional<VolumeFigures> figures,
             std::vector<CountedTrash> trash = {}, const std::string& type = {}) {
    const std::uint64_t id = ++lastId_;
    mounted.push_back({id, path, "8:" + std::to_string(id), "/", type});
    if (figures) figuresOf[path] = *figures;
    trashOf[path] = std::move(trash);
  }

  Result<std::vector<MountedVolume>> list() override {
    ++lists;
    if (!hasList) return SystemError::fromErrno(ENOENT, "mounts");
    return mounted;
  }

  Result<VolumeFigures> figures(const MountedVolume& volume) override {
    asked.push_back(volume.path);
    const auto found = figuresOf.find(volume.path);
    if (found == figuresOf.end()) return SystemError::fromErrno(EACCES, volume.path);
    return found->second;
  }

  Result<std::vector<CountedTrash>> trashInHome() override {
    if (!homeTrash) return SystemError::fromErrno(EACCES, "home");
    return *homeTrash;
  }

  Result<std::vector<CountedTrash>> trashOn(const MountedVolume& volume) override {
    return trashOf[volume.path];
  }

  bool hasList = true;
  std::vector<MountedVolume> mounted;
  std::map<std::string, VolumeFigures> figuresOf;
  std::map<std::string, std::vector<CountedTrash>> trashOf;
  std::optional<std::vector<CountedTrash>> homeTrash = std::vector<CountedTrash>();
  std::vector<std::string> asked;  // the paths whose figures were asked for
  int lists = 0;

 private:
  std::uint64_t lastId_ = 0;
};

}  // namespace tessaly

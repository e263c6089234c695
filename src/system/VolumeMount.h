// A mounted volume. A plain value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace tessaly {

struct VolumeMount {
  std::string name;        // display name
  std::string path;        // mount point, as bytes; identifies the volume in lists
  std::int64_t total = 0;  // capacity in bytes
  double usedPercent = 0;  // as df prints it, 0 to 100

  friend bool operator==(const VolumeMount&, const VolumeMount&) = default;
};

}  // namespace tessaly

template <>
struct std::hash<tessaly::VolumeMount> {
  std::size_t operator()(const tessaly::VolumeMount& volume) const {
    const std::hash<std::string> textHash;
    return ((textHash(volume.path) * 31 + textHash(volume.name)) * 31 +
            std::hash<std::int64_t>{}(volume.total)) *
               31 +
           std::hash<double>{}(volume.usedPercent);
  }
};

// One finished scan of a root, as the history keeps it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace tessaly {

struct HistoryPoint {
  double at = 0;           // end of the scan, seconds since 1970
  std::int64_t bytes = 0;  // size of the root
  std::int64_t files = 0;  // file nodes of its tree, which are fewer than the files on disk

  // Identity in lists: the time.
  double id() const { return at; }

  friend bool operator==(const HistoryPoint&, const HistoryPoint&) = default;
};

}  // namespace tessaly

template <>
struct std::hash<tessaly::HistoryPoint> {
  std::size_t operator()(const tessaly::HistoryPoint& point) const noexcept {
    const std::hash<std::int64_t> countHash;
    return (std::hash<double>{}(point.at) * 31 + countHash(point.bytes)) * 31 +
           countHash(point.files);
  }
};

// A folder of a scanned tree that tools make and can make again, such as "node_modules". Identified
// by its path. Names and paths are bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace tessaly {

struct TreeWin {
  std::string path = {};
  std::string name = {};
  std::int64_t bytes = 0;     // on disk, as the scan counted it
  std::string category = {};  // the heading under which it is shown
  std::string note = {};      // what becomes of it, for the user

  friend bool operator==(const TreeWin&, const TreeWin&) = default;
};

}  // namespace tessaly

template <>
struct std::hash<tessaly::TreeWin> {
  std::size_t operator()(const tessaly::TreeWin& win) const {
    return std::hash<std::string>{}(win.path) * 31 + std::hash<std::int64_t>{}(win.bytes);
  }
};

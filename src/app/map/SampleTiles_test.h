// Nodes, tiles and colours for the tests of the map.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "app/map/CanvasTile.h"
#include "app/map/PixelCanvas.h"
#include "scan/DiskNode.h"

namespace tessaly {

inline DiskNode fileNode(const std::string& path, std::int64_t size,
                         FileKind kind = FileKind::other,
                         std::optional<double> mtime = std::nullopt) {
  return DiskNode({.name = path.substr(path.rfind('/') + 1),
                   .path = path,
                   .size = size,
                   .isDir = false,
                   .kind = kind,
                   .mtime = mtime});
}

inline DiskNode folderNode(const std::string& path, std::int64_t size,
                           const std::vector<DiskNode>& children = {}) {
  return DiskNode({.name = path.substr(path.rfind('/') + 1),
                   .path = path,
                   .size = size,
                   .isDir = true,
                   .kind = FileKind::folder,
                   .mtime = {}},
                  children);
}

// The remainder of the children of `parent`.
inline DiskNode remainderNode(const std::string& parent, const std::string& name,
                              std::int64_t size) {
  return DiskNode({.name = name,
                   .path = parent + "/__rest__",
                   .size = size,
                   .isDir = false,
                   .kind = FileKind::other,
                   .mtime = {}});
}

inline TreemapRect tileRect(const DiskNode& node, double width, double height) {
  TreemapRect rect{node};
  rect.width = width;
  rect.height = height;
  return rect;
}

// A pixel of a canvas as text, "#aarrggbb", premultiplied.
inline std::string pixelAt(const PixelCanvas& canvas, int x, int y) {
  const auto pixel = reinterpret_cast<const std::uint32_t*>(
      canvas.image().constScanLine(y - canvas.area().y()))[x - canvas.area().x()];
  return QStringLiteral("#%1").arg(pixel, 8, 16, QLatin1Char('0')).toStdString();
}

// The largest difference between two pixels in any channel.
inline int difference(std::uint32_t a, std::uint32_t b) {
  int largest = 0;
  for (int shift = 0; shift < 32; shift += 8) {
    const int one = static_cast<int>((a >> shift) & 0xFFu);
    const int other = static_cast<int>((b >> shift) & 0xFFu);
    largest = std::max(largest, std::abs(one - other));
  }
  return largest;
}

}  // namespace tessaly

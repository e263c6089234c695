// How much of a file is read for its preview. A plain value.
#pragma once

#include <cstddef>
#include <cstdint>

#include <QSize>

namespace tessaly {

struct PreviewLimits {
  QSize pixels = {1600, 1600};  // no image is larger, and no page wider; in device pixels
  double seconds = 10;          // for a reader of foreign formats to answer in
  std::int64_t imageFileBytes = 256 * 1024 * 1024;  // of an image's file
  std::int64_t svgFileBytes = 8 * 1024 * 1024;
  std::int64_t documentBytes = 1024 * 1024 * 1024;  // of a document's file
  std::int64_t mediaBytes = 256 * 1024 * 1024;      // read of sound or film, whatever its length
  std::int64_t pageBytes = 128 * 1024 * 1024;       // of rendered pages together
  int pages = 20;
  std::size_t textBytes = 256 * 1024;  // of the file
  std::size_t textLines = 10'000;
  std::size_t lineLength = 2'000;  // UTF-16 units; a longer line is continued on the next
  std::size_t folderItems = 300;

  // No page is taller than so many times the width.
  static constexpr int tallestPage = 4;
};

}  // namespace tessaly

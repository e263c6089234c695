// How much of a file is read for a preview. A plain value.
#pragma once

#include <cstddef>
#include <cstdint>

#include <QSize>

namespace tessaly {

struct PreviewLimits {
  QSize pixels = {1600, 1600};  // the largest image and the widest page, in device pixels
  double seconds = 10;          // the time for a reader of foreign formats
  std::int64_t imageFileBytes = 256 * 1024 * 1024;  // of an image file
  std::int64_t svgFileBytes = 8 * 1024 * 1024;
  std::int64_t documentBytes = 1024 * 1024 * 1024;  // of a document
  std::int64_t mediaBytes = 256 * 1024 * 1024;      // read from sound or film of any length
  std::int64_t pageBytes = 128 * 1024 * 1024;       // of all rendered pages together
  int pages = 20;
  std::size_t textBytes = 256 * 1024;  // of the file
  std::size_t textLines = 10'000;
  std::size_t lineLength = 2'000;  // UTF-16 units; a longer line continues on the next
  std::size_t folderItems = 300;

  // The greatest height of a page, in widths.
  static constexpr int tallestPage = 4;
};

}  // namespace tessaly

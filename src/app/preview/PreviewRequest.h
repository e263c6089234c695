// How much of a file is read for its preview, and what a reader is told besides the file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <variant>

#include <QSize>

#include "app/preview/PreviewContent.h"

namespace tessaly {

struct PreviewLimits {
  QSize pixels = {1600, 1600};  // no image is larger, and no page wider; in device pixels
  std::int64_t imageFileBytes = 256 * 1024 * 1024;  // of an image's file
  std::int64_t svgFileBytes = 8 * 1024 * 1024;
  std::int64_t documentBytes = 1024 * 1024 * 1024;  // of a document's file
  double documentSeconds = 20;                      // to render a document in
  std::int64_t mediaBytes = 256 * 1024 * 1024;      // read of sound or film, whatever its length
  std::int64_t pageBytes = 128 * 1024 * 1024;       // of rendered pages together
  int pages = 20;
  std::size_t textBytes = 256 * 1024;  // of the file
  std::size_t textLines = 10'000;
  std::size_t lineLength = 2'000;  // UTF-16 units; a longer line is continued on the next
  std::size_t folderItems = 300;
};

struct PreviewRequest {
  PreviewLimits limits;
  // Polled on the reading thread; empty for never.
  std::function<bool()> cancelled;

  bool isCancelled() const { return cancelled && cancelled(); }
};

// What a reader makes of a file. A cancelled one gives FactsOnly.
using PreviewBody = decltype(PreviewContent::body);

}  // namespace tessaly

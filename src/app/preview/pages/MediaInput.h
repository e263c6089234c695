// Sound or film opened by the library that knows containers, from a file that is already open. It
// reads this file alone: what a container names elsewhere, on the disk or in a network, is refused.
// Nothing is decoded.
//
// Made, used and destroyed on one thread, within the lifetime of the file.
#pragma once

#include <cstdint>
#include <memory>

#include "app/preview/pages/ItemDevice.h"
#include "platform/HeldItem.h"

struct AVFormatContext;

namespace tessaly {

class MediaInput {
 public:
  // Whether the library is sure that the beginning of a file is that of a container it knows.
  static bool isKnown(const HeldItem& file);

  // Opens it and looks at its streams, for which it reads `mostBytes` at most.
  MediaInput(const HeldItem& file, std::int64_t mostBytes);
  ~MediaInput();
  MediaInput(const MediaInput&) = delete;
  MediaInput& operator=(const MediaInput&) = delete;

  // Null for what could not be opened, or has no streams.
  const AVFormatContext* format() const;

 private:
  struct Library;

  ItemDevice device_;
  std::unique_ptr<Library> library_;
};

}  // namespace tessaly

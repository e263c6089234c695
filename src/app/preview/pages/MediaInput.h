// Opens sound or film with the container library, from a file that is already open. Only this file
// is read: references of a container to other files or to a network are refused. Nothing is
// decoded.
//
// Use it on one thread only, within the lifetime of the file.
#pragma once

#include <cstdint>
#include <memory>

#include "app/preview/pages/ItemDevice.h"
#include "platform/HeldItem.h"

struct AVFormatContext;

namespace tessaly {

class MediaInput {
 public:
  // Whether the library recognises the beginning of the file as a container with certainty.
  static bool isKnown(const HeldItem& file);

  // Opens the container and examines its streams, reading at most `mostBytes`.
  MediaInput(const HeldItem& file, std::int64_t mostBytes);
  ~MediaInput();
  MediaInput(const MediaInput&) = delete;
  MediaInput& operator=(const MediaInput&) = delete;

  // Null if it could not be opened or has no streams.
  const AVFormatContext* format() const;

 private:
  struct Library;

  ItemDevice device_;
  std::unique_ptr<Library> library_;
};

}  // namespace tessaly

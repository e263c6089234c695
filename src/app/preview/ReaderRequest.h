// The request to the program that reads foreign formats: one file, and its assumed kind. The
// program reads one request from its standard input, writes one ReaderAnswer to its standard
// output, and ends.
//
// Both ends are built together and run on one machine, so values are sent in their memory layout.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "app/preview/PreviewLimits.h"
#include "platform/HeldItem.h"

namespace tessaly {

struct ReaderRequest {
  static constexpr const char* program = "tessaly-pages";

  enum class Wanted : std::uint32_t {
    image,       // of `format`, by its signature
    imageIfOne,  // of `format`, which has no signature, so it may be something else
    document,    // PDF
    media,       // sound or film, by its signature
    mediaIfOne,  // the same, without a signature
  };

  Wanted wanted = Wanted::image;
  std::string format;           // Qt's name for the format of an image; empty otherwise
  std::string path;             // bytes, absolute; must not be a link
  HeldItem::Identity identity;  // of the requested file; no other one is read
  PreviewLimits limits;

  // The greatest size of a request.
  static constexpr std::size_t mostBytes = std::size_t{1} << 20;

  // Absent if it would be too long.
  std::optional<std::string> encoded() const;

  // The size of a request with this beginning; absent while that is too short, and 0 if it is
  // invalid.
  static std::optional<std::size_t> lengthOf(std::string_view beginning);
  // Absent if it is invalid.
  static std::optional<ReaderRequest> decoded(std::string_view bytes);
};

}  // namespace tessaly

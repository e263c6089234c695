// What the program that reads foreign formats is asked: one file, and what it should be. It reads
// one request from its standard input, writes one ReaderAnswer to its standard output, and ends.
//
// Both ends are built together and run on one machine, so values go over as they are in memory.
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
  // The name of the program.
  static constexpr const char* program = "tessaly-pages";

  enum class Wanted : std::uint32_t {
    image,       // of `format`, as its signature tells
    imageIfOne,  // of `format`, if it is one, which has no signature
    document,    // PDF
    media,       // sound or film, as its signature tells
    mediaIfOne,  // the same, if it is
  };

  Wanted wanted = Wanted::image;
  std::string format;           // of an image, as Qt names it; empty for anything else
  std::string path;             // bytes, absolute; what stands there is no link
  HeldItem::Identity identity;  // of the file that is meant, and no other is read
  PreviewLimits limits;

  // No request is longer.
  static constexpr std::size_t mostBytes = std::size_t{1} << 20;

  // None where it would be too long.
  std::optional<std::string> encoded() const;

  // How many bytes a request has, by its beginning; none while that is too short to tell, and 0 for
  // what is no request.
  static std::optional<std::size_t> lengthOf(std::string_view beginning);
  // None for what is no request.
  static std::optional<ReaderRequest> decoded(std::string_view bytes);
};

}  // namespace tessaly

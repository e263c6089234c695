// An image, read no larger than it can be shown. Of an animated one the first frame, of an icon the
// largest.
//
// The process has a QGuiApplication, which the letters in an SVG drawing need. What an SVG drawing
// is made of is read under the limits, but not how long it takes to draw.
#pragma once

#include <string_view>

#include "app/preview/PreviewLimits.h"
#include "app/preview/pages/Decoded.h"
#include "platform/HeldItem.h"

namespace tessaly::ImageReader {

// Bounds the memory for one image at its full size, where its reader cannot scale while it reads.
// It holds for the whole process, which calls it before the first image is read.
void limitAllocation();

// Whether the file is an image of this format that can be shown here, as far as its beginning
// tells. `format` as Qt names it. For the formats without a signature.
bool canRead(const HeldItem& file, std::string_view format, const PreviewLimits& limits);

// `nothing` for a format that cannot be shown here. `file` has its content open.
Decoded read(const HeldItem& file, std::string_view format, const PreviewLimits& limits);

}  // namespace tessaly::ImageReader

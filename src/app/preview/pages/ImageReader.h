// Reads an image, no larger than it can be shown: the first frame of an animation, the largest
// image of an icon.
//
// Needs a QGuiApplication for the texts in SVG drawings. The limits cover parsing an SVG drawing,
// but not the time to draw it.
#pragma once

#include <string_view>

#include "app/preview/PreviewLimits.h"
#include "app/preview/pages/Decoded.h"
#include "platform/HeldItem.h"

namespace tessaly::ImageReader {

// Limits the memory for one image at its full size, for decoders that cannot scale while reading.
// Applies to the process; call it before the first image.
void limitAllocation();

// Whether the beginning of the file is that of an image in this format, by its Qt name, and the
// format can be shown. For formats without a signature.
bool canRead(const HeldItem& file, std::string_view format, const PreviewLimits& limits);

// The verdict is `nothing` for a format that cannot be shown. The content of `file` is open.
Decoded read(const HeldItem& file, std::string_view format, const PreviewLimits& limits);

}  // namespace tessaly::ImageReader

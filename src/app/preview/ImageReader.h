// An image, read no larger than it can be shown. Of an animated one the first frame, of an icon the
// largest.
//
// On the calling thread, which should be a worker. The process has a QGuiApplication, which the
// letters in an SVG drawing need. What an SVG drawing is made of is read under the limits, but not
// how long it takes to draw.
#pragma once

#include <string_view>

#include "app/preview/PreviewRequest.h"
#include "platform/HeldItem.h"

namespace tessaly::ImageReader {

// Whether the file is an image of this format that can be shown here, as far as its beginning
// tells. `format` as Qt names it. For the formats without a signature.
bool canRead(const HeldItem& file, std::string_view format, const PreviewRequest& request);

// FactsOnly for a format that cannot be shown here. `file` has its content open.
PreviewBody read(const HeldItem& file, std::string_view format, const PreviewRequest& request);

}  // namespace tessaly::ImageReader

// The facts of sound or film, in the order of display, with names and values for the user.
//
// Pure, safe from any thread.
#pragma once

#include "app/preview/PreviewContent.h"

struct AVFormatContext;

namespace tessaly::MediaFacts {

// For an opened container with known streams. Unknown facts have no row.
MediaPreview of(const AVFormatContext& format);

}  // namespace tessaly::MediaFacts

// What there is to say of sound or film, in the order in which it is shown. Names are for the user,
// as are the values.
//
// Pure, safe from any thread.
#pragma once

#include "app/preview/PreviewContent.h"

struct AVFormatContext;

namespace tessaly::MediaFacts {

// Of an opened container whose streams are known. Whatever it does not tell has no row.
MediaPreview of(const AVFormatContext& format);

}  // namespace tessaly::MediaFacts

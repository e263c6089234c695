// Sound and film by the facts in their containers, without decoding.
#pragma once

#include "app/preview/PreviewLimits.h"
#include "app/preview/pages/Decoded.h"
#include "platform/HeldItem.h"

namespace tessaly::MediaReader {

// For a file with a signature of sound or film: damaged if the content does not match. The content
// of `file` is open.
Decoded read(const HeldItem& file, const PreviewLimits& limits);

// For a file without a signature, which some sound has not. `other` if it is something else.
Decoded readUnsigned(const HeldItem& file, const PreviewLimits& limits);

}  // namespace tessaly::MediaReader

// Sound and film by what their containers tell, without decoding.
#pragma once

#include "app/preview/PreviewLimits.h"
#include "app/preview/pages/Decoded.h"
#include "platform/HeldItem.h"

namespace tessaly::MediaReader {

// Of a file whose signature is that of sound or film: damaged where it is not what it says.
// `file` has its content open.
Decoded read(const HeldItem& file, const PreviewLimits& limits);

// Of a file without one: some sound has none. `other` where it is something else.
Decoded readUnsigned(const HeldItem& file, const PreviewLimits& limits);

}  // namespace tessaly::MediaReader

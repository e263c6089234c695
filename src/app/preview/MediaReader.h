// Sound and film by what their containers tell, without decoding.
//
// On the calling thread, which should be a worker.
#pragma once

#include <optional>

#include "app/preview/PreviewRequest.h"
#include "platform/HeldItem.h"

namespace tessaly::MediaReader {

// Of a file whose signature is that of sound or film: a failure where it is not what it says.
// `file` has its content open.
PreviewBody read(const HeldItem& file, const PreviewRequest& request);

// Of a file without one: some sound has none. None where it is something else.
std::optional<PreviewBody> readUnsigned(const HeldItem& file, const PreviewRequest& request);

}  // namespace tessaly::MediaReader

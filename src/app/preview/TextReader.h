// The beginning of a file as text. However long the file is, no more of it is read than is shown.
//
// On the calling thread, which should be a worker.
#pragma once

#include <optional>

#include "app/preview/PreviewRequest.h"
#include "platform/HeldItem.h"

namespace tessaly::TextReader {

// None when the file is no text. `file` has its content open. An empty file is an empty text.
std::optional<PreviewBody> read(const HeldItem& file, const PreviewRequest& request);

}  // namespace tessaly::TextReader

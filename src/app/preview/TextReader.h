// Reads the beginning of a file as text. No more is read than shown, whatever the length of the
// file.
//
// Runs on the calling thread, which should be a worker.
#pragma once

#include <optional>

#include "app/preview/PreviewRequest.h"
#include "platform/HeldItem.h"

namespace tessaly::TextReader {

// Absent if the file is not a text. The content of `file` is open. An empty file is an empty text.
std::optional<PreviewBody> read(const HeldItem& file, const PreviewRequest& request);

}  // namespace tessaly::TextReader

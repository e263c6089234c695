// What stands directly in a folder. Whatever its size, no more than the items to be listed are held
// in memory.
//
// On the calling thread, which should be a worker: a folder of a million items takes a while.
#pragma once

#include "app/preview/PreviewRequest.h"
#include "platform/HeldItem.h"

namespace tessaly::FolderReader {

// Folders first, then by name without regard to case, then by its bytes.
PreviewBody read(const HeldItem& folder, const PreviewRequest& request);

}  // namespace tessaly::FolderReader

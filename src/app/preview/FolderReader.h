// Lists the direct contents of a folder. Whatever its size, only the items to list are kept in
// memory.
//
// Runs on the calling thread, which should be a worker: a folder with a million items takes a
// while.
#pragma once

#include "app/preview/PreviewRequest.h"
#include "platform/HeldItem.h"

namespace tessaly::FolderReader {

// Folders first, then by name ignoring case, then by the bytes of the name.
PreviewBody read(const HeldItem& folder, const PreviewRequest& request);

}  // namespace tessaly::FolderReader

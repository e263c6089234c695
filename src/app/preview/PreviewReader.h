// Reads what a preview shows of any file. The content decides how, never the name alone.
//
// Text and folders are read here, foreign formats by a separate program. Only files and folders are
// opened, so that pipes and devices neither block the call nor notice it. A file system that does
// not answer blocks it.
#pragma once

#include <string>

#include "app/preview/PreviewContent.h"
#include "app/preview/PreviewRequest.h"
#include "app/preview/ReaderProgram.h"

namespace tessaly::PreviewReader {

// `path` is absolute; its bytes need not be UTF-8. Blocks, so call it on a worker thread; any
// number of calls may run at once. If the request is cancelled, the call returns soon with
// FactsOnly, which must be dropped.
PreviewContent read(const std::string& path, const PreviewRequest& request, ReaderProgram& reader);

}  // namespace tessaly::PreviewReader

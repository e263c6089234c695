// Reads what a preview shows of a file, whatever it is. What the file holds is found out from its
// content, never from its name alone.
//
// Text and folders are read here, foreign formats by a program beside this one. Nothing is opened
// but files and folders, so no pipe or device holds the call up or notices it. A file system that
// does not answer does hold it up.
#pragma once

#include <string>

#include "app/preview/PreviewContent.h"
#include "app/preview/PreviewRequest.h"
#include "app/preview/ReaderProgram.h"

namespace tessaly::PreviewReader {

// `path` is absolute, its bytes need not be UTF-8. Blocks, so it belongs on a worker thread; any
// number of threads may be in it at once. When the request is cancelled the call returns soon, and
// its content is FactsOnly, to be dropped.
PreviewContent read(const std::string& path, const PreviewRequest& request, ReaderProgram& reader);

}  // namespace tessaly::PreviewReader

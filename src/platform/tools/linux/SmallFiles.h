// Reads files and folders that anyone may have put there, without waiting for one that never
// answers.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/FileDescriptor.h"

namespace tessaly::tools {

// A folder inside the open folder `parent`; no descriptor if `name` is anything else, also a link.
FileDescriptor folderIn(int parent, const std::string& name);

// The folder at `path`, links followed.
FileDescriptor folderAt(const std::string& path);

// Names in an open folder in no order, the first `most` of them.
std::vector<std::string> namesIn(const FileDescriptor& folder, std::size_t most);

// The content of a regular file of at most `most` bytes. With a link as its last component, `path`
// is followed only if `followsLink`.
std::optional<std::string> smallFile(int parent, const std::string& path, std::size_t most,
                                     bool followsLink = false);

}  // namespace tessaly::tools

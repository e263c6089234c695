// The word for a kind of item.
#pragma once

#include <string_view>

#include "scan/DiskNode.h"
#include "scan/FileKind.h"

namespace tessaly::KindWord {

std::string_view of(FileKind kind);

// A directory is a folder whatever its kind, also an application that is a directory.
std::string_view of(const DiskNode& node);

}  // namespace tessaly::KindWord

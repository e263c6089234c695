// What a kind of item is called where a person reads it.
#pragma once

#include <string_view>

#include "scan/DiskNode.h"
#include "scan/FileKind.h"

namespace tessaly::KindWord {

std::string_view of(FileKind kind);

// A directory is a folder whatever its kind, so that an application that is a directory is one.
std::string_view of(const DiskNode& node);

}  // namespace tessaly::KindWord

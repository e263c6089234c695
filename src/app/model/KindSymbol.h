// The name of the symbol for a kind of item.
#pragma once

#include <string_view>

#include "scan/DiskNode.h"
#include "scan/FileKind.h"

namespace tessaly::KindSymbol {

std::string_view of(FileKind kind);

// A directory is a folder whatever its kind.
std::string_view of(const DiskNode& node);

}  // namespace tessaly::KindSymbol

// The files that stand for items in the cloud without a copy on this disk.
//
// Safe from any thread. Names and paths are bytes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly::CloudPlaceholders {

// Whether a file of this name can be one. Pure.
bool mayBe(std::string_view name);

// The bytes that a copy of the item would take, 0 if unknown. Absent if the file `name` in
// `folder`, an absolute path without links, does not stand for an item, or if it cannot be
// examined.
std::optional<std::int64_t> sizeOf(const std::string& folder, const std::string& name);

}  // namespace tessaly::CloudPlaceholders

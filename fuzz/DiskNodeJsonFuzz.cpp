#include <cstdint>
#include <optional>
#include <string>

#include "Target.h"
#include "scan/DiskNodeJson.h"

namespace tessaly::fuzz {

namespace {

// Checks a decoded tree against the decoder's promises.
void requireSound(const DiskNode& node, int depth, std::int64_t& total) {
  require(depth <= DiskNodeJson::maximumDepth, "no tree is too deep");
  require(node.size() >= 0, "no size is negative");
  require(!__builtin_add_overflow(total, node.size(), &total), "sizes can be added up");
  for (const DiskNode& child : node.children()) requireSound(child, depth + 1, total);
}

void requireRoundTrip(const DiskNode& node) {
  const std::string json = DiskNodeJson::encode(node);
  const std::optional<DiskNode> again = DiskNodeJson::decode(json);
  require(again.has_value(), "a tree that is written can be read");
  require(*again == node, "a tree comes back as it was");
  require(DiskNodeJson::encode(*again) == json, "a tree is written as before");
}

}  // namespace

void tryInput(std::string_view input) {
  if (const std::optional<DiskNode> node = DiskNodeJson::decode(input)) {
    std::int64_t total = 0;
    requireSound(*node, 0, total);
    requireRoundTrip(*node);
  }

  // Uses the input as names, with one child whose path continues its parent's and one whose path
  // does not.
  const std::string bytes(input);
  const DiskNode child({bytes, "/" + bytes + "/" + bytes, 1, false, FileKind::other, 0.5});
  const DiskNode stranger({"a", bytes, 2, false, FileKind::code, std::nullopt});
  const DiskNode tree({bytes, "/" + bytes, 3, true, FileKind::folder, std::nullopt},
                      {child, stranger});
  if (bytes.find('\0') == std::string::npos) {
    requireRoundTrip(tree);
  } else {
    require(!DiskNodeJson::decode(DiskNodeJson::encode(tree)), "no name has a NUL byte");
  }
}

}  // namespace tessaly::fuzz

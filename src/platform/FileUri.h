// File URIs and the paths in them. Pure, safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

// "file://" and the path, with every byte percent-encoded that may not be in the path of a URI. So
// a path that is not UTF-8 keeps its bytes. `path` must be absolute.
std::string fileUri(std::string_view path);

// Whether the text has the scheme of a file URI, in any case, whatever follows.
bool isFileUri(std::string_view text);

struct FileLocation {
  std::string host = {};  // empty for this machine
  std::string path = {};  // absolute
};

// What a file URI names; absent if it is damaged: without an absolute path, or with an escape that
// stands for no byte of a path. A query or a fragment is left out.
std::optional<FileLocation> locationOfFileUri(std::string_view uri);

}  // namespace tessaly

// Derives the kind of an item from its name alone. Pure, safe from any thread.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <unordered_set>

#include "platform/Places.h"
#include "scan/FileKind.h"

namespace tessaly::FileKindRules {

// The extensions of each kind, in lower case and without the dot.
inline constexpr std::array<std::string_view, 6> video = {"mp4", "mov",  "mkv",
                                                          "avi", "webm", "m4v"};
inline constexpr std::array<std::string_view, 9> image = {"jpg",  "jpeg", "png", "gif", "heic",
                                                          "webp", "svg",  "raw", "dng"};
inline constexpr std::array<std::string_view, 11> document = {
    "pdf", "doc", "docx", "pages", "txt", "md", "rtf", "xls", "xlsx", "ppt", "key"};
inline constexpr std::array<std::string_view, 12> code = {
    "js", "ts", "tsx", "py", "swift", "go", "rs", "java", "c", "cpp", "json", "yml"};
inline constexpr std::array<std::string_view, 6> archive = {"zip", "tar", "gz", "rar", "7z", "pkg"};
inline constexpr std::array<std::string_view, 4> disk = {"dmg", "iso", "sparseimage",
                                                         "sparsebundle"};

// Names of the folders whose small files people know one by one, so that each of these files keeps
// a node. Compared exactly.
inline const std::unordered_set<std::string>& important(const Places& places = Places::current()) {
  return places.importantFolders;
}

// A directory is an app or a folder, whatever its extension. A file with the extension of an app is
// an app too.
FileKind classify(std::string_view name, bool isDir);

// The text after the last dot of the last component of `name`, as a view into it. Empty when there
// is no dot, when nothing follows it, and when the component only begins with it.
std::string_view pathExtension(std::string_view name);

}  // namespace tessaly::FileKindRules

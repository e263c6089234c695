// The rules that keep the folders of src/app apart. The files that are directly in it count as the
// folder "main".
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace tessaly::architecture {

using Arrows = std::map<std::string, std::set<std::string>>;

// From each folder to those that it may use. Without cycles.
const Arrows& appArrows();

// The folders that are on a cycle of `arrows`.
std::set<std::string> foldersOnCycles(const Arrows& arrows);

// Includes, imports of QML modules, and links and plugins that follow none of the arrows. One line
// each, "file:line: what", the file relative to `app`.
std::vector<std::string> forbiddenInApp(const std::filesystem::path& app,
                                        const Arrows& arrows = appArrows());

// The arrows that the table of the document draws: rows of "| `folder` | what it holds | `other`, …
// |" below the heading that has "`app`" in it.
Arrows drawnArrows(const std::filesystem::path& document);

}  // namespace tessaly::architecture

// The allowed dependencies between the folders of src/app. The files directly in it count as the
// folder "main".
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace tessaly::architecture {

using Arrows = std::map<std::string, std::set<std::string>>;

// For each folder, the folders that it may use. Has no cycles.
const Arrows& appArrows();

// The folders on a cycle of `arrows`.
std::set<std::string> foldersOnCycles(const Arrows& arrows);

// Includes, imports of QML modules, links and plugins that `arrows` does not allow. One line each,
// "file:line: what", with the file relative to `app`.
std::vector<std::string> forbiddenInApp(const std::filesystem::path& app,
                                        const Arrows& arrows = appArrows());

// The arrows in the table of the document: rows of "| `folder` | contents | `other`, … |" below the
// heading that contains "`app`".
Arrows drawnArrows(const std::filesystem::path& document);

}  // namespace tessaly::architecture

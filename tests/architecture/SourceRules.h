// The rules that keep the rooms of src/ apart, checked against the text of the sources.
//
// Rooms in the order of the arrows: app, session, assistants, reclaim, system, treemap, scan, look,
// platform. A room may include itself and what stands to its right.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tessaly::architecture {

// Includes against the arrows, of Qt where there is no Qt, of one system's implementation anywhere
// but in its own files and tests, or of a file of src/ that is not named by its room. One line
// each, "file:line: what".
std::vector<std::string> forbiddenIncludes(const std::filesystem::path& src);

// Threads and hops between threads made anywhere but in the rooms that own them.
std::vector<std::string> forbiddenThreads(const std::filesystem::path& src);

// Threads started without a thought of their being refused, which would end the program.
std::vector<std::string> unguardedThreads(const std::filesystem::path& src);

// Libraries that decode foreign files, included anywhere but in the program that reads them.
std::vector<std::string> strayDecoders(const std::filesystem::path& src);

// Texts with a word of macOS (support/SystemWords.h) anywhere but in what holds the words of each
// system, its places, the names in saved files, what is said to its tools, and the marks of
// formats.
std::vector<std::string> strayWordsOfMacos(const std::filesystem::path& src);

// Colours that stand in a view as numbers or by a name of their own, not of Theme.
std::vector<std::string> strayColors(const std::filesystem::path& src);

// Source files below `folder` with more than `limit` lines.
std::vector<std::string> overlongFiles(const std::filesystem::path& folder, int limit);

}  // namespace tessaly::architecture

// The rules that keep the rooms of src/ apart, checked against the text of the sources.
//
// Rooms in the order of the arrows: app, session, assistants, reclaim, system, treemap, scan, look,
// platform. A room may include itself and what stands to its right.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tessaly::architecture {

// The rooms in order, each of which may include those after it, and the part of Qt that each may
// use.
struct Rooms {
  std::vector<std::string> order;
  std::map<std::string, std::string> qt;

  bool operator==(const Rooms&) const = default;
};

Rooms knownRooms();

// The rooms that the document draws below its heading of rooms: a line "a → b → c", and rows of
// "| `room` | what it holds | Qt |".
Rooms drawnRooms(const std::filesystem::path& document);

// Includes against the arrows, of Qt in a room without Qt, of one system's implementation outside
// of its own files and tests, or of a file of src/ that is not named by its room between quotation
// marks. One line each, "file:line: what".
std::vector<std::string> forbiddenIncludes(const std::filesystem::path& src);

// Threads and changes of threads outside of the rooms that own them.
std::vector<std::string> forbiddenThreads(const std::filesystem::path& src);

// Threads started without handling their refusal, which would end the program.
std::vector<std::string> unguardedThreads(const std::filesystem::path& src);

// Libraries that decode foreign files, included outside of the program that reads them.
std::vector<std::string> strayDecoders(const std::filesystem::path& src);

// String literals with a word of macOS (support/SystemWords.h), except in the files that hold the
// words and the paths of each system, the names in saved files, the input of its tools, and the
// signatures of formats.
std::vector<std::string> strayWordsOfMacos(const std::filesystem::path& src);

// Colours in a view that are numbers or names of their own instead of Theme's.
std::vector<std::string> strayColors(const std::filesystem::path& src);

// Source files below `folder` with more than `limit` lines.
std::vector<std::string> overlongFiles(const std::filesystem::path& folder, int limit);

}  // namespace tessaly::architecture

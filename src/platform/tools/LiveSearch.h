// Searches a folder by walking it, since there is no index to ask.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/Deadline.h"
#include "platform/Places.h"
#include "platform/StartThread.h"
#include "platform/SystemError.h"
#include "platform/tools/SearchQuery.h"

namespace tessaly::tools::LiveSearch {

struct Settings {
  Places places;
  std::string home;         // resolved
  std::uint32_t owner = 0;  // the user whose files a search by size finds
  Deadline deadline = Deadline::never();
  std::size_t bytes = 0;  // as many paths are found as fill an answer of this length

  // Those of the process's user and system.
  static Settings within(const Deadline& deadline);
};

struct Answer {
  std::vector<std::string> paths;  // absolute, the best first
  bool isLate = false;             // the deadline has passed; there may be more
  bool isCut = false;              // there are more, and they are worse
  int unreadable = 0;              // items that exist and could not be read
  std::string firstUnreadable;     // what happened to the first of them
};

// By size: regular files of `owner`, those with the most bytes on disk first. Left out are folders
// of the system (CriticalPathRules::prefixes). A file with several names is found once, under the
// first of its paths by bytes.
//
// By name: all items, links included, whose name contains the text; case and accents make no
// difference. Names that begin with the text come before others, then shorter paths; what is in a
// folder below the scope whose name begins with a dot comes after everything else.
//
// Both leave out the folders that `places` says no walk enters, and paths that are no UTF-8 or have
// a line feed: they cannot be printed as a line of text. Links are not followed, except in the
// scope's own path.
//
// Blocks until the walk or the deadline has ended, even if a file system does not answer: the walk
// then goes on in a thread of its own until the process ends. Without a second thread, the deadline
// is checked only between items.
Result<Answer> run(const SearchQuery& query, const Settings& settings,
                   const StartThread& startThread = tessaly::startThread);

}  // namespace tessaly::tools::LiveSearch

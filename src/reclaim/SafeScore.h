// How safe it is to remove a large file that has not been used for long: a number from 0 to 100,
// with a label and the reasons in words. It depends on the file's place, its kind and its age.
//
// Safe from any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Places.h"
#include "platform/UserFolders.h"
#include "reclaim/LargeOldFile.h"
#include "reclaim/SafeItem.h"

namespace tessaly::SafeScore {

// By the system's clock, in seconds since 1970.
double presentTime();

// What a score depends on besides the file.
struct Rules {
  const Places& places = Places::current();
  // Folders of the user's own files besides those in `places`: absolute paths.
  std::vector<std::string> personalFolders = UserFolders::ofThisUser();
  double now = presentTime();
};

// `kind` is the name of a kind of file, such as "video". `mtime`, the time of the last change, is
// in seconds since 1970; without one above 0 the age does not count.
SafeItem evaluate(const std::string& path, std::int64_t bytes, const std::string& kind,
                  std::optional<double> mtime, const Rules& rules = {});

// The items of all files, highest score first. Items with the same score keep the order of `files`.
std::vector<SafeItem> rank(const std::vector<LargeOldFile>& files, const Rules& rules = {});

}  // namespace tessaly::SafeScore

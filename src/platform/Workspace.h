// Requests to the desktop: show a file in the file viewer, open it in its default application, or
// open a page of the settings. Paths are absolute, as bytes. No call waits for the other program.
// Main thread only.
#pragma once

#include <string>
#include <vector>

namespace tessaly {

class Workspace {
 public:
  virtual ~Workspace() = default;

  // Opens the file viewer on the folders that contain `paths`, with those items selected. A failure
  // is not reported.
  virtual void reveal(const std::vector<std::string>& paths) = 0;

  // Opens `path` in the application that is the default for it. A failure is not reported.
  virtual void open(const std::string& path) = 0;

  // Opens the settings page with this `url`; false if there is no such page.
  virtual bool openSettings(const std::string& url) = 0;

  // For a program that is about to end: from now on nothing is opened, not even the fallback for a
  // file viewer that does not answer.
  virtual void close() {}
};

}  // namespace tessaly

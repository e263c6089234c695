// The mount points below a root that a walk must not enter, as a tree of path components. Most
// directories have none below them, so a walk carries a null pointer and pays nothing.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::walk {

class ClosedPlaces {
 public:
  // Adds the place at these components below this one.
  void close(const std::vector<std::string>& components);

  // What is known about the entry `name`: null when nothing at or below it is closed.
  const ClosedPlaces* below(std::string_view name) const;

  bool isClosed() const { return closed_; }

 private:
  std::map<std::string, std::unique_ptr<ClosedPlaces>, std::less<>> children_;
  bool closed_ = false;
};

// The automount points and pseudo file systems among the mounts that `mountinfo` (the text of
// /proc/self/mountinfo) lists below `root`. Where several file systems are mounted on one point,
// the last one counts.
ClosedPlaces closedPlacesBelow(std::string_view root, std::string_view mountinfo);

// Whether a file system of this magic number (statfs's f_type) holds no files that take up space.
bool isPseudoFileSystem(long magic);

}  // namespace tessaly::walk

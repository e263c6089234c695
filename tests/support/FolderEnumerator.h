// Enumerates what lies below a folder in pre-order, one item at a time on one thread: the plainest
// thing that does what a disk scan asks of its platform. It works by changing the current
// directory, so that no path is too long; nothing else of the process may rely on that directory
// while an enumeration is under way.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace tessaly {

class FolderEnumerator {
 public:
  // Puts the names found in one folder into the order in which they are to be enumerated.
  using SiblingOrder = std::function<void(std::vector<std::string>& names)>;

  struct Item {
    std::string name;
    std::string path;
    std::optional<struct stat> values;  // of the item itself, never of a link's target
  };

  // `folder` is reached from the current directory; items' paths begin with `path`. Without an
  // order, siblings come as the disk gives them.
  FolderEnumerator(const std::string& folder, std::string path, SiblingOrder order = {});
  ~FolderEnumerator();
  FolderEnumerator(const FolderEnumerator&) = delete;
  FolderEnumerator& operator=(const FolderEnumerator&) = delete;

  // False when the folder cannot be listed.
  bool made() const { return made_; }

  // The next item; absent at the end.
  std::optional<Item> nextObject();

  // Leaves out what lies below the item given last.
  void skipDescendants() { descends_ = false; }

 private:
  struct Frame {
    std::string path;
    std::vector<std::string> names;
    std::size_t next = 0;
    bool entered = false;  // whether the current directory is this folder
  };

  bool enter(const std::string& folder, std::string path);
  void leave();

  SiblingOrder order_;
  std::vector<Frame> frames_;
  std::optional<Item> last_;
  bool descends_ = false;
  bool made_ = false;
};

// The names in `folder`, as the disk gives them; absent when it cannot be listed.
std::optional<std::vector<std::string>> namesIn(const std::string& folder);

}  // namespace tessaly

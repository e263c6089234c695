// Enumerates everything below a folder in pre-order, one item at a time on one thread: the simplest
// code that does what a scan needs from its platform. It changes the current directory, so that no
// path is too long; nothing else in the process may depend on the current directory meanwhile.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace tessaly {

class FolderEnumerator {
 public:
  // Sorts the names of one folder into the order of the enumeration.
  using SiblingOrder = std::function<void(std::vector<std::string>& names)>;

  struct Item {
    std::string name;
    std::string path;
    std::optional<struct stat> values;  // of the item itself, not of a link's target
  };

  // `folder` is relative to the current directory; the paths of items begin with `path`. Without an
  // order, siblings are in the order of the disk.
  FolderEnumerator(const std::string& folder, std::string path, SiblingOrder order = {});
  ~FolderEnumerator();
  FolderEnumerator(const FolderEnumerator&) = delete;
  FolderEnumerator& operator=(const FolderEnumerator&) = delete;

  // False if the folder cannot be listed.
  bool made() const { return made_; }

  // The next item; absent at the end.
  std::optional<Item> nextObject();

  // Skips the contents of the last item.
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

// The names in `folder`, in the order of the disk; absent if it cannot be listed.
std::optional<std::vector<std::string>> namesIn(const std::string& folder);

}  // namespace tessaly

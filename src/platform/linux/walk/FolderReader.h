// Reads one run of entries of an open directory, with their attributes. One reader a thread.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

#include "platform/linux/walk/Batch.h"

namespace tessaly::walk {

class FolderReader {
 public:
  // `stop` ends a run early; the walk is being abandoned then.
  FolderReader(const DirectoryWalk::Decide& decide, const std::string& root,
               const std::atomic<bool>& stop);
  ~FolderReader();

  struct Run {
    bool hasRest = false;  // there may be more entries, from `resume` on
    off_t resume = 0;
    int failure = 0;  // the errno that ended the run early; 0 for none
  };

  // Reads up to 64 KiB of entries of the directory open at `descriptor`. Where there may be more,
  // another thread can go on with them from here on. A failure leaves what came before it.
  Run readEntries(int descriptor);

  // Looks up the attributes of the entries read and puts all of it into `batch`.
  void readAttributes(int descriptor, Batch& batch);

  // The directories among them that are to be entered, in order. The caller owns them.
  std::vector<Folder*>& children() { return children_; }

 private:
  struct Entry;

  void addEntry(int descriptor, Folder& folder, const Entry& entry);
  bool enters(int descriptor, Folder& folder, const Entry& entry, DirectoryWalk::Descent& descent,
              int& failure) const;
  void store(Batch& batch);

  const DirectoryWalk::Decide& decide_;
  const std::string& root_;
  const std::atomic<bool>& stop_;
  std::unique_ptr<char[]> entries_;
  std::size_t filled_ = 0;
  std::vector<Record> records_;
  std::vector<char> names_;
  std::vector<Folder*> children_;
};

// What `descriptor`, an open directory, says of itself. Gives 0, or the errno of a failure.
int readFolderAttributes(int descriptor, Folder& folder);

// The same by name, for a directory that cannot be opened. Gives false where no directory has the
// name any more.
bool readFolderAttributesByName(int parentDescriptor, const char* name, Folder& folder);

// The absolute path of a folder, or of the entry `name` in it.
std::string folderPath(const std::string& root, const Folder& folder);

}  // namespace tessaly::walk

// Reads one portion of an open directory's entries, with their attributes. Each thread has its own
// reader.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/walk/Batch.h"

namespace tessaly::walk {

class FolderReader {
 public:
  // `stop` ends the reading early, when the walk is abandoned.
  FolderReader(const DirectoryWalk::Decide& decide, const DirectoryWalk::Reading& reading,
               const std::string& root, const std::atomic<bool>& stop);
  ~FolderReader();

  struct Run {
    bool hasRest = false;  // there may be more entries, from `resume` on
    off_t resume = 0;
    int failure = 0;  // the errno that ended the reading early; 0 for none
  };

  // Reads up to 64 KiB of entries of the directory open at `descriptor`. If there may be more,
  // another thread can continue with them at once. After a failure the entries before it are kept.
  Run readEntries(int descriptor);

  // Reads the attributes of these entries and stores both in `batch`.
  void readAttributes(int descriptor, Batch& batch);

  // The directories among them that are entered, in order. The caller owns them.
  std::vector<Folder*>& children() { return children_; }

 private:
  struct Entry;

  void addEntry(int descriptor, Folder& folder, const Entry& entry);
  void readItem(int descriptor, DirectoryWalk::Entry& item, Record& record) const;
  void addDirectory(int descriptor, Folder& folder, const Entry& entry, Record& record);
  void add(std::string_view name, Record& record);
  bool enters(int descriptor, Folder& folder, const Entry& entry, DirectoryWalk::Descent& descent,
              int& failure) const;
  void store(Batch& batch);

  const DirectoryWalk::Decide& decide_;
  const DirectoryWalk::Reading& reading_;
  const std::string& root_;
  const std::atomic<bool>& stop_;
  std::unique_ptr<char[]> entries_;
  std::size_t filled_ = 0;
  std::vector<Record> records_;
  std::vector<char> names_;
  std::vector<Folder*> children_;
};

// Reads the attributes of the open directory `descriptor`. Returns 0 or an errno.
int readFolderAttributes(int descriptor, Folder& folder);

// The same by name, for a directory that cannot be opened. False if no directory has the name any
// more.
bool readFolderAttributesByName(int parentDescriptor, const char* name, Folder& folder);

// The absolute path of a folder.
std::string folderPath(const std::string& root, const Folder& folder);

}  // namespace tessaly::walk

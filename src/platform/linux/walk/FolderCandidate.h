// The item in the form in which it is passed to the walk's callbacks.
#pragma once

#include <string>
#include <string_view>

#include "platform/DirectoryWalk.h"
#include "platform/linux/walk/Batch.h"
#include "platform/linux/walk/FolderReader.h"

namespace tessaly::walk {

class FolderCandidate final : public DirectoryWalk::Candidate {
 public:
  // The entry `entryName` of a folder.
  FolderCandidate(const std::string& root, const Folder& parent, std::string_view entryName)
      : root_(root), folder_(parent), isEntry_(true) {
    name = entryName;
    depth = parent.depth + 1;
    mark = parent.mark;
  }

  // The folder itself.
  FolderCandidate(const std::string& root, const Folder& folder)
      : root_(root), folder_(folder), isEntry_(false) {
    name = folder.name;
    depth = folder.depth;
    if (folder.parent != nullptr) mark = folder.parent->mark;
  }

  std::string path() const override {
    std::string text = folderPath(root_, folder_);
    if (!isEntry_) return text;
    if (!text.ends_with('/')) text += '/';
    return text.append(name);
  }

 private:
  const std::string& root_;
  const Folder& folder_;
  const bool isEntry_;
};

}  // namespace tessaly::walk

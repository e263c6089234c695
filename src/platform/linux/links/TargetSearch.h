// Follows a path step by step, as the kernel would, and leaves out the looks that could wait for
// another machine: each step is compared with the list of mounts before it is made.
//
// Use an object on one thread at a time.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/LinkTargets.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/VisibleMounts.h"
#include "platform/linux/links/AvoidedMounts.h"

namespace tessaly {

class TargetSearch {
 public:
  using Target = LinkTargets::Target;

  // `mounts` must outlive the search.
  TargetSearch(const VisibleMounts& mounts, std::function<bool()> isCancelled);

  // Whether there is an item at `text`, seen from the open folder at the absolute `folderPath`,
  // which has no links. `links` are those that were followed already: the kernel follows 40 in all.
  Target find(int folder, const std::string& folderPath, std::string_view text, int links);

 private:
  bool leadsToAvoided(const std::string& folderPath, std::string_view text) const;
  Target follow(int folder, const std::string& folderPath, std::string_view text, int links);
  bool isProcessLink(std::string_view folderPath) const;

  const VisibleMounts& mounts_;
  const AvoidedMounts avoided_;
  const std::function<bool()> isCancelled_;
  FileDescriptor root_;
};

// The content of a link. `name` is empty if `folder` is the link itself, opened with O_PATH. Empty
// with errno set if it cannot be read.
std::string linkText(int folder, const char* name);

}  // namespace tessaly

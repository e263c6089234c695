// Iteration over the entries of an open folder.
#pragma once

#include <cerrno>
#include <cstddef>
#include <dirent.h>
#include <string_view>
#include <sys/types.h>
#include <unistd.h>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/Uninterrupted.h"

namespace tessaly {

// Calls `use` with the name (NUL-terminated) and the type (DT_DIR and the like; DT_UNKNOWN if the
// file system does not report it) of each entry except "." and "..". Entries may be deleted
// meanwhile; a few may be left out then. Returns 0, or an errno when the rest cannot be read.
template <class Use>
int forEachEntry(const FileDescriptor& folder, const Use& use) {
  constexpr std::size_t room = std::size_t{32} * 1024;
  alignas(dirent64) char entries[room];
  if (::lseek(folder.get(), 0, SEEK_SET) != 0) return errno;
  while (true) {
    const ssize_t length =
        uninterrupted([&] { return ::getdents64(folder.get(), entries, sizeof entries); });
    if (length <= 0) return length == 0 ? 0 : errno;
    for (ssize_t at = 0; at < length;) {
      const auto* const entry = reinterpret_cast<const dirent64*>(entries + at);
      const std::string_view name = entry->d_name;
      if (name != "." && name != "..") use(name, entry->d_type);
      at += entry->d_reclen;
    }
  }
}

}  // namespace tessaly

#include "platform/linux/trash/VolumeTrash.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

#include "platform/linux/trash/ItemLocation.h"

namespace tessaly::VolumeTrash {

namespace {

constexpr std::string_view sharedName = ".Trash";

struct stat statusOf(const FileDescriptor& folder) {
  struct stat status {};
  if (::fstat(folder.get(), &status) != 0) status = {};
  return status;
}

std::string below(const std::string& folder, const std::string& name) {
  return folder.ends_with('/') ? folder + name : folder + "/" + name;
}

using Open = FileDescriptor (*)(const FileDescriptor& parent, const std::string& name);

FileDescriptor openThere(const FileDescriptor& parent, const std::string& name) {
  return openFolder(parent, name, O_PATH);
}

UserTrashFolder openOwn(Open open, const FileDescriptor& parent, const std::string& name,
                        std::string path, uid_t user) {
  UserTrashFolder own{.folder = open(parent, name), .path = std::move(path)};
  if (own.folder && statusOf(own.folder).st_uid != user) {
    own.folder = FileDescriptor();
    errno = EACCES;
  }
  return own;
}

// Returns an empty descriptor if no shared folder can be used.
UserTrashFolder openInShared(Open open, const FileDescriptor& top, const std::string& path,
                             uid_t user) {
  const std::string shared(sharedName);
  const FileDescriptor folder = openFolder(top, shared, O_PATH);
  if (!folder || (statusOf(folder).st_mode & S_ISVTX) == 0) {
    return {.folder = FileDescriptor(), .path = {}};
  }
  const std::string name = std::to_string(user);
  return openOwn(open, folder, name, below(path, shared + "/" + name), user);
}

UserTrashFolder openBesideShared(Open open, const FileDescriptor& top, const std::string& path,
                                 uid_t user) {
  const std::string name = std::string(sharedName) + "-" + std::to_string(user);
  return openOwn(open, top, name, below(path, name), user);
}

}  // namespace

std::vector<UserTrashFolder> find(const FileDescriptor& top, const std::string& path, uid_t user) {
  std::vector<UserTrashFolder> found;
  for (const auto look : {openInShared, openBesideShared}) {
    UserTrashFolder one = look(openThere, top, path, user);
    if (one.folder) found.push_back(std::move(one));
  }
  return found;
}

UserTrashFolder findOrMake(const FileDescriptor& top, const std::string& path, uid_t user) {
  UserTrashFolder shared = openInShared(openOrMakeFolder, top, path, user);
  return shared.folder ? std::move(shared) : openBesideShared(openOrMakeFolder, top, path, user);
}

bool isName(std::string_view name) {
  if (!name.starts_with(sharedName)) return false;
  name.remove_prefix(sharedName.size());
  if (name.empty()) return true;
  return name.size() > 1 && name.front() == '-' &&
         name.find_first_not_of("0123456789", 1) == std::string_view::npos;
}

FileDescriptor openOrMakeFolder(const FileDescriptor& parent, const std::string& name) {
  const bool isNew = ::mkdirat(parent.get(), name.c_str(), 0700) == 0;
  if (!isNew && errno != EEXIST) {
    // It may exist all the same: a read-only file system reports EROFS first.
    const int code = errno;
    FileDescriptor there = openFolder(parent, name, O_PATH);
    if (!there) errno = code;
    return there;
  }
  if (isNew) syncFolder(parent);
  return openFolder(parent, name, O_PATH);
}

}  // namespace tessaly::VolumeTrash

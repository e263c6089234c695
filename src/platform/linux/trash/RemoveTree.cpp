#include "platform/linux/trash/RemoveTree.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/Uninterrupted.h"
#include "platform/linux/trash/TreePass.h"

namespace tessaly {

namespace {

class Removal final : public TreePass {
 public:
  explicit Removal(uid_t user) : TreePass(AfterError::goOn), user_(user) {}

 private:
  FileDescriptor open(const FileDescriptor& held) override {
    openPermissions(held, user_);
    return openFolder(held, ".", O_RDONLY);
  }

  int meet(const FileDescriptor& folder, std::string_view name, unsigned char type,
           bool& isFolder) override {
    isFolder = type == DT_DIR;
    if (isFolder) return 0;
    const auto unlink = [&] { return ::unlinkat(folder.get(), name.data(), 0); };
    if (uninterrupted(unlink) == 0) return 0;
    isFolder = errno == EISDIR;
    return isFolder ? 0 : errno;
  }

  int leave(const FileDescriptor& above, const std::string& name) override {
    const auto remove = [&] { return ::unlinkat(above.get(), name.c_str(), AT_REMOVEDIR); };
    return uninterrupted(remove) == 0 ? 0 : errno;
  }

  const uid_t user_;
};

}  // namespace

mode_t openPermissions(const FileDescriptor& held, uid_t user) {
  struct stat status {};
  if (::fstat(held.get(), &status) != 0) return S_IRWXU;
  const mode_t permissions = status.st_mode & 07777U;
  if (status.st_uid == user && (permissions & S_IRWXU) != S_IRWXU) {
    setPermissions(held, permissions | S_IRWXU);
  }
  return permissions;
}

// An O_PATH descriptor allows no other way, and the folder's name may mean another folder by now.
void setPermissions(const FileDescriptor& held, mode_t permissions) {
  const std::string itself = "/proc/self/fd/" + std::to_string(held.get());
  ::chmod(itself.c_str(), permissions);
}

Outcome removeTree(const FileDescriptor& above, const std::string& name, const ItemIdentity& item,
                   const std::string& path, uid_t user) {
  return Removal(user).run(above, name, item, path);
}

}  // namespace tessaly

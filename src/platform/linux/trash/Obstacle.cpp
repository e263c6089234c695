#include "platform/linux/trash/Obstacle.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/trash/TreePass.h"

namespace tessaly {

namespace {

class LookAhead final : public TreePass {
 public:
  explicit LookAhead(uid_t user) : TreePass(AfterError::stop), user_(user) {}

  // Checks the entry itself, not its contents.
  static int look(const FileDescriptor& folder, const char* name, bool& isFolder) {
    constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
    struct statx status {};
    if (::statx(folder.get(), name, flags, STATX_TYPE, &status) != 0) return errno;
    isFolder = S_ISDIR(status.stx_mode);
    if ((status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0) return EBUSY;
    constexpr auto fixed = STATX_ATTR_IMMUTABLE | STATX_ATTR_APPEND;
    return (status.stx_attributes & fixed) != 0 ? EPERM : 0;
  }

 private:
  FileDescriptor open(const FileDescriptor& held) override {
    objection_ = objectionToChanging(held);
    FileDescriptor folder = openFolder(held, ".", O_RDONLY);
    if (!folder && errno == EACCES && isOwn(held)) errno = 0;
    return folder;
  }

  int meet(const FileDescriptor& folder, std::string_view name, unsigned char,
           bool& isFolder) override {
    return objection_ != 0 ? objection_ : look(folder, name.data(), isFolder);
  }

  int leave(const FileDescriptor&, const std::string&) override { return 0; }

  // Only matters if the folder has entries.
  int objectionToChanging(const FileDescriptor& held) const {
    if (::faccessat(held.get(), ".", W_OK | X_OK, AT_EACCESS) == 0) return 0;
    const int code = errno;
    return code == EACCES && isOwn(held) ? 0 : code;
  }

  bool isOwn(const FileDescriptor& held) const {
    struct stat status {};
    return ::fstat(held.get(), &status) == 0 && status.st_uid == user_;
  }

  const uid_t user_;
  int objection_ = 0;
};

}  // namespace

Outcome obstacleToDeleting(const FileDescriptor& above, const std::string& name,
                           const std::string& path, uid_t user) {
  bool isFolder = false;
  const int code = LookAhead::look(above, name.c_str(), isFolder);
  if (code != 0) return SystemError::fromErrno(code, path);
  return LookAhead(user).run(above, name, path);
}

}  // namespace tessaly

#include "platform/linux/trash/UserTrashMover.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <random>
#include <string_view>
#include <unistd.h>

#include "platform/linux/Uninterrupted.h"
#include "platform/linux/trash/ItemPlace.h"
#include "platform/linux/trash/MoveItem.h"
#include "platform/linux/trash/TrashFolder.h"
#include "platform/linux/trash/TrashInfo.h"

namespace tessaly {

namespace {

std::tm localTime() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  return local;
}

bool writeAll(const FileDescriptor& file, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written =
        uninterrupted([&] { return ::write(file.get(), content.data(), content.size()); });
    if (written <= 0) {
      if (written == 0) errno = EIO;
      return false;
    }
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// A file in a folder of infos that was not there before, on disk before anything is moved. It is
// taken away again unless it is kept.
class NewInfo {
 public:
  // Not there after a failure, with errno set.
  NewInfo(const FileDescriptor& folder, std::string name, std::string_view content)
      : folder_(folder), name_(std::move(name)) {
    FileDescriptor file(uninterrupted([&] {
      const int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
      return ::openat(folder_.get(), name_.c_str(), flags, 0600);
    }));
    if (!file) return;
    isThere_ = true;
    // An interrupted close has closed all the same.
    const bool isWritten = writeAll(file, content) &&
                           uninterrupted([&] { return ::fsync(file.get()); }) == 0 &&
                           (file.close() == 0 || errno == EINTR);
    if (isWritten) {
      syncFolder(folder_);
    } else {
      remove();
    }
  }
  NewInfo(const NewInfo&) = delete;
  NewInfo& operator=(const NewInfo&) = delete;
  ~NewInfo() {
    if (isThere_) remove();
  }

  bool isThere() const { return isThere_; }
  void keep() { isThere_ = false; }

 private:
  void remove() {
    const int code = errno;
    ::unlinkat(folder_.get(), name_.c_str(), 0);
    errno = code;
    isThere_ = false;
  }

  const FileDescriptor& folder_;
  const std::string name_;
  bool isThere_ = false;
};

// Small numbers read well; where many items of one name lie, each would have to be tried.
unsigned numberOf(unsigned attempt) {
  constexpr unsigned inOrder = 32;
  return attempt <= inOrder ? attempt : std::random_device()() | 1U << 16U;
}

std::size_t longestName(const FileDescriptor& folder) {
  constexpr long most = 255;
  const long told = ::fpathconf(folder.get(), _PC_NAME_MAX);
  return static_cast<std::size_t>(told > 0 ? std::min(told, most) : most);
}

}  // namespace

Result<std::string> UserTrashMover::moveToTrash(const std::string& path) {
  const Result<ItemPlace> place = placeOfItem(path);
  if (!place) return place.error();
  const ItemPlace& item = place.value();
  const Result<ItemIdentity> identity = identityOf(item.folder, item.name, path);
  if (!identity) return identity.error();
  const Result<TrashFolder> found = trashFolderFor(item, path, place_);
  if (!found) return found.error();
  const TrashFolder& trash = found.value();
  const std::string content = TrashInfo::text(trash.itemPath, localTime());
  const std::size_t longest = longestName(trash.info);
  constexpr unsigned attempts = 1000;
  int code = EEXIST;
  for (unsigned attempt = 1; attempt <= attempts && code == EEXIST; ++attempt) {
    const std::string name = TrashInfo::nameFor(item.name, numberOf(attempt), longest);
    NewInfo info(trash.info, name + std::string(TrashInfo::ending), content);
    code = info.isThere() ? 0 : errno;
    if (code != 0) continue;
    code = moveItem({item.folder, item.name}, {trash.files, name}, identity.value());
    if (code != 0) continue;
    info.keep();
    syncFolder(trash.files);
    syncFolder(item.folder);
    return trash.path + "/files/" + name;
  }
  return SystemError::fromErrno(code, path);
}

Outcome UserTrashMover::putBack(const std::string& trashPath, const std::string& original) {
  const Result<ItemPlace> inTrash = placeOfItem(trashPath);
  if (!inTrash) return inTrash.error();
  const ItemPlace& from = inTrash.value();
  makeFoldersAbove(original);
  const Result<ItemPlace> place = placeOfItem(original);
  if (!place) return place.error();
  const ItemPlace& to = place.value();
  const Result<ItemIdentity> identity = identityOf(from.folder, from.name, trashPath);
  if (!identity) return identity.error();
  const int code = moveItem({from.folder, from.name}, {to.folder, to.name}, identity.value());
  if (code != 0) return SystemError::fromErrno(code, original);
  syncFolder(to.folder);
  syncFolder(from.folder);
  // An info that stays tells of an item that is not there, which nobody minds.
  if (const FileDescriptor info = openFolder(from.folder, "../info", O_PATH)) {
    const std::string name = from.name + std::string(TrashInfo::ending);
    if (::unlinkat(info.get(), name.c_str(), 0) == 0) syncFolder(info);
  }
  return succeeded();
}

}  // namespace tessaly

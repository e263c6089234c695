#include "platform/StagedFile.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/NumberedName.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/IdentityFromStatus.h"
#include "platform/linux/NameInFolder.h"
#include "platform/linux/PrivateName.h"
#include "platform/linux/Uninterrupted.h"
#include "platform/linux/UseLock.h"
#include "platform/linux/trash/FolderEntries.h"
#include "platform/linux/trash/ItemLocation.h"
#include "platform/linux/trash/MoveItem.h"

namespace tessaly {

namespace {

constexpr const char* nameWhileExchanged = "exchanged";

std::string extensionOf(const std::string& name) {
  const std::size_t dot = name.rfind('.');
  return dot == std::string::npos || dot == 0 ? std::string() : name.substr(dot);
}

Result<FileIdentity> identityAt(const FileDescriptor& folder, const std::string& name) {
  struct stat status {};
  if (::fstatat(folder.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
    return SystemError::fromErrno(errno, name);
  }
  return identityFrom(status);
}

bool stands(const FileIdentity& identity, const FileDescriptor& folder, const std::string& name) {
  const Result<FileIdentity> found = identityAt(folder, name);
  return found && found.value() == identity;
}

}  // namespace

struct StagedFile::State {
  FileDescriptor folder;  // of the target
  std::string folderPath;
  std::string name;  // of the target
  FileDescriptor inside;
  std::string insideName;
  std::string fileName;
  std::string path;

  State() = default;
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() {
    if (!inside) return;
    std::vector<std::string> names;
    static_cast<void>(forEachEntry(
        inside, [&](std::string_view entry, unsigned char) { names.emplace_back(entry); }));
    for (const std::string& entry : names) ::unlinkat(inside.get(), entry.c_str(), 0);
    ::unlinkat(folder.get(), insideName.c_str(), AT_REMOVEDIR);
  }

  // Creates the private folder. Returns 0 or an errno.
  int makeInside() {
    constexpr int tries = 100;
    for (int attempt = 0; attempt < tries; ++attempt) {
      insideName = PrivateName::ofFolder();
      if (::mkdirat(folder.get(), insideName.c_str(), S_IRWXU) != 0) {
        if (errno == EEXIST) continue;
        return errno;
      }
      inside = openFolder(folder, insideName, O_RDONLY);
      const int code = inside ? 0 : errno;
      if (inside && lockInside()) return 0;
      const bool isCleared = inside || code == ENOENT;  // another process has cleared it away
      inside = FileDescriptor();
      if (isCleared) continue;
      ::unlinkat(folder.get(), insideName.c_str(), AT_REMOVEDIR);
      return code;
    }
    return EEXIST;
  }

  // False if the folder has been removed or is being removed.
  bool lockInside() const {
    const UseLock::Taken taken = UseLock::take(inside);
    if (taken == UseLock::Taken::impossible) return true;
    struct stat opened {};
    struct stat named {};
    return taken == UseLock::Taken::yes && ::fstat(inside.get(), &opened) == 0 &&
           ::fstatat(folder.get(), insideName.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
  }

  // Moves the file, or the item that was exchanged for it, to the first free name.
  Result<std::string> moveToFreeName() {
    const Result<ItemIdentity> item = identityOf(inside, fileName, path);
    if (!item) return item.error();
    constexpr int tries = 10000;
    int code = EEXIST;
    for (int number = 1; number <= tries && code == EEXIST; ++number) {
      const std::string candidate = numberedName(name, number);
      code = moveItem({inside, fileName}, {folder, candidate}, item.value());
      if (code == 0) return candidate;
    }
    return SystemError::fromErrno(code, folderPath + name);
  }

  enum class Exchange { done, notMeant, failed };

  // Exchanges the file with `replaced`, but with no other item.
  Exchange exchangeFor(const FileIdentity& replaced, const FileIdentity& own) {
    // For a moment the folder may contain a file that must not be deleted. With this name, another
    // process does not treat it as a leftover if this program ends then.
    const std::string exchanged = nameWhileExchanged + extensionOf(name);
    if (::renameat(inside.get(), fileName.c_str(), inside.get(), exchanged.c_str()) != 0) {
      return Exchange::notMeant;
    }
    fileName = exchanged;
    const auto exchange = [&] {
      return ::renameat2(inside.get(), fileName.c_str(), folder.get(), name.c_str(),
                         RENAME_EXCHANGE) == 0;
    };
    if (exchange()) {
      if (stands(replaced, inside, fileName)) return Exchange::done;
      exchange();
      if (stands(own, inside, fileName)) return Exchange::notMeant;
      // Meanwhile both were exchanged for a third file, which must not be deleted.
      static_cast<void>(moveToFreeName());
      return Exchange::failed;
    }
    if (errno != EINVAL && errno != ENOSYS) return Exchange::notMeant;
    if (!stands(replaced, folder, name)) return Exchange::notMeant;
    return ::renameat(inside.get(), fileName.c_str(), folder.get(), name.c_str()) == 0
               ? Exchange::done
               : Exchange::failed;
  }
};

StagedFile::StagedFile(std::unique_ptr<State> state) : state_(std::move(state)) {}
StagedFile::StagedFile(StagedFile&& other) noexcept = default;
StagedFile& StagedFile::operator=(StagedFile&& other) noexcept = default;
StagedFile::~StagedFile() = default;

Result<StagedFile> StagedFile::beside(const std::string& target) {
  Result<NameInFolder> place = NameInFolder::of(target);
  if (!place) return place.error();
  auto state = std::make_unique<State>();
  state->folder = std::move(place.value().folder);
  state->name = std::move(place.value().name);
  state->folderPath = std::move(place.value().folderPath);
  if (const int code = state->makeInside(); code != 0) return SystemError::fromErrno(code, target);
  state->fileName = PrivateName::inFolder + extensionOf(state->name);
  state->path = state->folderPath + state->insideName + "/" + state->fileName;
  return StagedFile(std::move(state));
}

const std::string& StagedFile::path() const {
  return state_->path;
}

Result<StagedFile::Placed> StagedFile::place(const std::optional<FileIdentity>& replaced) {
  State& state = *state_;
  const auto failed = [&](int code) {
    return SystemError::fromErrno(code, state.folderPath + state.name);
  };
  const FileDescriptor file(uninterrupted([&] {
    return ::openat(state.inside.get(), state.fileName.c_str(),
                    O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  }));
  struct stat status {};
  if (!file || ::fstat(file.get(), &status) != 0) return failed(errno);
  if (!S_ISREG(status.st_mode)) return failed(EINVAL);
  if (uninterrupted([&] { return ::fsync(file.get()); }) != 0) return failed(errno);

  const bool canBeReplaced = replaced && (replaced->kind == FileIdentity::Kind::file ||
                                          replaced->kind == FileIdentity::Kind::link);
  auto exchange = State::Exchange::notMeant;
  if (canBeReplaced) exchange = state.exchangeFor(*replaced, identityFrom(status));
  if (exchange == State::Exchange::failed) return failed(EBUSY);
  std::string name = state.name;
  if (exchange == State::Exchange::notMeant) {
    Result<std::string> free = state.moveToFreeName();
    if (!free) return free.error();
    name = std::move(free).value();
  }
  syncFolder(state.folder);
  if (::fstat(file.get(), &status) != 0) return failed(errno);
  return Placed{.path = state.folderPath + name, .identity = identityFrom(status)};
}

}  // namespace tessaly

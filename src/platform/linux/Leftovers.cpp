#include "platform/Leftovers.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/ResolvedPath.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/PrivateName.h"
#include "platform/linux/Uninterrupted.h"
#include "platform/linux/UseLock.h"
#include "platform/linux/trash/FolderEntries.h"
#include "platform/linux/trash/ItemLocation.h"
#include "platform/linux/trash/OpenFolderPath.h"

namespace tessaly::Leftovers {

namespace {

bool isOurs(const struct stat& status) {
  return status.st_uid == ::geteuid();
}

bool isOurFile(const struct stat& status) {
  return S_ISREG(status.st_mode) && isOurs(status);
}

bool isOurFolder(const struct stat& status) {
  constexpr mode_t others = S_IRWXG | S_IRWXO;
  return S_ISDIR(status.st_mode) && isOurs(status) && (status.st_mode & others) == 0;
}

std::optional<struct stat> statusOf(const FileDescriptor& folder, const std::string& name) {
  struct stat status {};
  if (::fstatat(folder.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return std::nullopt;
  return status;
}

// Whether the name still refers to the opened item.
bool stands(const FileDescriptor& opened, const FileDescriptor& folder, const std::string& name) {
  struct stat status {};
  const std::optional<struct stat> named = statusOf(folder, name);
  return named && ::fstat(opened.get(), &status) == 0 && status.st_dev == named->st_dev &&
         status.st_ino == named->st_ino;
}

FileDescriptor open(const FileDescriptor& folder, const std::string& name, int flags) {
  return FileDescriptor(uninterrupted([&] {
    return ::openat(folder.get(), name.c_str(),
                    flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  }));
}

std::vector<std::string> namesIn(const FileDescriptor& folder, bool (*isWanted)(std::string_view)) {
  std::vector<std::string> names;
  static_cast<void>(forEachEntry(folder, [&](std::string_view name, unsigned char) {
    if (isWanted(name)) names.emplace_back(name);
  }));
  return names;
}

bool isPrivate(std::string_view name) {
  return PrivateName::isOfFile(name) || PrivateName::isOfFolder(name);
}

bool isAny(std::string_view) {
  return true;
}

// A regular file of this user whose maker has ended: open and locked, so that no other process
// treats it as a leftover too. Open for writing, since some file systems require that for a lock.
struct Held {
  FileDescriptor file = FileDescriptor();
  bool isInUse = false;
};

Held hold(const FileDescriptor& folder, const std::string& name) {
  const std::optional<struct stat> status = statusOf(folder, name);
  if (!status || !isOurFile(*status)) return {};
  FileDescriptor file = open(folder, name, O_RDWR);
  if (!file) return {};
  const UseLock::Taken taken = UseLock::take(file);
  if (taken == UseLock::Taken::heldByOther) return {.file = FileDescriptor(), .isInUse = true};
  struct stat opened {};
  const bool isMeant = taken == UseLock::Taken::yes && ::fstat(file.get(), &opened) == 0 &&
                       isOurFile(opened) && stands(file, folder, name);
  if (!isMeant) return {};
  return {.file = std::move(file), .isInUse = false};
}

Found removeFile(const FileDescriptor& folder, const std::string& name) {
  const Held held = hold(folder, name);
  if (held.file) ::unlinkat(folder.get(), name.c_str(), 0);
  return held.isInUse ? Found::inUse : Found::nothingInUse;
}

// A tool started by the killed run may still write. The system grants no read lease while a file is
// open for writing. A process that opens the file for writing at this moment waits until the lease
// is released, and this process gets SIGURG, which is ignored by default.
bool isBeingWritten(const FileDescriptor& folder, const std::string& name) {
  const FileDescriptor file = open(folder, name, O_RDONLY);
  if (!file) return errno != ENOENT;
  if (::fcntl(file.get(), F_SETSIG, SIGURG) != 0 || ::fcntl(file.get(), F_SETLEASE, F_RDLCK) != 0) {
    return true;
  }
  ::fcntl(file.get(), F_SETLEASE, F_UNLCK);
  return false;
}

bool isOnSameMount(const FileDescriptor& folder, const FileDescriptor& inside) {
  const Result<ItemIdentity> outer = identityOf(folder, "", "");
  const Result<ItemIdentity> inner = identityOf(inside, "", "");
  return outer && inner && outer.value().mount == inner.value().mount;
}

Found removeFolder(const FileDescriptor& folder, const std::string& name) {
  const std::optional<struct stat> status = statusOf(folder, name);
  if (!status || !isOurFolder(*status)) return Found::nothingInUse;
  const FileDescriptor inside = open(folder, name, O_RDONLY | O_DIRECTORY);
  if (!inside || !isOnSameMount(folder, inside)) return Found::nothingInUse;
  const UseLock::Taken taken = UseLock::take(inside);
  if (taken == UseLock::Taken::heldByOther) return Found::inUse;
  struct stat opened {};
  if (taken != UseLock::Taken::yes || ::fstat(inside.get(), &opened) != 0 || !isOurFolder(opened) ||
      !stands(inside, folder, name)) {
    return Found::nothingInUse;
  }
  const std::vector<std::string> entries = namesIn(inside, isAny);
  const bool isAllOurs = std::ranges::all_of(entries, [&](const std::string& entry) {
    const std::optional<struct stat> found = statusOf(inside, entry);
    return PrivateName::isInFolder(entry) && found && isOurFile(*found);
  });
  if (!isAllOurs) return Found::nothingInUse;
  for (const std::string& entry : entries) {
    if (isBeingWritten(inside, entry)) return Found::inUse;
  }
  for (const std::string& entry : entries) ::unlinkat(inside.get(), entry.c_str(), 0);
  ::unlinkat(folder.get(), name.c_str(), AT_REMOVEDIR);
  return Found::nothingInUse;
}

FileDescriptor readable(const std::string& path) {
  const FileDescriptor folder = openFolderPath(path);
  return folder ? openFolder(folder, ".", O_RDONLY) : FileDescriptor();
}

// Empty if the note was not written completely.
std::string placeIn(const FileDescriptor& note) {
  std::string text(PATH_MAX, '\0');
  const ssize_t length =
      uninterrupted([&] { return ::pread(note.get(), text.data(), text.size(), 0); });
  text.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
  const bool isPath = text.starts_with('/') && text.find('\0') == std::string::npos;
  return isPath && text.size() < PATH_MAX ? text : "";
}

}  // namespace

Found removeFrom(const std::string& path) {
  const FileDescriptor folder = readable(path);
  if (!folder) return Found::nothingInUse;
  Found found = Found::nothingInUse;
  for (const std::string& name : namesIn(folder, isPrivate)) {
    const Found one =
        PrivateName::isOfFile(name) ? removeFile(folder, name) : removeFolder(folder, name);
    if (one == Found::inUse) found = one;
  }
  return found;
}

std::vector<std::string> notesIn(const std::string& notes) {
  const FileDescriptor folder = readable(notes);
  return folder ? namesIn(folder, PrivateName::isOfNote) : std::vector<std::string>();
}

void settle(const std::string& notes, const std::string& note) {
  const FileDescriptor folder = readable(notes);
  if (!folder) return;
  const Held held = hold(folder, note);
  if (!held.file) return;
  const std::string place = placeIn(held.file);
  if (!place.empty() && removeFrom(place) == Found::inUse) return;
  ::unlinkat(folder.get(), note.c_str(), 0);
}

void removeAll(Dispatch& dispatch, const std::string& notes,
               const std::vector<std::string>& others) {
  dispatch.async(Dispatch::Queue::utility, [&dispatch, notes, others] {
    const std::string folder = resolvedPath(notes);
    removeFrom(folder);
    for (const std::string& other : others) removeFrom(resolvedPath(other));
    for (const std::string& note : notesIn(folder)) {
      dispatch.async(Dispatch::Queue::utility, [folder, note] { settle(folder, note); });
    }
  });
}

}  // namespace tessaly::Leftovers

#include "platform/linux/walk/FolderReader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/linux/AllocatedBytes.h"
#include "platform/linux/Uninterrupted.h"
#include "platform/linux/walk/FolderCandidate.h"

namespace tessaly::walk {

namespace {

constexpr std::size_t entriesCapacity = 64 * 1024;

// Layout of an entry of getdents64, up to the name.
struct EntryHeader {
  std::uint64_t inode;
  std::int64_t offset;
  std::uint16_t length;
  std::uint8_t type;
};
constexpr std::size_t entryNameOffset = 19;

double seconds(std::int64_t whole, std::uint32_t nanoseconds) {
  return static_cast<double>(whole) + static_cast<double>(nanoseconds) / 1e9;
}

DirectoryWalk::Type typeOf(unsigned mode) {
  if (S_ISDIR(mode)) return DirectoryWalk::Type::directory;
  if (S_ISREG(mode)) return DirectoryWalk::Type::file;
  if (S_ISLNK(mode)) return DirectoryWalk::Type::link;
  return DirectoryWalk::Type::other;
}

DirectoryWalk::Type typeOf(std::uint8_t entryType) {
  switch (entryType) {
    case DT_DIR:
      return DirectoryWalk::Type::directory;
    case DT_REG:
      return DirectoryWalk::Type::file;
    case DT_LNK:
      return DirectoryWalk::Type::link;
    default:
      return DirectoryWalk::Type::other;
  }
}

// Reads the attributes of an entry; does not follow a link. Returns 0 or an errno.
int look(int directory, const char* name, unsigned mask, struct statx& attributes) {
  constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
  const int result =
      uninterrupted([&] { return statx(directory, name, flags, mask, &attributes); });
  return result == 0 ? 0 : errno;
}

// An entry that vanished since the directory was listed is no failure.
int failureOf(int error) {
  return error == ENOENT ? 0 : error;
}

// Whether the entry belongs to the mount with this id. True if that cannot be determined.
bool isTopOf(std::uint64_t mount, int directory, const char* name, int& failure) {
  struct statx attributes;
  if (const int error = look(directory, name, STATX_MNT_ID, attributes); error != 0) {
    failure = failureOf(error);
    return true;
  }
  return (attributes.stx_mask & STATX_MNT_ID) == 0 || attributes.stx_mnt_id == mount;
}

}  // namespace

struct FolderReader::Entry {
  const char* name;
  std::size_t nameLength;
  std::uint8_t type;
};

FolderReader::FolderReader(const DirectoryWalk::Decide& decide,
                           const DirectoryWalk::Reading& reading, const std::string& root,
                           const std::atomic<bool>& stop)
    : decide_(decide),
      reading_(reading),
      root_(root),
      stop_(stop),
      entries_(std::make_unique_for_overwrite<char[]>(entriesCapacity)) {}

FolderReader::~FolderReader() = default;

FolderReader::Run FolderReader::readEntries(int descriptor) {
  filled_ = 0;
  while (entriesCapacity - filled_ >= entriesCapacity / 2) {
    if (stop_.load(std::memory_order_relaxed)) return {};
    const long got = uninterrupted([&] {
      return syscall(SYS_getdents64, descriptor, entries_.get() + filled_,
                     entriesCapacity - filled_);
    });
    if (got < 0) return {.failure = failureOf(errno)};  // a removed directory has no entries
    if (got == 0) return {};
    filled_ += static_cast<std::size_t>(got);
  }
  std::size_t last = 0;
  for (std::size_t at = 0; at < filled_;) {
    last = at;
    std::uint16_t length = 0;
    std::memcpy(&length, entries_.get() + at + offsetof(EntryHeader, length), sizeof length);
    at += length;
  }
  std::int64_t offset = 0;
  std::memcpy(&offset, entries_.get() + last + offsetof(EntryHeader, offset), sizeof offset);
  return {.hasRest = true, .resume = offset};
}

void FolderReader::readAttributes(int descriptor, Batch& batch) {
  records_.clear();
  names_.clear();
  children_.clear();
  for (std::size_t at = 0; at < filled_ && !stop_.load(std::memory_order_relaxed);) {
    const char* const raw = entries_.get() + at;
    std::uint16_t length = 0;
    std::memcpy(&length, raw + offsetof(EntryHeader, length), sizeof length);
    at += length;
    const char* const name = raw + entryNameOffset;
    if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'))) continue;
    addEntry(
        descriptor, *batch.folder,
        {name, std::strlen(name), static_cast<std::uint8_t>(raw[offsetof(EntryHeader, type)])});
  }
  store(batch);
}

void FolderReader::addEntry(int descriptor, Folder& folder, const Entry& entry) {
  Record record{};
  record.type = typeOf(entry.type);
  DirectoryWalk::Entry item{.name = {entry.name, entry.nameLength}};

  const bool needsLook =
      reading_.attributes ? entry.type != DT_DIR && entry.type != DT_LNK : entry.type == DT_UNKNOWN;
  if (needsLook) readItem(descriptor, item, record);
  if (record.type == DirectoryWalk::Type::directory) {
    addDirectory(descriptor, folder, entry, record);
    return;
  }
  const bool failed = record.holds == Record::Holds::failure && record.failure != 0;
  item.type = record.type;
  if (failed || !reading_.keep || reading_.keep(item)) add(item.name, record);
}

void FolderReader::readItem(int descriptor, DirectoryWalk::Entry& item, Record& record) const {
  struct statx attributes;
  constexpr unsigned mask = STATX_TYPE | STATX_BLOCKS | STATX_MTIME | STATX_SIZE | STATX_UID;
  const int error =
      look(descriptor, item.name.data(), reading_.attributes ? mask : STATX_TYPE, attributes);
  record.failure = failureOf(error);
  if (error != 0) return;
  record.type = typeOf(static_cast<unsigned>(attributes.stx_mode));
  if (!reading_.attributes) return;
  record.holds = Record::Holds::attributes;
  record.allocatedSize = (attributes.stx_mask & STATX_BLOCKS) != 0
                             ? bytesOfBlocks(attributes.stx_blocks)
                             : static_cast<std::int64_t>(attributes.stx_size);
  record.mtime = seconds(attributes.stx_mtime.tv_sec, attributes.stx_mtime.tv_nsec);
  item.hasAttributes = true;
  item.length = static_cast<std::int64_t>(attributes.stx_size);
  item.owner = attributes.stx_uid;
}

void FolderReader::addDirectory(int descriptor, Folder& folder, const Entry& entry,
                                Record& record) {
  record.mtime = 0;
  DirectoryWalk::Descent descent;
  const std::string_view name(entry.name, entry.nameLength);
  int failure = 0;
  const bool isEntered = enters(descriptor, folder, entry, descent, failure);
  record.holds = Record::Holds::failure;
  record.failure = failure;
  if (isEntered) {
    auto* const child = new Folder;
    child->parent = &folder;
    child->depth = folder.depth + 1;
    child->mark = descent.mark;
    child->closed = folder.closed == nullptr ? nullptr : folder.closed->below(name);
    child->first.folder = child;
    record.holds = Record::Holds::child;
    record.child = child;
    children_.push_back(child);
  }
  add(name, record);
}

// `name` is followed by a NUL.
void FolderReader::add(std::string_view name, Record& record) {
  record.nameOffset = static_cast<std::uint32_t>(names_.size());
  record.nameLength = static_cast<std::uint16_t>(name.size());
  names_.insert(names_.end(), name.data(), name.data() + name.size() + 1);
  records_.push_back(record);
}

bool FolderReader::enters(int descriptor, Folder& folder, const Entry& entry,
                          DirectoryWalk::Descent& descent, int& failure) const {
  const std::string_view name(entry.name, entry.nameLength);
  if (folder.closed != nullptr) {
    const ClosedMounts* const place = folder.closed->below(name);
    if (place != nullptr && place->isClosed() &&
        (place->mount() == 0 || isTopOf(place->mount(), descriptor, entry.name, failure))) {
      return false;
    }
  }
  if (decide_) descent = decide_(FolderCandidate(root_, folder, name));
  return descent.enter;
}

void FolderReader::store(Batch& batch) {
  const std::size_t recordBytes = records_.size() * sizeof(Record);
  batch.count = static_cast<std::uint32_t>(records_.size());
  if (batch.count == 0) return;
  batch.data = std::make_unique_for_overwrite<std::byte[]>(recordBytes + names_.size());
  std::memcpy(batch.data.get(), records_.data(), recordBytes);
  std::memcpy(batch.data.get() + recordBytes, names_.data(), names_.size());
  for (const Record& record : records_) {
    if (record.holds == Record::Holds::child) record.child->name = batch.name(record);
  }
}

int readFolderAttributes(int descriptor, Folder& folder) {
  struct stat attributes;
  if (uninterrupted([&] { return fstat(descriptor, &attributes); }) != 0) return errno;
  folder.hasAttributes = true;
  folder.length = attributes.st_size;
  folder.mtime =
      seconds(attributes.st_mtim.tv_sec, static_cast<std::uint32_t>(attributes.st_mtim.tv_nsec));
  folder.device = attributes.st_dev;
  folder.inode = attributes.st_ino;
  return 0;
}

bool readFolderAttributesByName(int parentDescriptor, const char* name, Folder& folder) {
  struct stat attributes;
  constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
  if (uninterrupted([&] { return fstatat(parentDescriptor, name, &attributes, flags); }) != 0) {
    return errno != ENOENT;
  }
  folder.hasAttributes = S_ISDIR(attributes.st_mode);
  folder.length = attributes.st_size;
  folder.mtime =
      seconds(attributes.st_mtim.tv_sec, static_cast<std::uint32_t>(attributes.st_mtim.tv_nsec));
  return folder.hasAttributes;
}

std::string folderPath(const std::string& root, const Folder& folder) {
  std::vector<std::string_view> names;
  for (const Folder* at = &folder; at->parent != nullptr; at = at->parent)
    names.push_back(at->name);
  std::string path = root;
  std::ranges::reverse(names);
  for (const std::string_view name : names) {
    if (!path.ends_with('/')) path += '/';
    path += name;
  }
  return path;
}

}  // namespace tessaly::walk

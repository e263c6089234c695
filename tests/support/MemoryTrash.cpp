#include "support/MemoryTrash.h"

#include <cerrno>
#include <utility>

namespace tessaly {

namespace {

std::string withoutSlashesBehind(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == 0 ? "/" : path.substr(0, slash);
}

bool isWithin(const std::string& path, const std::string& folder) {
  return path == folder || path.starts_with(folder + "/");
}

// 0 if `path` is a valid path of an item, else an errno.
int objectionTo(const std::string& path) {
  if (!path.starts_with('/') || path.find('\0') != std::string::npos) return EINVAL;
  if (path == "/") return EBUSY;
  const std::string name = path.substr(path.rfind('/') + 1);
  return name == "." || name == ".." ? EINVAL : 0;
}

}  // namespace

void MemoryTrash::put(const std::string& path, const std::string& content) {
  makeFoldersAbove(path);
  items_[path] = {.content = content, .number = ++last_};
}

void MemoryTrash::remove(const std::string& path) {
  std::erase_if(items_, [&](const auto& item) { return isWithin(item.first, path); });
}

std::string MemoryTrash::contentOf(const std::string& path) const {
  const auto found = items_.find(path);
  return found == items_.end() ? "" : found->second.content;
}

Result<ItemInTrash> MemoryTrash::moveToTrash(const std::string& path) {
  if (beforeMove_) beforeMove_(path);
  const std::string item = withoutSlashesBehind(path);
  if (const int objection = objectionTo(item); objection != 0) {
    return SystemError::fromErrno(objection, path);
  }
  if (!has(item)) return SystemError::fromErrno(ENOENT, path);
  if (isWithin(item, trash) || isWithin(trash, item)) return SystemError::fromErrno(EINVAL, path);
  if (const auto refusal = refused_.find(item); refusal != refused_.end()) {
    return SystemError::fromErrno(refusal->second, path);
  }
  const std::string wanted = std::string(trash) + item.substr(item.rfind('/'));
  std::string place = wanted;
  for (int number = 2; has(place); ++number) place = wanted + "." + std::to_string(number);
  makeFoldersAbove(place);
  move(item, place);
  return ItemInTrash{.path = tellsPlaces_ ? place : std::string(), .identity = identityOf(place)};
}

Outcome MemoryTrash::putBack(const ItemInTrash& inTrash, const std::string& original) {
  const std::string& trashPath = inTrash.path;
  const std::string item = withoutSlashesBehind(original);
  for (const std::string& path : {trashPath, item}) {
    if (const int objection = objectionTo(path); objection != 0) {
      return SystemError::fromErrno(objection, path);
    }
  }
  makeFoldersAbove(item);
  if (!has(trashPath)) return SystemError::fromErrno(ENOENT, trashPath);
  if (identityOf(trashPath) != inTrash.identity) return SystemError::fromErrno(ESTALE, trashPath);
  if (has(item)) return SystemError::fromErrno(EEXIST, original);
  if (const auto refusal = refused_.find(trashPath); refusal != refused_.end()) {
    return SystemError::fromErrno(refusal->second, original);
  }
  move(trashPath, item);
  return succeeded();
}

Result<std::int64_t> MemoryTrash::count() {
  return static_cast<std::int64_t>(itemsInTrash().size());
}

EmptiedTrash MemoryTrash::empty() {
  EmptiedTrash result;
  for (const std::string& item : itemsInTrash()) {
    if (const auto refusal = refused_.find(item); refusal != refused_.end()) {
      result.addFailure(SystemError::fromErrno(refusal->second, item));
    } else {
      remove(item);
      ++result.deleted;
    }
  }
  return result;
}

std::vector<std::string> MemoryTrash::itemsInTrash() const {
  std::vector<std::string> found;
  for (const auto& [path, item] : items_) {
    if (folderOf(path) == trash) found.push_back(path);
  }
  return found;
}

void MemoryTrash::makeFoldersAbove(const std::string& path) {
  for (std::string folder = folderOf(path); !has(folder); folder = folderOf(folder)) {
    items_[folder].number = ++last_;
  }
}

TrashIdentity MemoryTrash::identityOf(const std::string& path) const {
  return {.item = "item " + std::to_string(items_.at(path).number), .record = {}};
}

void MemoryTrash::move(const std::string& from, const std::string& to) {
  std::vector<std::pair<std::string, Item>> moved;
  for (const auto& [path, item] : items_) {
    if (isWithin(path, from)) moved.emplace_back(to + path.substr(from.size()), item);
  }
  remove(from);
  items_.insert(moved.begin(), moved.end());
}

}  // namespace tessaly

#include "platform/linux/trash/TreePass.h"

#include <cerrno>
#include <fcntl.h>
#include <utility>

#include "platform/linux/trash/FolderEntries.h"

namespace tessaly {

Outcome TreePass::run(const FileDescriptor& above, const std::string& name,
                      const ItemIdentity& item, const std::string& path) {
  item_ = item;
  Outcome outcome = run(above, name, path);
  item_.reset();
  return outcome;
}

Outcome TreePass::run(const FileDescriptor& above, const std::string& name,
                      const std::string& path) {
  path_ = path;
  error_.reset();
  levels_.clear();
  const Result<ItemIdentity> start = identityOf(above, "", path);
  if (!start) return start.error();
  current_ = openFolder(above, ".", O_PATH);
  if (!current_) return SystemError::fromErrno(errno, path);
  levels_.push_back(Level{.name = "", .identity = start.value(), .folders = {name}});
  while (levels_.size() > 1 || !levels_.back().folders.empty()) {
    if (error_ && afterError_ == AfterError::stop) break;
    if (!levels_.back().folders.empty()) {
      goDown();
    } else if (!goUp()) {
      break;
    }
  }
  return error_ ? Outcome(*error_) : succeeded();
}

void TreePass::goDown() {
  const std::string name = levels_.back().folders.back();
  const FileDescriptor held = openFolder(current_, name, O_PATH);
  if (!held) return finishFolder(errno);
  const Result<ItemIdentity> identity = identityOf(held, "", "");
  if (!identity) return finishFolder(identity.error().code);
  if (identity.value().mount != levels_.front().identity.mount) return finishFolder(EBUSY);
  const bool isStart = levels_.size() == 1;
  if (isStart && item_ && !identity.value().isSameItem(*item_)) return finishFolder(ESTALE);
  FileDescriptor folder = open(held);
  if (!folder) return finishFolder(errno);
  levels_.push_back(Level{.name = name, .identity = identity.value(), .folders = {}});
  current_ = std::move(folder);
  read();
}

void TreePass::read() {
  const int code = forEachEntry(current_, [&](std::string_view name, unsigned char type) {
    if (error_ && afterError_ == AfterError::stop) return;
    bool isFolder = false;
    const int met = meet(current_, name, type, isFolder);
    if (met != 0 && met != ENOENT) return fail(met, std::string(name));
    if (isFolder) levels_.back().folders.emplace_back(name);
  });
  if (code != 0 && code != ENOENT) fail(code, "");
}

// False if the parent cannot be reached.
bool TreePass::goUp() {
  FileDescriptor above = openFolder(current_, "..", O_PATH);
  const int code = errno;
  const Result<ItemIdentity> identity =
      above ? identityOf(above, "", "") : Result<ItemIdentity>(SystemError::fromErrno(code, ""));
  if (!identity || !identity.value().isSameLocation(levels_[levels_.size() - 2].identity)) {
    fail(identity ? ESTALE : identity.error().code, "");
    return false;
  }
  const bool hasFailed = levels_.back().hasFailed;
  levels_.pop_back();
  current_ = std::move(above);
  Level& level = levels_.back();
  if (hasFailed) {
    level.hasFailed = true;
    finishFolder(0);
    return true;
  }
  constexpr int mostRounds = 16;
  const int left = leave(current_, level.folders.back());
  const bool isNotEmpty = left == ENOTEMPTY || left == EEXIST;
  if (!isNotEmpty || ++level.rounds == mostRounds) finishFolder(left);
  return true;
}

void TreePass::finishFolder(int code) {
  Level& level = levels_.back();
  if (code != 0 && code != ENOENT) fail(code, level.folders.back());
  level.folders.pop_back();
  level.rounds = 0;
}

void TreePass::fail(int code, const std::string& name) {
  levels_.back().hasFailed = true;
  if (!error_) error_ = SystemError::fromErrno(code, pathOfEntry(name));
}

std::string TreePass::pathOfEntry(const std::string& name) const {
  std::string path = path_;
  // The first level is the folder that contains the item, the second is the item.
  for (std::size_t i = 2; i < levels_.size(); ++i) path += "/" + levels_[i].name;
  if (levels_.size() > 1 && !name.empty()) path += "/" + name;
  return path;
}

}  // namespace tessaly

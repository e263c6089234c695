#include "session/ListedCopies.h"

#include <cerrno>
#include <utility>

namespace tessaly {

namespace {

bool isSameItem(const FileIdentity& a, const FileIdentity& b) {
  return a.kind == b.kind && a.device == b.device && a.inode == b.inode && a.mayBeAsOldAs(b);
}

}  // namespace

void ListedCopies::take(const Identities& listed) {
  listed_ = listed;
  for (auto& [path, identity] : queued_) {
    if (const auto again = listed_.find(path); again != listed_.end()) identity = again->second;
  }
}

void ListedCopies::follow(const std::vector<DiskNode>& queue) {
  Identities queued;
  for (const DiskNode& node : queue) {
    const std::string path = node.path();
    const Identities& known = queued_.contains(path) ? queued_ : listed_;
    if (const auto copy = known.find(path); copy != known.end()) queued.insert(*copy);
  }
  queued_ = std::move(queued);
}

Outcome ListedCopies::check(const std::string& path) {
  const auto guard = queued_.find(path);
  if (guard == queued_.end()) return succeeded();
  const FileIdentity& listed = guard->second;
  const Result<FileIdentity> now = FileIdentity::of(path);
  if (!now) return succeeded();
  if (now.value().isUntouchedSince(listed)) {
    unchanged_.insert_or_assign(path, listed);
    return succeeded();
  }
  if (!isSameItem(now.value(), listed)) return SystemError::fromErrno(ESTALE, path);
  return SystemError{.kind = SystemError::Kind::changed, .path = path, .code = 0};
}

void ListedCopies::note(const std::string& path) {
  const auto listed = listed_.find(path);
  if (listed == listed_.end()) return;
  const Result<FileIdentity> now = FileIdentity::of(path);
  if (now && now.value().isUntouchedSince(listed->second))
    unchanged_.insert_or_assign(path, listed->second);
}

void ListedCopies::renew(const std::vector<std::string>& paths) {
  for (const std::string& moved : paths) {
    const auto known = unchanged_.find(moved);
    if (known == unchanged_.end()) continue;
    for (Identities* const identities : {&listed_, &queued_}) {
      for (auto& [path, identity] : *identities) {
        if (!isSameItem(identity, known->second)) continue;
        const Result<FileIdentity> now = FileIdentity::of(path);
        if (now && now.value() == identity) identity.changed = now.value().changed;
      }
    }
  }
}

}  // namespace tessaly

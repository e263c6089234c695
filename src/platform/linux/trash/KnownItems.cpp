#include "platform/linux/trash/KnownItems.h"

#include "platform/linux/trash/ItemFacts.h"

namespace tessaly {

Result<KnownItems> KnownItems::in(const FileDescriptor& files, const std::string& path) {
  const Result<bool> inodesLast = inodesLastAt(files, path);
  if (!inodesLast) return inodesLast.error();
  Result<std::string> folder = folderFactsOf(files, inodesLast.value(), path);
  if (!folder) return folder.error();
  return KnownItems(inodesLast.value(), std::move(folder).value());
}

Result<TrashIdentity> KnownItems::identityOf(const FileDescriptor& item, std::string record,
                                             const std::string& path) const {
  const Result<std::string> facts = factsOf(item, "", inodesLast_, path);
  if (!facts) return facts.error();
  return TrashIdentity{.item = facts.value() + " in " + folder_, .record = std::move(record)};
}

bool KnownItems::areSame(const TrashIdentity& one, const TrashIdentity& other) const {
  if (one.item.empty() || one.item != other.item) return false;
  return inodesLast_ || (!one.record.empty() && one.record == other.record);
}

Result<bool> KnownItems::standsAt(const FileDescriptor& folder, const std::string& name,
                                  const FileDescriptor& item) const {
  const Result<std::string> held = factsOf(item, "", inodesLast_, name);
  if (!held) return held.error();
  const Result<std::string> there = factsOf(folder, name, inodesLast_, name);
  if (!there) return there.error();
  return there.value() == held.value();
}

}  // namespace tessaly

// Where these programs keep their records:
//
// snapper has one configuration for each subvolume, a file of assignments with SUBVOLUME in
// /etc/snapper/configs, and keeps the snapshot N of a subvolume in its folder .snapshots/N, with
// the record in .snapshots/N/info.xml.
//
// timeshift names the device of its snapshots in /etc/timeshift/timeshift.json (formerly
// /etc/timeshift.json) and keeps a snapshot in a folder named after its date, with the record
// info.json in it. These folders are in timeshift/snapshots on the device if the snapshots are
// copies, and in timeshift-btrfs/snapshots at the top of the file system if they are snapshots of
// btrfs. It mounts the device only while it needs it, unless it is mounted anyway.
#include "platform/tools/SnapshotList.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdint>
#include <fcntl.h>
#include <map>
#include <optional>
#include <string_view>
#include <system_error>
#include <unistd.h>

#include "platform/linux/MountTable.h"
#include "platform/tools/SnapshotRecords.h"
#include "platform/tools/linux/SmallFiles.h"

namespace tessaly::tools {

namespace {

constexpr std::size_t mostEntries = 20000;
constexpr std::size_t longestRecord = std::size_t{64} * 1024;  // bytes
constexpr std::size_t longestMountTable = std::size_t{4} << 20U;

std::string below(const std::string& machine, std::string_view path) {
  return machine.ends_with('/') ? machine.substr(0, machine.size() - 1) + std::string(path)
                                : machine + std::string(path);
}

std::optional<std::string> fileOf(const std::string& machine, std::string_view path,
                                  std::size_t most = longestRecord) {
  return smallFile(AT_FDCWD, below(machine, path), most, true);
}

// A number as snapper writes it.
std::optional<std::uint64_t> snapperNumber(std::string_view name) {
  std::uint64_t number = 0;
  const char* const end = name.data() + name.size();
  const auto [stop, error] = std::from_chars(name.data(), end, number);
  if (error != std::errc() || stop != end || name.starts_with('0')) return std::nullopt;
  return number;
}

// Whether a folder is named like "2024-02-01_13-30-00".
bool isTimeshiftName(std::string_view name) {
  constexpr std::string_view form = "dddd-dd-dd_dd-dd-dd";
  return std::equal(name.begin(), name.end(), form.begin(), form.end(), [](char is, char wanted) {
    return wanted == 'd' ? is >= '0' && is <= '9' : is == wanted;
  });
}

std::optional<std::string> recordIn(const FileDescriptor& folder, const std::string& snapshot,
                                    const std::string& record) {
  const FileDescriptor one = folderIn(folder.get(), snapshot);
  if (!one) return std::nullopt;
  return smallFile(one.get(), record, longestRecord);
}

void addSnapper(const std::string& machine, std::vector<Snapshot>& snapshots) {
  const FileDescriptor top = folderAt(machine);
  if (!top) return;
  const FileDescriptor folder = folderIn(top.get(), ".snapshots");
  if (!folder) return;
  std::map<std::uint64_t, SnapshotRecord> records;
  for (const std::string& name : namesIn(folder, mostEntries)) {
    const std::optional<std::uint64_t> number = snapperNumber(name);
    if (!number) continue;
    const std::optional<std::string> xml = recordIn(folder, name, "info.xml");
    const auto record = xml ? snapperRecord(*xml, *number) : std::nullopt;
    if (record) records.emplace(*number, *record);
  }
  for (const auto& [number, record] : records) {
    snapshots.push_back(
        {Snapshot::Keeper::snapper, std::to_string(number), record.made, record.purpose});
  }
}

// The number of the device with timeshift's snapshots, as in the mount table; empty if unknown.
std::string backupDevice(const std::string& machine) {
  std::optional<std::string> settings = fileOf(machine, "/etc/timeshift/timeshift.json");
  if (!settings) settings = fileOf(machine, "/etc/timeshift.json");
  const std::string uuid = settings ? jsonText(*settings, "backup_device_uuid").value_or("") : "";
  constexpr std::string_view ofUuids = "0123456789abcdefABCDEF-";
  if (uuid.empty() || uuid.find_first_not_of(ofUuids) != std::string::npos) return {};
  // A link to a name in /dev, such as "../../sda2".
  char target[PATH_MAX];
  const ssize_t length =
      readlink(below(machine, "/dev/disk/by-uuid/" + uuid).c_str(), target, sizeof target);
  if (length <= 0) return {};
  const std::string_view link(target, static_cast<std::size_t>(length));
  const std::string name(link.substr(link.rfind('/') + 1));
  std::string number = fileOf(machine, "/sys/class/block/" + name + "/dev").value_or("");
  while (number.ends_with('\n')) number.pop_back();
  return number;
}

// The folders in which timeshift's may be: the root, and where the device of the snapshots, or the
// whole of a btrfs of which the root shows a part, is mounted.
std::vector<std::string> timeshiftPlaces(const std::string& machine) {
  std::vector<std::string> places = {machine};
  const std::vector<Mount> mounts =
      mountsIn(fileOf(machine, "/proc/self/mountinfo", longestMountTable).value_or(""));
  const std::string backup = backupDevice(machine);
  const auto root = std::find_if(mounts.rbegin(), mounts.rend(),
                                 [](const Mount& mount) { return mount.point == "/"; });
  for (const Mount& mount : mounts) {
    if (mount.root != "/" || mount.point == "/") continue;
    const bool isOfRoot = root != mounts.rend() && mount.device == root->device;
    if (isOfRoot || mount.device == backup) places.push_back(below(machine, mount.point));
  }
  return places;
}

void addTimeshift(const std::string& machine, std::vector<Snapshot>& snapshots) {
  std::map<std::string, SnapshotRecord> records;
  for (const std::string& place : timeshiftPlaces(machine)) {
    const FileDescriptor top = folderAt(place);
    if (!top) continue;
    for (const char* const layout : {"timeshift", "timeshift-btrfs"}) {
      const FileDescriptor own = folderIn(top.get(), layout);
      if (!own) continue;
      const FileDescriptor folder = folderIn(own.get(), "snapshots");
      if (!folder) continue;
      for (const std::string& name : namesIn(folder, mostEntries)) {
        if (!isTimeshiftName(name)) continue;
        const std::optional<std::string> json = recordIn(folder, name, "info.json");
        const auto record = json ? timeshiftRecord(*json) : std::nullopt;
        if (record) records.emplace(name, *record);
      }
    }
  }
  for (const auto& [name, record] : records) {
    snapshots.push_back({Snapshot::Keeper::timeshift, name, record.made, record.purpose});
  }
}

// Whether the name can be written in a command without quotes, and is short enough for a line.
bool isPlainName(std::string_view name) {
  return name.size() <= 20 && !name.empty() && !name.starts_with('-') &&
         std::ranges::all_of(name, [](char c) {
           return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                  c == '-' || c == '_' || c == '.';
         });
}

}  // namespace

std::vector<Snapshot> snapshotsOf(const std::string& machine) {
  std::vector<Snapshot> snapshots;
  addSnapper(machine, snapshots);
  addTimeshift(machine, snapshots);
  return snapshots;
}

std::string snapperConfigOf(const std::string& machine) {
  const FileDescriptor folder = folderAt(below(machine, "/etc/snapper/configs"));
  std::vector<std::string> names = namesIn(folder, mostEntries);
  std::ranges::sort(names);
  for (const std::string& name : names) {
    const std::optional<std::string> config = smallFile(folder.get(), name, longestRecord, true);
    if (isPlainName(name) && config && shellValue(*config, "SUBVOLUME") == "/") return name;
  }
  return "root";
}

}  // namespace tessaly::tools

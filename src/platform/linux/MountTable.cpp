#include "platform/linux/MountTable.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace tessaly {

namespace {

constexpr std::array<std::string_view, 22> pseudoTypes = {
    "autofs",    "binfmt_misc", "bpf",      "cgroup",   "cgroup2",    "configfs",
    "debugfs",   "devpts",      "devtmpfs", "efivarfs", "fusectl",    "hugetlbfs",
    "mqueue",    "nsfs",        "proc",     "pstore",   "rpc_pipefs", "securityfs",
    "selinuxfs", "sysfs",       "tracefs",  "nfsd"};

// Served over a network, or by the host of a virtual machine.
constexpr std::array<std::string_view, 20> remoteTypes = {
    "9p",    "afs", "beegfs", "ceph",  "cifs",     "coda",   "davfs", "gfs2", "gpfs",  "lustre",
    "ncpfs", "nfs", "nfs4",   "ocfs2", "orangefs", "prl_fs", "pvfs2", "smb3", "smbfs", "vboxsf"};

// File systems in user space are named "fuse", with the name of the program if that is known. These
// programs read files or devices of this machine alone.
constexpr std::array<std::string_view, 12> localFuseTypes = {
    "fuse.bindfs",         "fuse.cryfs",      "fuse.encfs",    "fuse.ext2",
    "fuse.fuse-overlayfs", "fuse.gocryptfs",  "fuse.mergerfs", "fuse.ntfs-3g",
    "fuse.securefs",       "fuse.squashfuse", "fuse.unionfs",  "fuse.zfs"};

template <std::size_t size>
bool isOneOf(const std::array<std::string_view, size>& types, std::string_view type) {
  return std::find(types.begin(), types.end(), type) != types.end();
}

// The kernel writes blanks, tabs, line feeds and backslashes of a path as \ and three octal digits.
std::string unescaped(std::string_view field) {
  std::string text;
  for (std::size_t i = 0; i < field.size(); ++i) {
    const auto octal = [&](std::size_t at) { return field[at] >= '0' && field[at] <= '7'; };
    if (field[i] == '\\' && i + 3 < field.size() && octal(i + 1) && octal(i + 2) && octal(i + 3)) {
      text += static_cast<char>((field[i + 1] - '0') * 64 + (field[i + 2] - '0') * 8 +
                                (field[i + 3] - '0'));
      i += 3;
    } else {
      text += field[i];
    }
  }
  return text;
}

std::vector<std::string_view> fields(std::string_view line) {
  std::vector<std::string_view> found;
  while (!line.empty()) {
    const std::size_t end = std::min(line.find(' '), line.size());
    if (end > 0) found.push_back(line.substr(0, end));
    line.remove_prefix(std::min(end + 1, line.size()));
  }
  return found;
}

std::optional<std::uint64_t> number(std::string_view field) {
  std::uint64_t value = 0;
  const char* const end = field.data() + field.size();
  const auto [stopped, error] = std::from_chars(field.data(), end, value);
  if (error != std::errc() || stopped != end) return std::nullopt;
  return value;
}

// Fields: id, parent, device, root, mount point, options, optional fields, "-", type, source,
// options.
std::optional<Mount> mountOn(std::string_view line) {
  const std::vector<std::string_view> all = fields(line);
  const auto dash = std::find(all.begin(), all.end(), "-");
  if (dash - all.begin() < 6 || all.end() - dash < 2) return std::nullopt;
  const std::optional<std::uint64_t> id = number(all[0]);
  const std::optional<std::uint64_t> parent = number(all[1]);
  if (!id || !parent) return std::nullopt;
  return Mount{.id = *id,
               .parent = *parent,
               .device = std::string(all[2]),
               .root = unescaped(all[3]),
               .point = unescaped(all[4]),
               .type = std::string(*(dash + 1))};
}

}  // namespace

bool Mount::isPseudo() const {
  return isOneOf(pseudoTypes, type);
}

bool Mount::isRemote() const {
  const bool isFuse = type == "fuse" || type.starts_with("fuse.");
  return isFuse ? !isOneOf(localFuseTypes, type) : isOneOf(remoteTypes, type);
}

std::vector<Mount> mountsIn(std::string_view mountinfo) {
  std::vector<Mount> mounts;
  while (!mountinfo.empty()) {
    const std::size_t end = std::min(mountinfo.find('\n'), mountinfo.size());
    if (std::optional<Mount> mount = mountOn(mountinfo.substr(0, end))) {
      mounts.push_back(*std::move(mount));
    }
    mountinfo.remove_prefix(std::min(end + 1, mountinfo.size()));
  }
  return mounts;
}

}  // namespace tessaly

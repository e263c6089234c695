#include "platform/linux/walk/ClosedPlaces.h"

#include <algorithm>
#include <array>
#include <linux/magic.h>
#include <optional>

namespace tessaly::walk {

namespace {

constexpr std::array<std::string_view, 22> pseudoTypes = {
    "autofs",    "binfmt_misc", "bpf",      "cgroup",   "cgroup2",    "configfs",
    "debugfs",   "devpts",      "devtmpfs", "efivarfs", "fusectl",    "hugetlbfs",
    "mqueue",    "nsfs",        "proc",     "pstore",   "rpc_pipefs", "securityfs",
    "selinuxfs", "sysfs",       "tracefs",  "nfsd"};

struct Mount {
  std::string point;
  std::string_view type;
};

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

// id, parent, device, root, mount point, options, optional fields, "-", type, source, options.
std::optional<Mount> parseLine(std::string_view line) {
  const std::vector<std::string_view> all = fields(line);
  const auto dash = std::find(all.begin(), all.end(), "-");
  if (dash - all.begin() < 6 || all.end() - dash < 2) return std::nullopt;
  return Mount{unescaped(all[4]), *(dash + 1)};
}

std::vector<std::string> split(std::string_view path) {
  std::vector<std::string> components;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find('/'), path.size());
    if (end > 0) components.emplace_back(path.substr(0, end));
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  return components;
}

}  // namespace

void ClosedPlaces::close(const std::vector<std::string>& components) {
  ClosedPlaces* place = this;
  for (const std::string& component : components) {
    std::unique_ptr<ClosedPlaces>& child = place->children_[component];
    if (child == nullptr) child = std::make_unique<ClosedPlaces>();
    place = child.get();
  }
  place->closed_ = true;
}

const ClosedPlaces* ClosedPlaces::below(std::string_view name) const {
  const auto found = children_.find(name);
  return found == children_.end() ? nullptr : found->second.get();
}

ClosedPlaces closedPlacesBelow(std::string_view root, std::string_view mountinfo) {
  std::map<std::string, bool> closedByPoint;
  while (!mountinfo.empty()) {
    const std::size_t end = std::min(mountinfo.find('\n'), mountinfo.size());
    if (const std::optional<Mount> mount = parseLine(mountinfo.substr(0, end))) {
      closedByPoint[mount->point] =
          std::find(pseudoTypes.begin(), pseudoTypes.end(), mount->type) != pseudoTypes.end();
    }
    mountinfo.remove_prefix(std::min(end + 1, mountinfo.size()));
  }

  const std::string prefix = root == "/" ? "/" : std::string(root) + "/";
  ClosedPlaces places;
  for (const auto& [point, closed] : closedByPoint) {
    if (closed && point.size() > prefix.size() && point.starts_with(prefix)) {
      places.close(split(std::string_view(point).substr(prefix.size())));
    }
  }
  return places;
}

bool isPseudoFileSystem(long magic) {
  constexpr long mqueueMagic = 0x19800202;
  constexpr long fusectlMagic = 0x65735543;
  constexpr long configfsMagic = 0x62656570;
  constexpr long rpcPipefsMagic = 0x67596969;
  switch (magic) {
    case AUTOFS_SUPER_MAGIC:
    case BINFMTFS_MAGIC:
    case BPF_FS_MAGIC:
    case CGROUP_SUPER_MAGIC:
    case CGROUP2_SUPER_MAGIC:
    case DEBUGFS_MAGIC:
    case DEVPTS_SUPER_MAGIC:
    case EFIVARFS_MAGIC:
    case HUGETLBFS_MAGIC:
    case NSFS_MAGIC:
    case PROC_SUPER_MAGIC:
    case PSTOREFS_MAGIC:
    case SECURITYFS_MAGIC:
    case SELINUX_MAGIC:
    case SYSFS_MAGIC:
    case TRACEFS_MAGIC:
    case mqueueMagic:
    case fusectlMagic:
    case configfsMagic:
    case rpcPipefsMagic:
      return true;
    default:
      return false;
  }
}

}  // namespace tessaly::walk

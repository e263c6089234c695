// The figures against those of other programs: filefrag, and du of btrfs.
#include <algorithm>
#include <charconv>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "blocks/DiskImage.h"
#include "platform/linux/ExtentMap.h"
#include "platform/linux/OpenPath.h"

namespace tessaly {
namespace {

struct Row {
  std::uint64_t logical = 0;  // this and the others in blocks of 4 KiB
  std::uint64_t physical = 0;
  std::uint64_t length = 0;
  bool isShared = false;

  friend bool operator==(const Row&, const Row&) = default;
};

using Rows = std::vector<Row>;

// The rows of filefrag -v: number, logical and physical range, length, flags.
//
//    0:        0..    1023:       3328..      4351:   1024:             last,shared,eof
Rows rowsOf(const std::string& path) {
  Rows rows;
  std::istringstream output(DiskImage::outputOf("filefrag -v '" + path + "'"));
  for (std::string line; std::getline(output, line);) {
    unsigned number = 0;
    unsigned long long logical = 0;
    unsigned long long physical = 0;
    unsigned long long length = 0;
    if (std::sscanf(line.c_str(), " %u: %llu.. %*u: %llu.. %*u: %llu:", &number, &logical,
                    &physical, &length) != 4) {
      continue;
    }
    rows.push_back({.logical = logical,
                    .physical = physical,
                    .length = length,
                    .isShared = line.find("shared") != std::string::npos});
  }
  return rows;
}

// The same, as the engine reads it.
Rows readRowsOf(const std::string& path) {
  Rows rows;
  const FileDescriptor file = openPath(path, O_RDONLY);
  const ReadExtents read = extentsOf(file.get());
  std::uint64_t start = 0;
  while (true) {
    const auto extents = read(start);
    if (!extents || extents->empty()) return rows;
    for (const fiemap_extent& extent : *extents) {
      rows.push_back({.logical = extent.fe_logical / 4096,
                      .physical = extent.fe_physical / 4096,
                      .length = extent.fe_length / 4096,
                      .isShared = (extent.fe_flags & FIEMAP_EXTENT_SHARED) != 0});
    }
    start = extents->back().fe_logical + extents->back().fe_length;
  }
}

class Filefrag : public testing::TestWithParam<FileSystem> {
 protected:
  DiskImage disk_ = DiskImage(GetParam());
};

INSTANTIATE_TEST_SUITE_P(On, Filefrag,
                         testing::Values(FileSystem::btrfs(), FileSystem::xfs(),
                                         FileSystem::ext4()),
                         [](const auto& system) { return system.param.name; });

TEST_P(Filefrag, the_extents_are_those_of_filefrag_and_clones_are_files_with_the_same_ones) {
  const std::string told = disk_.run([&]() -> std::string {
    const bool canClone = GetParam().name != "ext4";
    std::vector<std::string> names = {"whole", "pieces", "empty", "grown"};
    disk_.write("whole", 4 * MiB);
    disk_.writeEverySecondBlock("pieces", 300);
    disk_.write("empty", 0);
    disk_.write("grown", MiB);
    if (canClone) {
      for (const char* name : {"whole", "pieces", "empty", "grown"}) {
        for (const char* suffix : {"-clone", "-changed"}) {
          disk_.clone(name, std::string(name) + suffix);
          names.push_back(std::string(name) + suffix);
        }
      }
      disk_.write("whole-changed", 4 * KiB);
      disk_.write("pieces-changed", 4 * KiB, 200 * 8 * KiB);
      disk_.write("grown-changed", MiB, MiB);
    }
    const std::vector<ShareRecord> records = disk_.records(names);
    std::map<std::string, Rows> rows;
    for (const std::string& name : names) {
      rows[name] = rowsOf(disk_.at(name));
      if (readRowsOf(disk_.at(name)) != rows[name]) return name + " has other extents";
    }
    const FileDescriptor pieces = openPath(disk_.at("pieces"), O_RDONLY);
    if (extentsOf(pieces.get())(0)->size() != 32) return "not 32 extents at a time";
    if (rows["pieces"].size() < 200) return std::to_string(rows["pieces"].size()) + " pieces";
    int clones = 0;
    for (const ShareRecord& one : records) {
      const Rows& own = rows[one.name];
      const bool isShared = !own.empty() && std::all_of(own.begin(), own.end(), [](const Row& row) {
        return row.isShared;
      });
      if ((one.cloneId != 0) != isShared) return one.name + " has a wrong clone id";
      for (const ShareRecord& other : records) {
        if (one.cloneId == 0 || one.path == other.path) continue;
        const bool isClone = one.cloneId == other.cloneId;
        clones += isClone ? 1 : 0;
        if (isClone != (own == rows[other.name])) return one.name + " and " + other.name;
      }
    }
    return clones == (canClone ? 6 : 0) ? "" : std::to_string(clones) + " clones";
  });
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

// A line of btrfs filesystem du --raw.
struct Usage {
  std::int64_t total = 0;  // this and the others in bytes
  std::int64_t exclusive = 0;
  std::int64_t setShared = 0;
};

//      Total   Exclusive  Set shared  Filename
//    4194304           0     4194304  /top/a
std::map<std::string, Usage> usageOf(const std::vector<std::string>& paths) {
  std::string command = "btrfs filesystem du --raw";
  for (const std::string& path : paths) command += " '" + path + "'";
  std::map<std::string, Usage> all;
  std::istringstream output(DiskImage::outputOf(command));
  for (std::string line; std::getline(output, line);) {
    std::istringstream fields(line);
    Usage usage;
    std::string path;
    if (fields >> usage.total >> usage.exclusive >> usage.setShared >> path) all[path] = usage;
  }
  return all;
}

TEST(BtrfsDu, the_arithmetic_of_clones_is_that_of_du) {
  const DiskImage disk(FileSystem::btrfs());
  const std::string told = disk.run([&]() -> std::string {
    disk.write("a", 4 * MiB);
    disk.clone("a", "b");
    disk.clone("a", "c");
    disk.writeEverySecondBlock("pieces", 400);
    disk.clone("pieces", "pieces-too");
    disk.write("sparse", 2 * MiB, 50 * MiB);
    disk.clone("sparse", "sparse-too");
    // These share something, and are no clones of each other.
    disk.write("x", 4 * MiB);
    disk.clone("x", "y");
    disk.write("y", MiB);
    disk.shell("sync");
    const std::vector<ShareGroup> groups = CloneEngine::groups(
        disk.records({"a", "b", "c", "pieces", "pieces-too", "sparse", "sparse-too", "x", "y"}),
        MiB);
    if (groups.size() != 3) return linesOf(groups, disk.top());
    for (const ShareGroup& group : groups) {
      std::vector<std::string> paths;
      for (const ShareRecord& record : group.files) paths.push_back(record.path);
      const std::map<std::string, Usage> all = usageOf(paths);
      if (all.size() != paths.size()) return "du did not list " + group.id;
      std::int64_t total = 0;
      for (const auto& [path, usage] : all) {
        total += usage.total;
        if (usage.exclusive != 0) return path + " has blocks of its own";
        if (usage.total != group.unique) return path + " has another size";
      }
      if (total != group.logical) return "another sum of " + group.id;
    }
    // All files of a set have the same shared bytes; each line shows those of its own argument.
    const std::map<std::string, Usage> partial = usageOf({disk.at("x"), disk.at("y")});
    return partial.at(disk.at("y")).exclusive == MiB ? "" : "y has other blocks of its own";
  });
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

TEST(BtrfsDu, the_unique_bytes_of_a_group_are_those_that_du_calls_shared_by_the_set) {
  const DiskImage disk(FileSystem::btrfs());
  const std::string told = disk.run([&]() -> std::string {
    disk.shell("mkdir '" + disk.at("set") + "'");
    disk.write("set/a", 4 * MiB);
    for (const char* name : {"set/b", "set/c", "set/d"}) disk.clone("set/a", name);
    disk.shell("sync");
    const std::vector<ShareGroup> groups =
        CloneEngine::groups(disk.records({"set/a", "set/b", "set/c", "set/d"}), MiB);
    const Usage set = usageOf({"-s", disk.at("set")}).at(disk.at("set"));
    if (groups.size() != 1) return linesOf(groups, disk.top());
    if (set.total != groups[0].logical) return "another sum";
    if (set.setShared != groups[0].unique) return "other shared bytes";
    return set.total - set.setShared == groups[0].saving() ? "" : "another saving";
  });
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

}  // namespace
}  // namespace tessaly

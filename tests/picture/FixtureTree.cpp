#include "picture/FixtureTree.h"

#include <cstdint>
#include <string>
#include <vector>

#include "scan/FileKindRules.h"
#include "treemap/NodeTint.h"

namespace tessaly {

namespace {

constexpr std::int64_t mega = 1024 * 1024;
constexpr double day = 86400;
constexpr double longAgo = 800.5;

// A file, or a folder with these children.
struct Item {
  std::string name;
  std::int64_t megabytes = 0;
  std::vector<Item> items = {};
  double age =
      longAgo;  // in days; the half keeps the number of days the same while pictures are taken

  std::int64_t size() const {
    std::int64_t sum = megabytes * mega;
    for (const Item& item : items) sum += item.size();
    return sum;
  }
};

const Item& home() {
  static const Item items = {
      "ada",
      0,
      {{"Movies",
        0,
        {{"Iceland 2024", 0, {{"glacier.mov", 5200}, {"puffins.mov", 2900}, {"road.mp4", 1400}}},
         {"wedding.mkv", 4300},
         {"clips", 0, {{"one.mp4", 640}, {"two.mp4", 410}, {"three.mp4", 220}}}}},
       {"Code",
        0,
        {{"atlas",
          0,
          {{"node_modules", 0, {{"typescript", 0, {{"tsc.js", 320}}}, {"esbuild.tar", 190}}},
           {"target", 0, {{"debug.a", 2100, {}, 0.5}, {"release.a", 900, {}, 20.5}}, 0.5},
           {"src", 0, {{"main.rs", 60, {}, 3.5}, {"map.rs", 40}}}}},
         {"notes", 0, {{"journal.md", 30}}}}},
       {"Pictures",
        0,
        {{"2023", 0, {{"a.raw", 900}, {"b.raw", 860}, {"c.jpg", 120}}},
         {"2024",
          0,
          {{"d.raw", 1400, {}, 100.5}, {"e.png", 240, {}, 90.5}, {"f.heic", 180, {}, 90.5}},
          90.5}}},
       {"Downloads",
        0,
        {{"linux.iso", 3800, {}, 12.5}, {"backup.zip", 2600, {}, 100.5}, {"thesis.pdf", 90}}},
       {"VirtualBox VMs", 0, {{"debian.vdi", 6400, {}, 0.5}}, 40.5},
       {".cache", 0, {{"pip", 0, {{"wheels.tar", 700}}}, {"thumbnails", 0, {{"large.png", 310}}}}},
       {"Documents", 0, {{"taxes.pdf", 140}, {"letters.docx", 80}}},
       {"todo.txt", 20}}};
  return items;
}

void add(DiskTreeBuilder& builder, const Item& item, bool isTop, double now) {
  const bool isFolder = !item.items.empty();
  const DiskTreeItem node{.name = item.name,
                          .size = item.size(),
                          .isDir = isFolder,
                          .kind = FileKindRules::classify(item.name, isFolder),
                          .mtime = now - item.age * day};
  if (isTop) {
    builder.open(node, fixtureHome);
  } else {
    builder.openBelow(node);
  }
  for (const Item& inside : item.items) add(builder, inside, false, now);
  builder.close();
}

}  // namespace

DiskNode fixtureTree() {
  DiskTreeBuilder builder;
  add(builder, home(), true, NodeTint::presentTime());
  return builder.finish();
}

DiskNode fixtureTreeOfOne() {
  DiskTreeBuilder builder;
  add(builder, {"ada", 0, {{"linux.iso", 3800, {}, 12.5}}}, true, NodeTint::presentTime());
  return builder.finish();
}

}  // namespace tessaly

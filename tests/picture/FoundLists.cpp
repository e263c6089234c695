#include "picture/FoundLists.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "picture/FixtureFindings.h"
#include "picture/FixtureTree.h"

namespace tessaly {

namespace {

constexpr std::int64_t mega = 1024 * 1024;

// A folder whose paths are too long for a row.
const std::string farDown =
    "Pictures/2023/From the old laptop, before it was repaired/Exports for the family/Films that "
    "nobody has cut yet/";

std::string inHome(const std::string& below) {
  return fixtureHome + std::string("/") + below;
}

std::string nameOf(const std::string& below) {
  return below.substr(below.rfind('/') + 1);
}

DuplicateGroup copiesOf(const std::string& digest, std::int64_t megabytes,
                        const std::vector<std::string>& places) {
  DuplicateGroup group = {.digest = digest, .bytes = megabytes * mega};
  for (const std::string& below : places)
    group.files.push_back({.name = nameOf(below), .path = inHome(below), .size = group.bytes});
  return group;
}

std::vector<DuplicateGroup> duplicates() {
  return {copiesOf("7d865e959b2466918c9863afca942d0fb89d7c9ac0c99bafc3749504ded97730", 4300,
                   {"Downloads/wedding (1).mkv", "Movies/wedding.mkv", farDown + "wedding.mkv"}),
          copiesOf("b5bb9d8014a0f9b1d61e21e796d78dccdf1352f23cd32812f4850b878ae4944c", 3800,
                   {"Downloads/linux.iso", "VirtualBox VMs/images/linux.iso"}),
          copiesOf("0263829989b6fd954f72baaf2fc64bc2e2f01d692d4de72986ea808f6e99813f", 900,
                   {"Code/atlas/target/release.a", "Code/atlas/target/release.a.orig",
                    "Documents/Releases/atlas \u202E release.a", "Downloads/release.a"}),
          copiesOf("a3a5e715f0cc574a73c3f9bebb6bc24f32ffd5b67b387244c2c909da779a1478", 240,
                   {"Pictures/2024/e.png", "Pictures/2024/Wallpapers/e.png"}),
          copiesOf("8d74beec1be996322ad76813bafb92d40839895d6dd7ee808b17ca201eac98be", 62,
                   {"Documents/taxes.pdf", "Downloads/taxes (2).pdf"})};
}

ShareGroup sharing(const std::string& id, const std::string& kind, std::int64_t megabytes,
                   std::int64_t unique, const std::vector<std::string>& places) {
  ShareGroup group = {.id = id, .kind = kind, .unique = unique * mega};
  for (const std::string& below : places) {
    group.files.push_back({.name = nameOf(below),
                           .path = inHome(below),
                           .logical = megabytes * mega,
                           .allocated = unique * mega});
    group.logical += megabytes * mega;
  }
  return group;
}

std::vector<ShareGroup> sharedBlocks() {
  return {sharing("inode-71", "hardlink", 3800, 3800,
                  {"Downloads/linux.iso", "VirtualBox VMs/images/linux.iso"}),
          sharing("clone-9921", "clone", 900, 900,
                  {"Code/atlas/target/release.a", "Code/atlas/target/release.a.orig",
                   "Downloads/release.a"}),
          sharing("clone-312", "clone", 410, 402, {"Movies/clips/two.mp4", farDown + "two.mp4"}),
          sharing("inode-8", "hardlink", 60, 60,
                  {".cache/uv/wheels/torch.whl", "Code/map/.venv/lib/torch.whl",
                   "Code/atlas/.venv/lib/torch.whl", "Code/notes/.venv/lib/torch.whl"})};
}

DeadLink deadLink(const std::string& below, const std::string& destination,
                  const std::string& kind = "symlink") {
  return {.name = nameOf(below), .path = inHome(below), .destination = destination, .kind = kind};
}

DeadLink lock(const std::string& below, const std::string& destination) {
  DeadLink link = deadLink(below, destination);
  link.isLock = true;
  return link;
}

std::vector<DeadLink> deadLinks() {
  return {deadLink("Code/atlas/target/latest", "../builds/2024-11-02"),
          deadLink("Desktop/Photos of the year.desktop", "/media/ada/Photos/2024", "alias"),
          deadLink("Desktop/Backup.desktop", "", "alias"),
          lock(".config/chromium/SingletonLock", "workstation-48213"),
          deadLink("Documents/Releases/atlas \u202E current",
                   "/srv/releases/of a project that has moved to another machine/and then to a "
                   "third one/atlas/current/with all of its symbols and maps"),
          deadLink(farDown + "wedding.mkv", "../../../../Movies/Films/wedding.mkv"),
          deadLink(".local/bin/atlas", "/opt/atlas/bin/atlas"),
          lock("Code/notes/.#journal.md", "ada@workstation.1290:1699990000"),
          deadLink("Downloads/latest.iso", "debian-11.iso")};
}

CloudItem inCloud(const std::string& below, std::int64_t megabytes) {
  return {.name = nameOf(below) + ".nextcloud",
          .path = inHome("Nextcloud/" + below + ".nextcloud"),
          .size = megabytes * mega};
}

std::vector<CloudItem> cloudItems() {
  return {inCloud("Films/wedding, uncut.mkv", 8800), inCloud("Photos/2019/Norway.zip", 2600),
          inCloud(farDown + "Norway.tar", 1230),     inCloud("Talks/atlas \u202E slides.pdf", 41),
          inCloud("Documents/letters.docx", 0),      inCloud("Documents/lease.pdf", 0)};
}

template <class Row>
PostScanAnalysis::Engine<Row> finding(std::vector<Row> rows, std::size_t count) {
  rows.resize(std::min(count, rows.size()));
  return [rows = std::move(rows)](const auto&, const auto&) { return rows; };
}

}  // namespace

PostScanAnalysis::Engines analysisThatFinds(std::size_t count) {
  return {.duplicates =
              [find = finding(duplicates(), count)](const PostScanAnalysis::FinishedScan& scan,
                                                    const PostScanAnalysis::IsCancelled& test) {
                scan.duplicates.progress(
                    {.files = 12, .fileCount = 40, .bytes = 1229 * mega, .byteCount = 8192 * mega});
                return find(scan, test);
              },
          .deadLinks = finding(deadLinks(), count),
          .cloudItems = finding(cloudItems(), count),
          .cloneGroups = finding(sharedBlocks(), count),
          .safeItems = finding(fixtureSafeItems(count), count)};
}

}  // namespace tessaly

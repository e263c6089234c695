#include "treemap/BloatFilter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unordered_set>
#include <vector>

namespace tessaly {
namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

// A filter of the catalogue as a line "id|name|symbol|pattern;pattern".
std::string line(const BloatFilter& filter) {
  std::string text = filter.id + "|" + filter.name + "|" + filter.symbol + "|";
  for (const std::string& pattern : filter.patterns) {
    if (&pattern != &filter.patterns.front()) text += ";";
    text += pattern;
  }
  return text;
}

std::vector<BloatFilter> skipping(const std::vector<std::string>& ids) {
  std::vector<BloatFilter> filters = BloatFilter::catalog();
  for (BloatFilter& filter : filters) {
    for (const std::string& id : ids) filter.skipScan = filter.skipScan || filter.id == id;
  }
  return filters;
}

BloatFilter::ScanExcludes excludesOf(const std::vector<std::string>& patterns) {
  return BloatFilter::scanExcludes({{"id", "Name", patterns, "symbol", false, true}});
}

TEST(BloatFilterCatalog, the_catalogue_has_twelve_filters_in_the_order_of_the_sidebar) {
  std::vector<std::string> lines;
  for (const BloatFilter& filter : BloatFilter::catalog()) lines.push_back(line(filter));
  EXPECT_THAT(
      lines,
      ::testing::ElementsAre(
          "node_modules|Node.js|shippingbox|node_modules",
          "xcode|Xcode|hammer|DerivedData;iOS DeviceSupport;watchOS DeviceSupport",
          "build|Build Artifacts|folder|.next;dist;build;out;.nuxt;.output;__pycache__;.cache",
          "android|Android|iphone|.gradle;.android;Android Studio",
          "docker|Docker|externaldrive|Docker.raw;com.docker.docker",
          "videos|Videos|video|.mp4;.mkv;.avi;.mov;.wmv;.flv;.webm;.m4v;.mpg;.mpeg",
          "disk_images|Disk Images|opticaldiscdrive|.dmg;.iso;.img;.sparseimage;.sparsebundle",
          "archives|Archives|archivebox|.zip;.tar;.gz;.rar;.7z;.bz2;.xz;.pkg",
          "ios_backups|iOS Backups|iphone|MobileSync;iPhone Backup;iPad Backup;"
          "Application Support/MobileSync",
          "virtual_machines|Virtual Machines|desktopcomputer|.vmdk;.vdi;.vhd;.vmwarevm;.pvm;"
          "Parallels;Virtual Machines;VirtualBox VMs",
          "large_media|Large Media|photo|.psd;.ai;.indd;.raw;.cr2;.nef;.dng;.arw;.orf;.tiff",
          "logs_caches|Logs & Caches|doc.text|Caches;Logs;CrashReporter;DiagnosticReports;.log"));
}

TEST(BloatFilterCatalog, all_filters_of_the_catalogue_are_off) {
  for (const BloatFilter& filter : BloatFilter::catalog()) {
    EXPECT_FALSE(filter.enabled) << filter.id;
    EXPECT_FALSE(filter.skipScan) << filter.id;
  }
}

TEST(BloatFilter, equality_and_hash_cover_all_six_fields) {
  const BloatFilter filter = {"id", "Name", {"a", "b"}, "symbol", false, false};
  std::vector<BloatFilter> others(6, filter);
  others[0].id = "other";
  others[1].name = "Other";
  others[2].patterns = {"b", "a"};
  others[3].symbol = "other";
  others[4].enabled = true;
  others[5].skipScan = true;
  std::unordered_set<BloatFilter> all = {filter, BloatFilter(filter)};
  EXPECT_EQ(all.size(), 1U);
  const std::hash<BloatFilter> hash;
  for (const BloatFilter& other : others) {
    EXPECT_NE(other, filter);
    EXPECT_NE(hash(other), hash(filter));
    all.insert(other);
  }
  EXPECT_EQ(all.size(), 7U);
}

TEST(ScanExcludes, filters_that_skip_nothing_exclude_nothing) {
  for (const std::vector<BloatFilter>& filters :
       {std::vector<BloatFilter>{}, BloatFilter::catalog()}) {
    const BloatFilter::ScanExcludes excludes = BloatFilter::scanExcludes(filters);
    EXPECT_THAT(excludes.names, IsEmpty());
    EXPECT_THAT(excludes.suffixes, IsEmpty());
  }
}

TEST(ScanExcludes, enabling_a_filter_excludes_nothing_from_a_scan) {
  std::vector<BloatFilter> filters = BloatFilter::catalog();
  for (BloatFilter& filter : filters) filter.enabled = true;
  EXPECT_THAT(BloatFilter::scanExcludes(filters).names, IsEmpty());
  EXPECT_THAT(BloatFilter::scanExcludes(filters).suffixes, IsEmpty());
}

TEST(ScanExcludes, short_dotted_patterns_of_folders_are_suffixes) {
  const BloatFilter::ScanExcludes excludes =
      BloatFilter::scanExcludes(skipping({"build", "android"}));
  EXPECT_THAT(excludes.suffixes,
              UnorderedElementsAre(".next", ".nuxt", ".output", ".cache", ".gradle", ".android"));
  EXPECT_THAT(excludes.names,
              UnorderedElementsAre("dist", "build", "out", "__pycache__", "Android Studio"));
}

TEST(ScanExcludes, long_dotted_patterns_are_names) {
  const BloatFilter::ScanExcludes excludes =
      BloatFilter::scanExcludes(skipping({"disk_images", "virtual_machines"}));
  EXPECT_THAT(excludes.suffixes,
              UnorderedElementsAre(".dmg", ".iso", ".img", ".vmdk", ".vdi", ".vhd", ".pvm"));
  EXPECT_THAT(excludes.names,
              UnorderedElementsAre(".sparseimage", ".sparsebundle", ".vmwarevm", "Parallels",
                                   "Virtual Machines", "VirtualBox VMs"));
}

TEST(ScanExcludes, names_keep_their_slashes_and_inner_dots) {
  const BloatFilter::ScanExcludes excludes =
      BloatFilter::scanExcludes(skipping({"ios_backups", "docker"}));
  EXPECT_THAT(excludes.suffixes, IsEmpty());
  EXPECT_THAT(excludes.names, UnorderedElementsAre("MobileSync", "iPhone Backup", "iPad Backup",
                                                   "Application Support/MobileSync", "Docker.raw",
                                                   "com.docker.docker"));
}

TEST(ScanExcludes, a_suffix_has_at_most_eight_characters) {
  const BloatFilter::ScanExcludes excludes = excludesOf({".1234567", ".12345678"});
  EXPECT_THAT(excludes.suffixes, UnorderedElementsAre(".1234567"));
  EXPECT_THAT(excludes.names, UnorderedElementsAre(".12345678"));
}

TEST(ScanExcludes, the_length_of_a_suffix_is_in_characters_and_not_in_bytes) {
  const std::string eight = ".\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9";
  EXPECT_THAT(excludesOf({eight}).suffixes, UnorderedElementsAre(eight));
  EXPECT_THAT(excludesOf({eight + "\u00e9"}).names, UnorderedElementsAre(eight + "\u00e9"));
}

TEST(ScanExcludes, a_pattern_with_a_second_dot_is_a_name) {
  EXPECT_THAT(excludesOf({".tar.gz", ".a."}).names, UnorderedElementsAre(".tar.gz", ".a."));
  EXPECT_THAT(excludesOf({"a.gz"}).names, UnorderedElementsAre("a.gz"));
}

TEST(ScanExcludes, only_suffixes_are_lower_cased) {
  const BloatFilter::ScanExcludes excludes = excludesOf({".ISO", "Logs", ".A.B"});
  EXPECT_THAT(excludes.suffixes, UnorderedElementsAre(".iso"));
  EXPECT_THAT(excludes.names, UnorderedElementsAre("Logs", ".A.B"));
}

TEST(ScanExcludes, excludes_of_all_skipping_filters_are_joined) {
  EXPECT_THAT(BloatFilter::scanExcludes(skipping({"node_modules", "xcode", "logs_caches"})).names,
              UnorderedElementsAre("node_modules", "DerivedData", "iOS DeviceSupport",
                                   "watchOS DeviceSupport", "Caches", "Logs", "CrashReporter",
                                   "DiagnosticReports"));
}

}  // namespace
}  // namespace tessaly

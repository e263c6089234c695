// What a test needs of the machine beyond what every machine has, as the reason of a skip:
//
//   if (geteuid() != 0) GTEST_SKIP() << needs(Need::root, "only root gives folders away");
//
// or inside a text that tells more. tests/skips looks for itself whether the machine has what a
// skipped test needs, so that no test is skipped by mistake. What is new here needs a look there.
#pragma once

#include <string>

namespace tessaly {

enum class Need {
  root,
  tracing,          // of a child's system calls, and changing them
  mounts,           // in a list of mounts of one's own
  fuse,             // a file system that a program serves
  image,            // a file system in a file
  fixedAttributes,  // files that not even root changes
  vfat,
  btrfs,
  bindfs,
  overlay,        // layers over folders
  quota,          // on a file system in memory
  changedRoot,    // a root of its own
  lastingInodes,  // in the folder of the tests
  rootFile,       // a file directly in "/"
  listedRoot,     // "/" in the list of df
  countedReads,   // how much a process has read
  spareNiceness,  // the tests do not run at the lowest priority
  gio,
  gioTrash,  // gio, and what it asks on the session bus
  trashCli,
  plainBuild,  // one without sanitizers
};

inline const char* nameOf(Need need) {
  switch (need) {
    case Need::root:
      return "root";
    case Need::tracing:
      return "tracing";
    case Need::mounts:
      return "mounts";
    case Need::fuse:
      return "fuse";
    case Need::image:
      return "image";
    case Need::fixedAttributes:
      return "fixed-attributes";
    case Need::vfat:
      return "vfat";
    case Need::btrfs:
      return "btrfs";
    case Need::bindfs:
      return "bindfs";
    case Need::overlay:
      return "overlay";
    case Need::quota:
      return "quota";
    case Need::changedRoot:
      return "changed-root";
    case Need::lastingInodes:
      return "lasting-inodes";
    case Need::rootFile:
      return "root-file";
    case Need::listedRoot:
      return "listed-root";
    case Need::countedReads:
      return "counted-reads";
    case Need::spareNiceness:
      return "spare-niceness";
    case Need::gio:
      return "gio";
    case Need::gioTrash:
      return "gio-trash";
    case Need::trashCli:
      return "trash-cli";
    case Need::plainBuild:
      return "plain-build";
  }
  return "";
}

inline std::string needs(Need need, const std::string& why) {
  return std::string("needs ") + nameOf(need) + ": " + why;
}

}  // namespace tessaly

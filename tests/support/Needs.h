// What a test needs that not every machine has, as the reason of a skip:
//
//   if (geteuid() != 0) GTEST_SKIP() << needs(Need::root, "only root gives folders away");
//
// or inside a longer text. tests/skips checks whether the machine meets the needs of skipped tests,
// so that no test is skipped by mistake. Each new need must be added there.
#pragma once

#include <string>

namespace tessaly {

enum class Need {
  root,
  tracing,          // tracing a child's system calls, and changing them
  mounts,           // mounting in a mount namespace of one's own
  fuse,             // a FUSE file system
  image,            // a file system in an image file
  fixedAttributes,  // files that not even root can change
  vfat,
  btrfs,
  xfs,
  bindfs,
  overlay,        // overlayfs
  quota,          // on a tmpfs
  changedRoot,    // chroot
  lastingInodes,  // in the folder of the tests, numbers of inodes that last
  pageCache,      // in /var/tmp, files that the page cache keeps and drops
  dropBehind,     // there, reads that leave nothing in the page cache
  rootFile,       // a file directly in "/"
  listedRoot,     // "/" in the output of df
  countedReads,   // the number of bytes that a process has read
  spareNiceness,  // a priority above the lowest
  gio,
  gioTrash,  // gio, and its service on the session bus
  trashCli,
  plainBuild,  // a build without sanitizers
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
    case Need::xfs:
      return "xfs";
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
    case Need::pageCache:
      return "page-cache";
    case Need::dropBehind:
      return "drop-behind";
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

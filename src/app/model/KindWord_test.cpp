#include "app/model/KindWord.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(KindWord, every_kind_has_a_word) {
  EXPECT_EQ(KindWord::of(FileKind::folder), "Folder");
  EXPECT_EQ(KindWord::of(FileKind::app), "Application");
  EXPECT_EQ(KindWord::of(FileKind::video), "Video");
  EXPECT_EQ(KindWord::of(FileKind::image), "Image");
  EXPECT_EQ(KindWord::of(FileKind::document), "Document");
  EXPECT_EQ(KindWord::of(FileKind::code), "Developer");
  EXPECT_EQ(KindWord::of(FileKind::archive), "Archive");
  EXPECT_EQ(KindWord::of(FileKind::disk), "Disk image");
  EXPECT_EQ(KindWord::of(FileKind::other), "File");
}

TEST(KindWord, a_directory_is_a_folder_whatever_its_kind) {
  const DiskNode bundle({.name = "Tool.app",
                         .path = "/Tool.app",
                         .size = 1,
                         .isDir = true,
                         .kind = FileKind::app,
                         .mtime = {}});
  EXPECT_EQ(KindWord::of(bundle), "Folder");
  const DiskNode file({.name = "Tool.app",
                       .path = "/Tool.app",
                       .size = 1,
                       .isDir = false,
                       .kind = FileKind::app,
                       .mtime = {}});
  EXPECT_EQ(KindWord::of(file), "Application");
}

}  // namespace
}  // namespace tessaly

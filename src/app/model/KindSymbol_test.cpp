#include "app/model/KindSymbol.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(KindSymbol, is_there_for_every_kind_of_file) {
  EXPECT_EQ(KindSymbol::of(FileKind::folder), "folder.fill");
  EXPECT_EQ(KindSymbol::of(FileKind::app), "app.badge");
  EXPECT_EQ(KindSymbol::of(FileKind::video), "film");
  EXPECT_EQ(KindSymbol::of(FileKind::image), "photo");
  EXPECT_EQ(KindSymbol::of(FileKind::document), "doc.text");
  EXPECT_EQ(KindSymbol::of(FileKind::code), "curlybraces");
  EXPECT_EQ(KindSymbol::of(FileKind::archive), "archivebox");
  EXPECT_EQ(KindSymbol::of(FileKind::disk), "externaldrive");
  EXPECT_EQ(KindSymbol::of(FileKind::other), "doc");
}

TEST(KindSymbol, is_a_folder_for_every_directory) {
  const DiskNode bundle({.name = "Tool.app",
                         .path = "/Tool.app",
                         .size = 1,
                         .isDir = true,
                         .kind = FileKind::app,
                         .mtime = {}});
  EXPECT_EQ(KindSymbol::of(bundle), "folder.fill");
}

}  // namespace
}  // namespace tessaly

#include "app/model/KindSymbol.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(KindSymbol, every_kind_of_file_has_a_symbol) {
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

TEST(KindSymbol, every_directory_has_the_symbol_of_folders) {
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

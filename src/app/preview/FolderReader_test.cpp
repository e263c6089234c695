#include "app/preview/FolderReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <variant>
#include <vector>

#include "support/PreviewFile.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

FolderPreview folderAt(const TempTree& tree, const PreviewRequest& request = {}) {
  const PreviewBody body = FolderReader::read(held(tree.path()), request);
  if (const auto* folder = std::get_if<FolderPreview>(&body)) return *folder;
  ADD_FAILURE() << "no folder: " << body.index();
  return {};
}

std::vector<std::string> namesIn(const FolderPreview& folder) {
  std::vector<std::string> names;
  for (const FolderPreview::Item& item : folder.items) {
    names.push_back(item.name + (item.isDir ? "/" : ""));
  }
  return names;
}

TEST(FolderReader, folders_are_listed_first_and_then_by_name) {
  const TempTree tree("beta\nAlpha\nalpha\nZoo/\n  inside\n.hidden\naviary/\n\\xFFodd\nÄpfel");
  const FolderPreview folder = folderAt(tree);
  EXPECT_THAT(namesIn(folder), ElementsAre("aviary/", "Zoo/", ".hidden", "Alpha", "alpha", "beta",
                                           "Äpfel", "\xFFodd"));
  EXPECT_EQ(folder.count, 8);
}

TEST(FolderReader, only_files_have_a_size) {
  const TempTree tree("folder/\n  inside 5K\nfile 300\nsparse sparse=1G\npipe fifo");
  const FolderPreview folder = folderAt(tree);
  ASSERT_EQ(folder.items.size(), 4U);
  EXPECT_EQ(folder.items[0].size, 0);
  EXPECT_EQ(folder.items[1].size, 300);
  EXPECT_EQ(folder.items[2].size, 0);
  EXPECT_EQ(folder.items[3].size, 1 << 30);
}

TEST(FolderReader, all_items_are_counted_and_the_first_are_listed) {
  const TempTree tree("file#### x2000\nfolder#/ x5");
  PreviewRequest request;
  request.limits.folderItems = 7;
  const FolderPreview folder = folderAt(tree, request);
  EXPECT_EQ(folder.count, 2005);
  EXPECT_THAT(namesIn(folder), ElementsAre("folder0/", "folder1/", "folder2/", "folder3/",
                                           "folder4/", "file0000", "file0001"));
}

TEST(FolderReader, an_empty_folder_has_no_items) {
  const FolderPreview folder = folderAt(TempTree());
  EXPECT_EQ(folder.count, 0);
  EXPECT_THAT(folder.items, IsEmpty());
}

TEST(FolderReader, a_cancelled_request_stops_listing) {
  const TempTree tree("file#### x1000");
  int polls = 0;
  PreviewRequest request;
  request.cancelled = [&polls] { return ++polls >= 10; };
  const PreviewBody body = FolderReader::read(held(tree.path()), request);
  EXPECT_TRUE(std::holds_alternative<FactsOnly>(body));
  EXPECT_EQ(polls, 10);
}

}  // namespace
}  // namespace tessaly

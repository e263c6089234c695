#include "reclaim/Offloaded.h"

#include <algorithm>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "support/ForkedChild.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class OffloadedTest : public testing::Test {
 protected:
  static constexpr int limit = 200;

  std::vector<CloudItem> found(int most = limit) const {
    return ProInsights::offloaded(tree_.path(), most);
  }
  // Their paths below the top.
  std::vector<std::string> offloaded(int most = limit) const {
    std::vector<std::string> paths;
    for (const CloudItem& item : found(most)) {
      EXPECT_TRUE(item.path.ends_with("/" + item.name)) << item.path;
      EXPECT_EQ(item.size, 0) << item.path;
      paths.push_back(item.path.substr(tree_.path().size() + 1));
    }
    return paths;
  }

  TempTree tree_;
};

TEST_F(OffloadedTest, placeholders_of_sync_clients_are_listed_with_unknown_sizes) {
  tree_.plant("film.mkv.nextcloud 1\nsong.ogg.owncloud 1\nnote.txt 1\n");
  EXPECT_THAT(found(),
              UnorderedElementsAre(
                  CloudItem{.name = "film.mkv.nextcloud", .path = tree_.at("film.mkv.nextcloud")},
                  CloudItem{.name = "song.ogg.owncloud", .path = tree_.at("song.ogg.owncloud")}));
}

TEST_F(OffloadedTest, what_only_has_such_a_name_is_not_listed) {
  tree_.plant(R"(
    folder.nextcloud/
      inner.nextcloud 1
    link.nextcloud -> folder.nextcloud/inner.nextcloud
    pipe.nextcloud fifo
    content.nextcloud 65
    .nextcloud 1
    .owncloud 1
    a.Nextcloud 1
    a.nextcloud.txt 1
  )");
  EXPECT_THAT(offloaded(), ElementsAre("folder.nextcloud/inner.nextcloud"));
}

TEST_F(OffloadedTest, hidden_folders_packages_and_the_trash_are_searched_and_links_not_followed) {
  tree_.plant(R"(
    .hidden/
      a.nextcloud 1
    Some.app/
      b.nextcloud 1
    .Trash/
      c.nextcloud 1
    link -> Some.app
  )");
  EXPECT_THAT(offloaded(), UnorderedElementsAre(".hidden/a.nextcloud", "Some.app/b.nextcloud",
                                                ".Trash/c.nextcloud"));
}

TEST_F(OffloadedTest, the_201st_item_is_not_listed) {
  tree_.plant("f###.nextcloud 1 x201\n");
  EXPECT_EQ(found().size(), 200U);
  EXPECT_EQ(found(201).size(), 201U);
  EXPECT_THAT(found(0), IsEmpty());
}

// All have the same size.
TEST_F(OffloadedTest, items_of_one_size_are_in_the_order_of_the_walk) {
  tree_.plant("f##.nextcloud 1 x50\na/\n  g##.nextcloud 1 x50\n");
  const std::vector<std::string> all = offloaded();
  ASSERT_EQ(all.size(), 100U);
  const std::vector<std::string> first = offloaded(20);
  EXPECT_TRUE(std::equal(first.begin(), first.end(), all.begin()));
}

// No client on this system tells sizes, so here the names do.
TEST_F(OffloadedTest, larger_items_come_first_and_equal_ones_stay_in_the_order_of_the_walk) {
  tree_.plant("1##.nextcloud 1 x20\n2##.nextcloud 1 x20\n");
  const auto sizeOf = [](const std::string&, const std::string& name) -> std::int64_t {
    return name.front() - '0';
  };
  std::vector<CloudItem> walked = ProInsights::offloaded(tree_.path(), limit);
  ASSERT_EQ(walked.size(), 40U);
  for (CloudItem& item : walked) item.size = sizeOf("", item.name);
  std::vector<CloudItem> expected;
  for (const std::int64_t size : {2, 1}) {
    std::copy_if(walked.begin(), walked.end(), std::back_inserter(expected),
                 [size](const CloudItem& item) { return item.size == size; });
  }
  EXPECT_EQ(ProInsights::offloaded(tree_.path(), limit, {}, nullptr, sizeOf), expected);
}

TEST_F(OffloadedTest, a_root_that_is_gone_has_none) {
  EXPECT_THAT(ProInsights::offloaded(tree_.at("gone"), limit), IsEmpty());
}

TEST_F(OffloadedTest, folders_that_cannot_be_read_are_passed_over) {
  tree_.plant("closed/ mode=0700\n  a.nextcloud 1\nopen/\n  b.nextcloud 1 mode=0600\n");
  const std::string told = asOtherUser([this] {
    std::string all;
    for (const std::string& path : offloaded()) all += path + " ";
    return all;
  });
  if (geteuid() == 0) {
    EXPECT_EQ(told, "open/b.nextcloud ");
  }
  EXPECT_NE(told.find("open/b.nextcloud"), std::string::npos);
}

TEST_F(OffloadedTest, a_search_that_is_cancelled_ends) {
  tree_.plant("f##.nextcloud 1 x50\n");
  int asked = 0;
  EXPECT_LT(ProInsights::offloaded(tree_.path(), limit, [&asked] { return ++asked > 10; }).size(),
            11U);
  EXPECT_EQ(asked, 11);
}

}  // namespace
}  // namespace tessaly

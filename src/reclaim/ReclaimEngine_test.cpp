#include "reclaim/ReclaimEngine.h"

#include <gmock/gmock.h>
#include <map>
#include <unordered_set>

#include "platform/ReclaimPlaces.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Sizes by path; everything else is missing.
ReclaimEngine::Measure sizes(const std::map<std::string, std::int64_t>& known) {
  return [known](const std::string& path) {
    const auto found = known.find(path);
    return found != known.end() ? found->second : 0;
  };
}

std::vector<std::string> idsOf(const std::vector<ReclaimItem>& items) {
  std::vector<std::string> ids;
  for (const ReclaimItem& item : items) ids.push_back(item.id);
  return ids;
}

TEST(ReclaimEngine, the_catalogue_is_that_of_the_system) {
  EXPECT_EQ(ReclaimEngine::catalog(Places::forMacos()), Places::forMacos().reclaimPlaces);
  EXPECT_EQ(ReclaimEngine::catalog(Places::forLinux()), Places::forLinux().reclaimPlaces);
  EXPECT_EQ(&ReclaimEngine::catalog(), &Places::current().reclaimPlaces);
}

TEST(ReclaimEngine, a_home_without_any_location_has_no_rows) {
  for (const Places* places : {&Places::forMacos(), &Places::forLinux()}) {
    EXPECT_THAT(ReclaimEngine::probe("/home/ada", sizes({}), places->reclaimPlaces), IsEmpty());
  }
}

TEST(ReclaimEngine, each_location_is_measured_once_in_the_order_of_the_catalogue) {
  for (const auto& places : {macosReclaimPlaces(), linuxReclaimPlaces()}) {
    std::vector<std::string> measured;
    ReclaimEngine::probe(
        "/home/ada",
        [&](const std::string& path) {
          measured.push_back(path);
          return 0;
        },
        places);
    std::vector<std::string> expected;
    for (const ReclaimPlace& place : places) {
      expected.push_back("/home/ada/" + place.relativePath);
    }
    EXPECT_EQ(measured, expected);
  }
}

TEST(ReclaimEngine, a_location_elsewhere_than_in_the_home_is_measured_there) {
  const std::vector<ReclaimPlace> places = linuxReclaimPlaces("/data/ada/Trash");
  const auto measure = sizes({{"/data/ada/Trash", 5}, {"/home/ada/.local/share/Trash", 7}});
  const std::vector<ReclaimItem> items = ReclaimEngine::probe("/home/ada", measure, places);
  ASSERT_THAT(idsOf(items), ElementsAre("trash"));
  EXPECT_EQ(items[0].path, "/data/ada/Trash");
  EXPECT_EQ(items[0].bytes, 5);
}

TEST(ReclaimEngine, rows_are_sorted_by_size_and_equal_ones_keep_the_order_of_the_catalogue) {
  const auto measure = [](const std::string& path) -> std::int64_t {
    return path.ends_with(".gradle/caches") ? 4096 : path.ends_with(".m2/repository") ? 8192 : 1024;
  };
  const std::vector<ReclaimItem> items =
      ReclaimEngine::probe("/u", measure, Places::forMacos().reclaimPlaces);
  ASSERT_EQ(items.size(), 20U);
  EXPECT_EQ(items[0].id, "maven");
  EXPECT_EQ(items[1].id, "gradle");
  std::vector<std::string> rest;
  for (const ReclaimPlace& place : Places::forMacos().reclaimPlaces) {
    if (place.id != "maven" && place.id != "gradle") rest.push_back(place.id);
  }
  EXPECT_EQ(idsOf({items.begin() + 2, items.end()}), rest);
}

TEST(ReclaimEngine, a_location_that_takes_nothing_has_no_row) {
  const auto measure =
      sizes({{"/u/.npm/_cacache", 0}, {"/u/.cargo/registry", -4096}, {"/u/.m2/repository", 1}});
  EXPECT_THAT(idsOf(ReclaimEngine::probe("/u", measure, Places::forMacos().reclaimPlaces)),
              ElementsAre("maven"));
}

TEST(ReclaimEngine, a_row_has_the_words_of_the_catalogue_and_its_own_path) {
  const auto measure = sizes({{"/u/Library/Mobile Documents", 5}});
  EXPECT_THAT(ReclaimEngine::probe("/u", measure, Places::forMacos().reclaimPlaces),
              ElementsAre(ReclaimItem{.id = "icloud",
                                      .label = "iCloud Drive local copy",
                                      .relativePath = "Library/Mobile Documents",
                                      .note = "Files also live in iCloud; keep if you work offline",
                                      .caution = true,
                                      .path = "/u/Library/Mobile Documents",
                                      .bytes = 5}));
}

TEST(ReclaimEngine, the_home_may_be_the_root_and_need_not_be_utf_8) {
  const std::vector<ReclaimPlace> places = {{.id = "x", .relativePath = "a b"}};
  const auto pathFor = [&](const std::string& home) {
    return ReclaimEngine::probe(
               home, [](const std::string&) { return 1; }, places)[0]
        .path;
  };
  EXPECT_EQ(pathFor("/"), "/a b");
  EXPECT_EQ(pathFor("/u"), "/u/a b");
  EXPECT_EQ(pathFor("/\xFF"), "/\xFF/a b");
}

TEST(ReclaimEngine, only_the_trash_is_emptied_in_place) {
  for (const Places* places : {&Places::forMacos(), &Places::forLinux()}) {
    EXPECT_TRUE(ReclaimEngine::isTrashAction("trash", places->reclaimPlaces));
    EXPECT_FALSE(ReclaimEngine::isTrashAction("npm", places->reclaimPlaces));
    EXPECT_FALSE(ReclaimEngine::isTrashAction("none", places->reclaimPlaces));
    EXPECT_FALSE(ReclaimEngine::isTrashAction("", places->reclaimPlaces));
  }
}

TEST(ReclaimEngine, the_first_row_with_an_id_decides_whether_it_is_emptied) {
  const std::vector<ReclaimPlace> places = {{.id = "a"}, {.id = "a", .trashAction = true}};
  EXPECT_FALSE(ReclaimEngine::isTrashAction("a", places));
}

TEST(ReclaimEngine, rows_can_be_members_of_a_hash_table) {
  const ReclaimItem one{.id = "npm", .path = "/u/.npm/_cacache", .bytes = 1};
  ReclaimItem grown = one;
  grown.bytes = 2;
  const std::unordered_set<ReclaimItem> items = {one, one, grown};
  EXPECT_EQ(items.size(), 2U);
}

}  // namespace
}  // namespace tessaly

#include "reclaim/DeadLinks.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "platform/DirectoryWalk.h"
#include "platform/WalkedPath.h"
#include "support/Descriptor.h"
#include "support/ForkedChild.h"
#include "support/PlainFiles.h"
#include "support/PrivateMounts.h"
#include "support/SystemCallTrace.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class DeadLinksTest : public testing::Test {
 protected:
  static constexpr int limit = 200;

  std::vector<DeadLink> found(int most = limit) const {
    return ProInsights::deadLinks(tree_.path(), most, {}, places_);
  }
  // Their paths below the top.
  std::vector<std::string> dead(int most = limit) const { return below(found(most)); }
  std::vector<std::string> below(const std::vector<DeadLink>& links) const {
    std::vector<std::string> paths;
    for (const DeadLink& link : links) {
      EXPECT_TRUE(link.path.ends_with("/" + link.name)) << link.path;
      paths.push_back(link.path.substr(tree_.path().size() + 1));
    }
    return paths;
  }

  TempTree tree_;
  Places places_ = Places::forLinux();
};

TEST_F(DeadLinksTest, a_relative_link_is_listed_once_its_target_is_not_beside_it) {
  tree_.plant("here/\n  target\n  link -> target\nelsewhere/\n");
  EXPECT_THAT(found(), IsEmpty());
  fs::rename(tree_.at("here/link"), tree_.at("elsewhere/link"));
  EXPECT_THAT(found(), ElementsAre(DeadLink{.name = "link",
                                            .path = tree_.at("elsewhere/link"),
                                            .destination = "target",
                                            .kind = "symlink"}));
}

TEST_F(DeadLinksTest, hidden_links_and_those_in_hidden_folders_are_listed) {
  tree_.plant(".dead -> gone\n.folder/\n  dead -> /gone/too\n");
  EXPECT_THAT(dead(), UnorderedElementsAre(".dead", ".folder/dead"));
}

TEST_F(DeadLinksTest, targets_below_files_and_circles_are_dead) {
  tree_.plant("file\nbelow -> file/x\nself -> self\na -> b\nb -> a\nto-dead -> below\n");
  EXPECT_THAT(dead(), UnorderedElementsAre("below", "self", "a", "b", "to-dead"));
}

TEST_F(DeadLinksTest, a_link_to_a_folder_is_not_followed) {
  tree_.plant("folder/\n  dead -> gone\nlink -> folder\nup -> .\n");
  EXPECT_THAT(dead(), ElementsAre("folder/dead"));
}

TEST_F(DeadLinksTest, the_201st_link_is_not_listed) {
  tree_.plant("folder/\n  dead### -> gone x201\n");
  EXPECT_EQ(found().size(), 200U);
  EXPECT_EQ(found(201).size(), 201U);
  EXPECT_EQ(found(1).size(), 1U);
  EXPECT_THAT(found(0), IsEmpty());
  EXPECT_THAT(found(-1), IsEmpty());
}

TEST_F(DeadLinksTest, links_are_in_the_order_of_the_walk) {
  tree_.plant("a### -> gone x30\nb/\n  c/\n    d### -> gone x30\n  e -> gone\nf/\n  g -> gone\n");
  std::vector<std::string> walked;
  DirectoryWalk walk(tree_.path(), {}, 1);
  WalkedPath path(tree_.path());
  while (const DirectoryWalk::Item* const item = walk.next()) {
    path.moveTo(*item);
    if (item->type == DirectoryWalk::Type::link) {
      walked.push_back(path.text().substr(tree_.path().size() + 1));
    }
  }
  ASSERT_EQ(walked.size(), 62U);
  EXPECT_EQ(dead(), walked);
  walked.resize(7);
  EXPECT_EQ(dead(7), walked);
}

TEST_F(DeadLinksTest, what_no_walk_enters_has_none) {
  tree_.plant(R"(
    .Trash/
      dead -> gone
    deep/
      Backups.backupdb/
        dead -> gone
      .Trashes -> gone
      Trash/
        dead -> gone
    Trash/
      dead -> gone
  )");
  places_.skipPaths = {tree_.at("Trash")};
  EXPECT_THAT(dead(), ElementsAre("deep/Trash/dead"));
}

TEST_F(DeadLinksTest, packages_are_not_entered_and_may_be_links_themselves) {
  tree_.plant(
      "Some.app/\n  dead -> gone\nphotos.PhotosLibrary/\n  dead -> gone\nOther.app -> gone\n");
  EXPECT_THAT(dead(), ElementsAre("Other.app"));
}

TEST_F(DeadLinksTest, a_root_that_is_a_package_or_a_link_is_walked) {
  tree_.plant("Some.app/\n  dead -> gone\nlink -> Some.app\n");
  EXPECT_THAT(below(ProInsights::deadLinks(tree_.at("Some.app"), limit)),
              ElementsAre("Some.app/dead"));
  EXPECT_THAT(below(ProInsights::deadLinks(tree_.at("link"), limit)), ElementsAre("Some.app/dead"));
}

TEST_F(DeadLinksTest, a_root_that_is_gone_or_no_folder_has_none) {
  tree_.plant("file\ndead -> gone\n");
  for (const char* root : {"file", "gone", "dead"}) {
    EXPECT_THAT(ProInsights::deadLinks(tree_.at(root), limit), IsEmpty()) << root;
  }
}

TEST_F(DeadLinksTest, aliases_are_listed_where_their_target_is_gone) {
  tree_.plant("file\n");
  const auto entry = [this](const std::string& name, const std::string& url) {
    putFile(tree_.at(name), "[Desktop Entry]\nType=Link\nURL=" + url + "\n");
  };
  entry("dead.desktop", "file:///gone%20away");
  entry("damaged.desktop", "file:///%%%");
  entry("live.desktop", "file://" + tree_.at("file"));
  entry("web.desktop", "https://example.org/");
  entry("dead.text", "file:///gone");
  EXPECT_THAT(found(), UnorderedElementsAre(DeadLink{.name = "dead.desktop",
                                                     .path = tree_.at("dead.desktop"),
                                                     .destination = "/gone away",
                                                     .kind = "alias"},
                                            DeadLink{.name = "damaged.desktop",
                                                     .path = tree_.at("damaged.desktop"),
                                                     .destination = "",
                                                     .kind = "alias"}));
}

TEST_F(DeadLinksTest, locks_are_marked) {
  tree_.plant(R"(
    SingletonLock -> desk-4711
    lock -> 127.0.1.1:+4711
    .#notes -> ada@desk.4711:1700000000
    profile/
      lock -> gone
  )");
  std::vector<std::string> locks;
  for (const DeadLink& link : found()) {
    if (link.isLock) locks.push_back(link.name);
  }
  EXPECT_THAT(locks, UnorderedElementsAre("SingletonLock", "lock", ".#notes"));
  EXPECT_EQ(found().size(), 4U);
}

TEST_F(DeadLinksTest, names_of_any_bytes_are_listed) {
  const std::string longName(255, 'n');
  for (const std::string& name :
       {std::string("not \xff utf-8"), std::string("line\nfeed"), longName}) {
    ASSERT_EQ(::symlink("g\xfe\n", tree_.at(name).c_str()), 0);
  }
  EXPECT_THAT(dead(), UnorderedElementsAre("not \xff utf-8", "line\nfeed", longName));
  EXPECT_EQ(found().front().destination, "g\xfe\n");
}

TEST_F(DeadLinksTest, links_deeper_than_the_longest_path_are_listed) {
  constexpr int depth = 40;
  tree_.chain("", std::string(200, 'd'), depth, [](int folder, int level) {
    if (level != depth) return;
    static_cast<void>(!::symlinkat("gone", folder, "dead"));
    static_cast<void>(!::symlinkat("../" /* exists */, folder, "live"));
  });
  const std::vector<DeadLink> links = found();
  ASSERT_EQ(links.size(), 1U);
  EXPECT_EQ(links.front().name, "dead");
  EXPECT_GT(links.front().path.size(), 8000U);
}

TEST_F(DeadLinksTest, unreadable_folders_are_passed_over_and_unknown_targets_left_out) {
  tree_.plant(R"(
    closed/ mode=0700
      dead -> gone
    dead -> gone
    unknown -> closed/gone
  )");
  std::string expected = "dead ";
  if (geteuid() != 0) expected = "closed/dead dead unknown ";
  const std::string told = asOtherUser([this] {
    std::vector<std::string> names = dead();
    std::sort(names.begin(), names.end());
    std::string all;
    for (const std::string& name : names) all += name + " ";
    return all;
  });
  EXPECT_EQ(told, expected);
}

// A folder on it, and links to it from outside, through other links too.
TEST_F(DeadLinksTest, a_file_system_that_never_answers_keeps_nobody) {
  tree_.plant(R"(
    hung/
    direct -> hung/film
    by-link -> direct
    by-folder -> into/film
    into -> hung
    dead -> gone
  )");
  const std::string told = inPrivateMounts([this]() -> std::string {
    constexpr unsigned longEnough = 60;
    ::alarm(longEnough);
    const Descriptor device(::open("/dev/fuse", O_RDWR | O_CLOEXEC));
    const std::string options = "fd=" + std::to_string(device.get()) +
                                ",rootmode=40000,user_id=" + std::to_string(geteuid()) +
                                ",group_id=" + std::to_string(getegid());
    if (::mount("hung", tree_.at("hung").c_str(), "fuse", MS_NOSUID | MS_NODEV, options.c_str()) !=
        0) {
      return refusal(Need::fuse);
    }
    std::string all;
    for (const std::string& name : dead()) all += name + " ";
    return all;
  });
  if (told.starts_with("refused")) GTEST_SKIP() << told;
  EXPECT_EQ(told, "dead ");
}

// A second program changes the tree at every step of the call.
TEST_F(DeadLinksTest, links_that_vanish_or_come_to_life_meanwhile_are_listed_as_they_were_seen) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty()) {
    GTEST_SKIP() << obstacle;
  }
  std::size_t stop = 1;
  for (bool isReached = true; isReached; ++stop) {
    const TempTree tree("folder/\n  first -> target\n  second -> target\nother/\n  evil -> gone\n");
    const auto act = [&tree] {
      fs::remove(tree.at("folder/first"));
      putFile(tree.at("folder/target"), "");
      fs::rename(tree.at("folder"), tree.at("moved"));
      fs::create_directory_symlink("other", tree.at("folder"));
    };
    const TracedRun run = SystemCallTrace::interruptedAt(stop, act, [&tree]() -> std::string {
      for (const DeadLink& link : ProInsights::deadLinks(tree.path(), limit)) {
        const bool isReal =
            link.path == tree.at("other/evil") ||
            ((link.name == "first" || link.name == "second") && link.destination == "target");
        if (!isReal) return link.path + " -> " + link.destination;
      }
      return "";
    });
    ASSERT_EQ(run.end, TracedRun::End::finished) << run.told;
    EXPECT_EQ(run.told, "") << stop;
    isReached = run.wasInterrupted;
  }
  EXPECT_GT(stop, 10U);
}

TEST_F(DeadLinksTest, a_search_that_is_cancelled_ends) {
  tree_.plant("dead## -> gone x50\n");
  int asked = 0;
  const std::vector<DeadLink> links = ProInsights::deadLinks(
      tree_.path(), limit, [&asked] { return ++asked > 10; }, places_);
  EXPECT_LT(links.size(), 11U);
  EXPECT_EQ(asked, 11);
}

// Items that are no links are not reported, so whole portions of a folder have none.
TEST_F(DeadLinksTest, a_search_in_a_large_folder_without_links_is_cancelled_soon) {
  tree_.plant("a-file-with-a-rather-long-name-that-fills-the-portions-#### x5000\n");
  int asked = 0;
  EXPECT_THAT(ProInsights::deadLinks(tree_.path(), limit, [&asked] { return ++asked > 1; }),
              IsEmpty());
  EXPECT_EQ(asked, 2);
  asked = 0;
  ProInsights::deadLinks(tree_.path(), limit, [&asked] {
    ++asked;
    return false;
  });
  EXPECT_GT(asked, 4);
}

}  // namespace
}  // namespace tessaly

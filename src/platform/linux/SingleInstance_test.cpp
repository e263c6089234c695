#include "platform/SingleInstance.h"

#include <atomic>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include "support/Eventually.h"
#include "support/ForkedChild.h"
#include "support/Needs.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using Address = SingleInstance::Address;

void waitForRequest(const SingleInstance& instance) {
  pollfd waiting{instance.descriptor(), POLLIN, 0};
  while (::poll(&waiting, 1, -1) < 0) {
  }
}

class SingleInstanceTest : public testing::Test {
 protected:
  // A start of another instance at the same time.
  std::thread startBeside(std::optional<SingleInstance>& claimed) {
    return std::thread([this, &claimed] { claimed = SingleInstance::claim(place_); });
  }

  TempTree tree_;
  Address place_{tree_.at("run"), "tessaly"};
};

TEST_F(SingleInstanceTest, the_first_instance_to_start_gets_the_place) {
  const auto first = SingleInstance::claim(place_);
  ASSERT_TRUE(first.has_value());
  EXPECT_GE(first->descriptor(), 0);
}

TEST_F(SingleInstanceTest, a_second_start_sends_a_request_to_the_first_instance_and_gives_way) {
  auto first = SingleInstance::claim(place_);
  ASSERT_TRUE(first.has_value());
  EXPECT_FALSE(first->takeRequests());
  std::optional<SingleInstance> second;
  std::thread start = startBeside(second);
  waitForRequest(*first);
  EXPECT_TRUE(first->takeRequests());
  start.join();
  EXPECT_FALSE(second.has_value());
  EXPECT_FALSE(first->takeRequests());
}

TEST_F(SingleInstanceTest, a_request_is_received_even_after_the_second_start_has_ended) {
  auto first = SingleInstance::claim(place_);
  ASSERT_TRUE(first.has_value());
  EXPECT_FALSE(SingleInstance::claim(place_, 0).has_value());
  EXPECT_FALSE(SingleInstance::claim(place_, 0).has_value());
  EXPECT_TRUE(first->takeRequests());
  EXPECT_FALSE(first->takeRequests());
}

TEST_F(SingleInstanceTest, any_number_of_starts_ends_without_an_answer_of_the_first_instance) {
  auto first = SingleInstance::claim(place_);
  for (int start = 0; start < 100; ++start)
    ASSERT_FALSE(SingleInstance::claim(place_, 0).has_value());
  EXPECT_TRUE(first->takeRequests());
}

TEST_F(SingleInstanceTest, the_place_is_free_after_the_first_instance_has_ended) {
  for (int run = 0; run < 3; ++run) {
    auto instance = SingleInstance::claim(place_);
    ASSERT_TRUE(instance.has_value());
    EXPECT_GE(instance->descriptor(), 0);
  }
}

TEST_F(SingleInstanceTest, the_place_is_free_after_the_first_instance_has_given_it_up) {
  auto first = SingleInstance::claim(place_);
  first->giveUp();
  EXPECT_EQ(first->descriptor(), -1);
  EXPECT_FALSE(first->takeRequests());
  auto second = SingleInstance::claim(place_);
  ASSERT_TRUE(second.has_value());
  // Destroying the first one does not affect the second.
  first->giveUp();
  first.reset();
  EXPECT_FALSE(SingleInstance::claim(place_, 0).has_value());
  EXPECT_TRUE(second->takeRequests());
}

TEST_F(SingleInstanceTest, a_waiting_start_gets_the_place_that_the_first_instance_gives_up) {
  auto first = SingleInstance::claim(place_);
  std::optional<SingleInstance> second;
  std::thread start = startBeside(second);
  waitForRequest(*first);
  first->giveUp();
  start.join();
  ASSERT_TRUE(second.has_value());
  EXPECT_GE(second->descriptor(), 0);
}

TEST_F(SingleInstanceTest, files_left_by_a_killed_instance_do_not_prevent_a_start) {
  EXPECT_EQ(inForkedChild([this]() -> std::string {
              auto* killed = new std::optional(SingleInstance::claim(place_));
              return killed->has_value() && (*killed)->descriptor() >= 0 ? "" : "not claimed";
            }),
            "");
  ASSERT_TRUE(fs::exists(tree_.at("run/tessaly.socket")));
  auto next = SingleInstance::claim(place_);
  ASSERT_TRUE(next.has_value());
  EXPECT_FALSE(SingleInstance::claim(place_, 0).has_value());
  EXPECT_TRUE(next->takeRequests());
}

TEST_F(SingleInstanceTest, only_one_of_many_simultaneous_starts_gets_the_place) {
  constexpr int starts = 8;
  for (int round = 0; round < 10; ++round) {
    std::atomic<int> gaveWay = 0;
    std::atomic<int> won = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < starts; ++i) {
      threads.emplace_back([&] {
        auto instance = SingleInstance::claim(place_, 60);
        if (!instance) {
          ++gaveWay;
          return;
        }
        ++won;
        while (gaveWay + won < starts) instance->takeRequests();
      });
    }
    for (std::thread& thread : threads) thread.join();
    ASSERT_EQ(won, 1);
    ASSERT_EQ(gaveWay, starts - 1);
  }
}

TEST_F(SingleInstanceTest, instances_find_each_other_in_a_folder_with_a_path_of_any_length) {
  const std::string folder = tree_.at(std::string(200, 'a') + "/" + std::string(200, 'b'));
  const Address deep{folder, std::string(Address::longestName, 'c')};
  auto first = SingleInstance::claim(deep);
  ASSERT_TRUE(first.has_value());
  EXPECT_TRUE(fs::exists(folder + "/" + deep.name + ".socket"));
  EXPECT_FALSE(SingleInstance::claim(deep, 0).has_value());
  EXPECT_TRUE(first->takeRequests());
}

TEST_F(SingleInstanceTest, an_instance_with_a_name_that_is_too_long_runs_without_a_place) {
  const auto alone =
      SingleInstance::claim({place_.folder, std::string(Address::longestName + 1, 'c')});
  ASSERT_TRUE(alone.has_value());
  EXPECT_EQ(alone->descriptor(), -1);
}

TEST_F(SingleInstanceTest, each_name_has_its_own_instance) {
  const auto here = SingleInstance::claim(place_);
  const auto there = SingleInstance::claim({place_.folder, "tessaly-2"});
  EXPECT_TRUE(here.has_value());
  EXPECT_TRUE(there.has_value());
}

TEST_F(SingleInstanceTest, the_place_moves_with_the_instance_object) {
  auto first = SingleInstance::claim(place_);
  SingleInstance moved = std::move(*first);
  first.reset();
  EXPECT_FALSE(SingleInstance::claim(place_, 0).has_value());
  EXPECT_TRUE(moved.takeRequests());
}

TEST_F(SingleInstanceTest, an_instance_runs_without_a_place_if_the_folder_cannot_be_created) {
  tree_.plant("file\n");
  for (int i = 0; i < 2; ++i) {
    auto alone = SingleInstance::claim({tree_.at("file/run"), "tessaly"});
    ASSERT_TRUE(alone.has_value());
    EXPECT_EQ(alone->descriptor(), -1);
    EXPECT_FALSE(alone->takeRequests());
    alone->giveUp();
  }
}

TEST_F(SingleInstanceTest, an_instance_runs_without_a_place_in_a_folder_that_others_may_write_to) {
  tree_.plant("shared/ mode=0777\n");
  auto alone = SingleInstance::claim({tree_.at("shared"), "tessaly"});
  ASSERT_TRUE(alone.has_value());
  EXPECT_EQ(alone->descriptor(), -1);
  EXPECT_TRUE(fs::is_empty(tree_.at("shared")));
}

TEST_F(SingleInstanceTest, an_instance_runs_without_a_place_in_a_folder_of_another_user) {
  if (::geteuid() != 0) GTEST_SKIP() << needs(Need::root, "only root can be two users");
  tree_.plant("theirs/ mode=0755\n");
  ASSERT_EQ(::chmod(tree_.path().c_str(), 0755), 0);
  EXPECT_EQ(asOtherUser([this]() -> std::string {
              auto alone = SingleInstance::claim({tree_.at("theirs"), "tessaly"});
              return alone && alone->descriptor() == -1 ? "" : "not alone";
            }),
            "");
}

// A user who starts the program with sudo may keep the environment of the user's own account.
TEST_F(SingleInstanceTest, an_instance_of_root_runs_without_a_place_in_a_folder_of_the_user) {
  if (::geteuid() != 0) GTEST_SKIP() << needs(Need::root, "only root can be two users");
  tree_.plant("theirs/ mode=0700\n");
  constexpr uid_t nobody = 65534;
  ASSERT_EQ(::chown(tree_.at("theirs").c_str(), nobody, static_cast<gid_t>(-1)), 0);
  const auto alone = SingleInstance::claim({tree_.at("theirs"), "tessaly"});
  ASSERT_TRUE(alone.has_value());
  EXPECT_EQ(alone->descriptor(), -1);
  EXPECT_TRUE(fs::is_empty(tree_.at("theirs")));
}

// Whether a process waits for a lock on this file, according to the kernel's list.
bool isWaitedFor(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return false;
  const std::string inode = ":" + std::to_string(status.st_ino) + " ";
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);)
    if (line.find(" -> ") != std::string::npos && line.find(inode) != std::string::npos)
      return true;
  return false;
}

// A start waits as long as another one holds the locks: here the test holds both, and then releases
// them.
TEST_F(SingleInstanceTest, a_start_waits_for_the_lock_of_another_start) {
  tree_.plant("run/ mode=0700\n  tessaly.lock\n");
  const std::string path = tree_.at("run/tessaly.lock");
  const int file = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
  struct flock all {};
  all.l_type = F_WRLCK;
  all.l_whence = SEEK_SET;
  ASSERT_EQ(::fcntl(file, F_OFD_SETLK, &all), 0);
  std::optional<SingleInstance> claimed;
  std::thread start = startBeside(claimed);
  eventually([&] { return isWaitedFor(path); }, "the other start at the lock");
  EXPECT_EQ(::close(file), 0);
  start.join();
  ASSERT_TRUE(claimed.has_value());
  EXPECT_GE(claimed->descriptor(), 0);
}

TEST_F(SingleInstanceTest, a_link_in_place_of_the_lock_file_is_not_followed) {
  tree_.plant("run/\n  tessaly.lock -> ../elsewhere\n");
  auto alone = SingleInstance::claim(place_);
  ASSERT_TRUE(alone.has_value());
  EXPECT_EQ(alone->descriptor(), -1);
  EXPECT_FALSE(fs::exists(tree_.at("elsewhere")));
}

// In a child process, since the environment belongs to the whole process.
std::string usualPlaceWith(const std::vector<std::pair<std::string, std::string>>& variables) {
  return inForkedChild([&variables] {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"}) ::unsetenv(name);
    for (const auto& [name, value] : variables) ::setenv(name.c_str(), value.c_str(), 1);
    const Address place = Address::usual();
    return place.folder + " " + place.name;
  });
}

TEST_F(SingleInstanceTest, the_usual_place_is_the_users_runtime_folder) {
  tree_.plant("runtime/ mode=0700\n");
  const std::string user = std::to_string(::geteuid());
  EXPECT_EQ(usualPlaceWith({{"XDG_RUNTIME_DIR", tree_.at("runtime")}, {"DISPLAY", ":0"}}),
            tree_.at("runtime") + " tessaly-" + user + "-_3a0");
}

TEST_F(SingleInstanceTest, the_usual_place_without_a_runtime_folder_is_that_of_the_settings) {
  const std::string folder = tree_.at("config");
  for (const std::string& runtime : {std::string(), std::string("run"), tree_.at("missing")}) {
    EXPECT_TRUE(usualPlaceWith(
                    {{"XDG_CONFIG_HOME", folder}, {"XDG_RUNTIME_DIR", runtime}, {"DISPLAY", ":0"}})
                    .starts_with(folder + "/Marrow tessaly-"))
        << runtime;
  }
}

TEST_F(SingleInstanceTest, each_display_has_its_own_name) {
  const auto nameFor = [](const std::string& display, const std::string& wayland) {
    return usualPlaceWith({{"DISPLAY", display}, {"WAYLAND_DISPLAY", wayland}});
  };
  EXPECT_EQ(nameFor(":0", ""), nameFor(":0.0", ""));
  EXPECT_NE(nameFor(":0", ""), nameFor(":1", ""));
  EXPECT_NE(nameFor("localhost:10.0", ""), nameFor("", ""));
  EXPECT_EQ(nameFor(":0", "wayland-0"), nameFor(":1", "wayland-0"));
  EXPECT_NE(nameFor(":0", "wayland-0"), nameFor(":0", "wayland-1"));
  const std::string place = nameFor("", std::string(3000, '/'));
  EXPECT_LE(place.size() - place.find(" tessaly-") - 1, Address::longestName);
}

}  // namespace
}  // namespace tessaly

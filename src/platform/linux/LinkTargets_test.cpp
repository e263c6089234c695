#include "platform/LinkTargets.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

#include "platform/linux/MountSnapshotData.h"
#include "support/Descriptor.h"
#include "support/ForkedChild.h"
#include "support/PlainFiles.h"
#include "support/PrivateMounts.h"
#include "support/SystemCallTrace.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using Link = LinkTargets::Link;
using Target = LinkTargets::Target;

// What the kernel says about the target.
Target kernelsTarget(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0) return Target::exists;
  const bool isMissing = errno == ENOENT || errno == ENOTDIR || errno == ELOOP;
  return isMissing ? Target::missing : Target::unknown;
}

std::string told(Target target) {
  switch (target) {
    case Target::exists:
      return "exists";
    case Target::missing:
      return "missing";
    case Target::unknown:
      return "unknown";
  }
  return "";
}

std::string told(const std::optional<Link>& link) {
  return link ? told(link->target) + ": " + link->destination : "no link";
}

class LinkTargetsTest : public testing::Test {
 protected:
  // Of the link at the path below the top.
  std::optional<Link> link(const std::string& below) { return at(below, &LinkTargets::ofLink); }
  std::optional<Link> alias(const std::string& below) { return at(below, &LinkTargets::ofAlias); }
  std::string target(const std::string& below) {
    const std::optional<Link> found = link(below);
    return found ? told(found->target) : "no link";
  }
  void makeLink(const std::string& below, const std::string& text) const {
    ASSERT_EQ(::symlink(text.c_str(), tree_.at(below).c_str()), 0) << below;
  }

  // The present mounts, and these: lines of the kernel's list, with @ for the top.
  void mountAlso(std::string lines) {
    for (std::size_t at = lines.find('@'); at != std::string::npos; at = lines.find('@')) {
      lines.replace(at, 1, tree_.path());
    }
    mounts_ =
        std::make_shared<const MountSnapshot>(mountsIn("1 0 8:1 / / rw - ext4 d rw\n" + lines));
  }

  TempTree tree_;
  std::shared_ptr<const MountSnapshot> mounts_;

 private:
  template <class Question>
  std::optional<Link> at(const std::string& below, const Question& question) {
    const std::string path = tree_.at(below);
    const std::size_t slash = path.rfind('/');
    LinkTargets targets(mounts_);
    return (targets.*question)(path.substr(0, slash), path.substr(slash + 1));
  }
};

TEST_F(LinkTargetsTest, a_target_of_any_kind_exists) {
  tree_.plant(R"(
    folder/
      file
      up -> ..
      beside -> file
    pipe fifo
    socket socket
    to-folder -> folder
    to-folder-with-slash -> folder/
    to-file -> folder/file
    to-pipe -> pipe
    to-socket -> socket
    through-links -> to-folder/../to-folder/beside
    to-root -> /
  )");
  makeLink("absolute", tree_.at("folder/file"));
  for (const char* name : {"to-folder", "to-folder-with-slash", "to-file", "to-pipe", "to-socket",
                           "through-links", "to-root", "absolute", "folder/up", "folder/beside"}) {
    EXPECT_EQ(target(name), "exists") << name;
  }
  EXPECT_EQ(told(link("to-folder-with-slash")), "exists: folder/");
}

TEST_F(LinkTargetsTest, a_target_that_is_gone_is_missing_and_the_text_is_as_stored) {
  tree_.plant(R"(
    file
    gone -> nothing
    far -> /nothing/at/all
    below-file -> file/inner
    file-as-folder -> file/
    in-file -> file/.
    above-file -> file/..
    through -> gone
  )");
  for (const char* name :
       {"gone", "far", "below-file", "file-as-folder", "in-file", "above-file", "through"}) {
    EXPECT_EQ(target(name), "missing") << name;
  }
  EXPECT_EQ(told(link("gone")), "missing: nothing");
}

TEST_F(LinkTargetsTest, links_in_a_circle_lead_nowhere) {
  tree_.plant("self -> self\na -> b\nb -> a\nfolder/\n  up -> ../folder/up/x\n");
  for (const char* name : {"self", "a", "b", "folder/up"}) {
    EXPECT_EQ(target(name), "missing") << name;
  }
}

TEST_F(LinkTargetsTest, as_many_links_are_followed_as_the_kernel_follows) {
  tree_.plant("l0 0\n");
  for (int i = 1; i <= 42; ++i) makeLink("l" + std::to_string(i), "l" + std::to_string(i - 1));
  for (const int i : {1, 39, 40, 41, 42}) {
    const std::string name = "l" + std::to_string(i);
    EXPECT_EQ(target(name), told(kernelsTarget(tree_.at(name)))) << i;
  }
  EXPECT_EQ(target("l40"), "exists");
  EXPECT_EQ(target("l41"), "missing");
}

// Random links among a few items, absolute and relative, with "..", doubled slashes and slashes at
// the end.
class RandomLinks {
 public:
  explicit RandomLinks(unsigned seed) : engine_(seed) {
    tree_.plant("a/\n  c/\n    g\nb/\nf\n");
    for (int i = 0; i < count; ++i) {
      const std::string name = names.at(4 + static_cast<std::size_t>(i));
      static_cast<void>(!::symlink(text().c_str(), tree_.at(name).c_str()));
    }
  }

  // "" if each link is as the kernel says.
  std::string difference() const {
    LinkTargets targets;
    for (int i = 0; i < count; ++i) {
      const std::string name = names.at(4 + static_cast<std::size_t>(i));
      const std::optional<Link> link = targets.ofLink(tree_.path(), name);
      const Target expected = kernelsTarget(tree_.at(name));
      if (!link || link->target != expected) {
        return name + " -> " + told(link) + " instead of " + told(expected);
      }
    }
    return "";
  }

 private:
  static constexpr int count = 8;
  const std::vector<std::string> names = {"a",  "b",  "c",  "f",  "l1",   "l2", "l3", "l4",
                                          "l5", "l6", "l7", "l8", "none", ".",  "..", "g"};

  std::string text() {
    std::string text = engine_() % 4 == 0 ? tree_.path() + "/" : "";
    for (std::uint64_t i = engine_() % 4 + 1; i > 0; --i) {
      text += names.at(engine_() % names.size());
      if (i > 1 || engine_() % 4 == 0) text += engine_() % 5 == 0 ? "//" : "/";
    }
    return text;
  }

  std::mt19937_64 engine_;
  TempTree tree_;
};

TEST(RandomLinkTargets, all_targets_are_as_the_kernel_says) {
  for (unsigned seed = 0; seed < 400; ++seed) {
    ASSERT_EQ(RandomLinks(seed).difference(), "") << "seed " << seed;
  }
}

TEST(RandomLinkTargets, all_targets_are_the_same_where_the_system_lacks_openat2) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty()) {
    GTEST_SKIP() << obstacle;
  }
  for (const int code : {ENOSYS, EPERM}) {
    const TracedRun run = SystemCallTrace::refusing({{SYS_openat2, code}}, []() -> std::string {
      for (unsigned seed = 0; seed < 10; ++seed) {
        std::string difference = RandomLinks(seed).difference();
        if (!difference.empty()) return difference;
      }
      return "";
    });
    EXPECT_EQ(run.end, TracedRun::End::finished);
    EXPECT_EQ(run.told, "");
    EXPECT_EQ(run.failedCall, SYS_openat2);
  }
}

TEST_F(LinkTargetsTest, a_target_that_this_user_may_not_look_for_is_unknown) {
  tree_.plant(R"(
    open/
      present -> ../closed/present
      gone -> ../closed/gone
      closed-itself -> ../closed
      through -> into/gone
      into -> ../closed
    closed/ mode=0700
      present
  )");
  const std::string result = asOtherUser([this]() -> std::string {
    std::string all;
    for (const char* name : {"present", "gone", "through", "closed-itself"}) {
      all += target("open/" + std::string(name)) + " ";
    }
    return all;
  });
  EXPECT_EQ(result,
            geteuid() == 0 ? "unknown unknown unknown exists " : "exists missing missing exists ");
}

TEST_F(LinkTargetsTest, a_name_that_no_file_system_takes_is_unknown) {
  makeLink("link", std::string(300, 'n'));
  EXPECT_EQ(target("link"), "unknown");
}

TEST_F(LinkTargetsTest, every_other_error_says_nothing_about_the_target) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty()) {
    GTEST_SKIP() << obstacle;
  }
  tree_.plant("a/\n  b\nlink -> a/b\nby-link -> link\n");
  for (const int code : {EIO, ESTALE, ENOTCONN, ENOMEM, EMFILE, ETIMEDOUT}) {
    for (const char* name : {"link", "by-link"}) {
      const TracedRun run = SystemCallTrace::of([&] { return target(name); });
      ASSERT_EQ(run.told, "exists");
      // The last call that opens something looks for the target.
      const auto opens = [](long call) { return call == SYS_openat || call == SYS_openat2; };
      const auto last = std::find_if(run.calls.rbegin(), run.calls.rend(), opens);
      ASSERT_NE(last, run.calls.rend());
      const auto nth = std::count(run.calls.begin(), run.calls.end(), *last);
      EXPECT_EQ(SystemCallTrace::failingNth(*last, static_cast<std::size_t>(nth), code,
                                            [&] { return target(name); })
                    .told,
                "unknown")
          << name << " " << code;
    }
  }
}

// --- Mounts ------------------------------------------------------------------------------------

TEST_F(LinkTargetsTest, nothing_is_looked_for_below_automount_points_and_on_remote_file_systems) {
  tree_.plant(R"(
    net/
      present
    nas/
      present
      up -> ..
    local/
      direct -> ../net/present
      gone -> ../nas/gone
      the-point -> ../nas
      the-point-with-slash -> ../nas/
      by-link -> direct
      by-two -> by-link
      by-folder -> into/present
      into -> ../nas
      out-again -> ../net/../local/direct
      there-and-back -> ../nas/up/none
  )");
  makeLink("local/absolute", tree_.at("net/gone"));
  makeLink("nas/relative", "gone");
  mountAlso(
      "2 1 0:40 / @/net rw - autofs systemd-1 rw\n"
      "3 1 0:41 / @/nas rw - nfs4 server:/x rw\n");
  for (const char* name :
       {"direct", "gone", "the-point", "the-point-with-slash", "by-link", "by-two", "by-folder",
        "into", "out-again", "there-and-back", "absolute"}) {
    EXPECT_EQ(target("local/" + std::string(name)), "unknown") << name;
  }
  EXPECT_EQ(target("nas/relative"), "unknown");
  EXPECT_EQ(target("nas/up"), "unknown");
}

TEST_F(LinkTargetsTest, what_has_a_similar_name_as_a_remote_file_system_is_looked_for) {
  tree_.plant("nas2 -> nas-gone\nn/\nlink -> n/a\nother -> nasty/x\n");
  mountAlso("3 1 0:41 / @/nas rw - cifs //server/x rw\n");
  for (const char* name : {"nas2", "link", "other"}) EXPECT_EQ(target(name), "missing") << name;
}

TEST_F(LinkTargetsTest, a_remote_file_system_under_another_mount_is_not_in_the_way) {
  tree_.plant("disk/\n  file\nlink -> disk/file\ngone -> disk/gone\n");
  mountAlso(
      "2 1 0:40 / @/disk rw - autofs systemd-1 rw\n"
      "3 2 8:2 / @/disk rw - ext4 e rw\n");
  EXPECT_EQ(target("link"), "exists");
  EXPECT_EQ(target("gone"), "missing");
}

TEST_F(LinkTargetsTest, a_machine_whose_own_disk_is_remote_looks_for_targets) {
  tree_.plant("file\nlink -> file\n");
  mounts_ = std::make_shared<const MountSnapshot>(mountsIn("1 0 0:9 / / rw - nfs server:/r rw\n"));
  makeLink("gone", "/none");
  EXPECT_EQ(target("link"), "exists");
  EXPECT_EQ(target("gone"), "missing");
}

TEST_F(LinkTargetsTest, the_empty_mount_point_of_a_volume_that_is_not_mounted_has_no_items) {
  tree_.plant("media/\n  stick/\nlink -> media/stick/film\nother -> media/other/film\n");
  EXPECT_EQ(target("link"), "missing");
  EXPECT_EQ(target("other"), "missing");
}

// A file system whose program never answers: whoever looks for something on it waits for ever.
TEST_F(LinkTargetsTest, a_file_system_that_never_answers_keeps_nobody) {
  tree_.plant(R"(
    hung/
    other-hung/
    direct -> hung/film
    the-point -> hung
    by-link -> direct
    by-folder -> into/film
    into -> hung
  )");
  const std::string result = inPrivateMounts([this]() -> std::string {
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
    for (const char* name : {"direct", "the-point", "by-link", "by-folder", "into"}) {
      all += target(name) + " ";
    }
    return all;
  });
  if (result.starts_with("refused")) GTEST_SKIP() << result;
  EXPECT_EQ(result, "unknown unknown unknown unknown unknown ");
}

TEST_F(LinkTargetsTest, the_links_of_a_process_lead_to_what_they_name) {
  makeLink("out", "/proc/self/fd/1");
  makeLink("cwd", "/proc/self/cwd");
  makeLink("in-cwd", "/proc/self/cwd/none");
  makeLink("mounts", "/proc/mounts");
  makeLink("none", "/proc/self/none");
  const std::string result = inForkedChild([this]() -> std::string {
    // A pipe has no path.
    int ends[2];
    if (::pipe(ends) != 0 || ::dup2(ends[1], 1) != 1) return "no pipe";
    return target("out") + " " + target("cwd") + " " + target("in-cwd") + " " + target("mounts") +
           " " + target("none");
  });
  EXPECT_EQ(result, "exists exists unknown exists missing");
}

// --- Paths and names -----------------------------------------------------------------------------

TEST_F(LinkTargetsTest, names_and_texts_are_bytes) {
  tree_.plant("l\\n\\xff -> no\\n\\xfe\n\\xe9 0\nhere -> \\xe9\n");
  fs::remove(tree_.at("here"));
  makeLink("here", "\xe9");
  makeLink("gone", "\xfe\n");
  EXPECT_EQ(target("here"), "exists");
  EXPECT_EQ(told(link("gone")), "missing: \xfe\n");
  EXPECT_NE(target("l\n\xff"), "no link");
}

TEST_F(LinkTargetsTest, a_folder_deeper_than_the_longest_path_is_looked_into) {
  const std::string name(200, 'd');
  constexpr int depth = 50;
  tree_.chain("", name, depth, [](int folder, int level) {
    if (level != depth) return;
    static_cast<void>(!::symlinkat("gone", folder, "dead"));
    static_cast<void>(!::symlinkat("dead", folder, "through"));
    static_cast<void>(!::symlinkat(".", folder, "live"));
  });
  std::string below;
  for (int i = 0; i < depth; ++i) below += name + "/";
  EXPECT_EQ(target(below + "dead"), "missing");
  EXPECT_EQ(target(below + "through"), "missing");
  EXPECT_EQ(target(below + "live"), "exists");
}

TEST_F(LinkTargetsTest, a_text_as_long_as_the_system_takes_is_read_whole) {
  std::string text = "a";
  while (text.size() < 4095) text += "/";
  makeLink("long", text);
  EXPECT_EQ(told(link("long")), "missing: " + text);
  fs::create_directory(tree_.at("a"));
  EXPECT_EQ(target("long"), "exists");
}

// --- Changes meanwhile ---------------------------------------------------------------------------

TEST_F(LinkTargetsTest, what_is_no_link_any_more_is_none) {
  tree_.plant("file\nfolder/\n");
  EXPECT_EQ(link("file"), std::nullopt);
  EXPECT_EQ(link("folder"), std::nullopt);
  EXPECT_EQ(link("gone"), std::nullopt);
  EXPECT_EQ(link("gone/link"), std::nullopt);
}

TEST_F(LinkTargetsTest, a_folder_that_became_a_link_is_not_entered) {
  tree_.plant("real/\n  dead -> gone\n  entry.desktop\nalso -> real\n");
  EXPECT_EQ(told(link("real/dead")), "missing: gone");
  EXPECT_EQ(told(link("also/dead")), "no link");
  putFile(tree_.at("real/entry.desktop"), "[Desktop Entry]\nType=Link\nURL=file:///none\n");
  EXPECT_EQ(told(alias("real/entry.desktop")), "missing: /none");
  EXPECT_EQ(told(alias("also/entry.desktop")), "no link");
}

TEST_F(LinkTargetsTest, a_folder_that_became_a_link_is_not_entered_where_the_system_lacks_openat2) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty()) {
    GTEST_SKIP() << obstacle;
  }
  tree_.plant("real/\n  inner/\n    dead -> gone\nalso -> real\n");
  const TracedRun run = SystemCallTrace::refusing({{SYS_openat2, ENOSYS}}, [this] {
    return told(link("real/inner/dead")) + ", " + told(link("also/inner/dead"));
  });
  EXPECT_EQ(run.told, "missing: gone, no link");
}

// Another user exchanges a folder at every step of the call.
TEST_F(LinkTargetsTest, a_folder_exchanged_for_a_link_meanwhile_shows_nothing_of_another_folder) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty()) {
    GTEST_SKIP() << obstacle;
  }
  std::size_t stop = 1;
  for (bool isReached = true; isReached; ++stop) {
    const TempTree tree("shared/\n  dead -> ours\nother/\n  dead -> theirs\n");
    const auto exchange = [&tree] {
      fs::rename(tree.at("shared"), tree.at("before"));
      fs::create_directory_symlink("other", tree.at("shared"));
    };
    const TracedRun run = SystemCallTrace::interruptedAt(stop, exchange, [&tree] {
      LinkTargets targets;
      return told(targets.ofLink(tree.at("shared"), "dead"));
    });
    ASSERT_EQ(run.end, TracedRun::End::finished) << run.told;
    EXPECT_TRUE(run.told == "missing: ours" || run.told == "no link") << stop << ": " << run.told;
    isReached = run.wasInterrupted;
  }
  EXPECT_GT(stop, 5U);
}

TEST_F(LinkTargetsTest, a_search_that_is_cancelled_knows_nothing) {
  tree_.plant("a -> b\nb -> c\nc -> none\n");
  int asked = 0;
  LinkTargets targets(nullptr, [&asked] { return ++asked > 2; });
  EXPECT_EQ(told(targets.ofLink(tree_.path(), "a")), "unknown: b");
  EXPECT_EQ(asked, 3);
}

TEST_F(LinkTargetsTest, no_descriptor_is_left_open) {
  tree_.plant("a -> b/../c\nb/\nc -> d\nx.desktop\n");
  const std::string result = inForkedChild([this]() -> std::string {
    const std::size_t before = entriesOf("/proc/self/fd").size();
    for (const char* name : {"a", "b", "c"}) static_cast<void>(link(name));
    static_cast<void>(alias("x.desktop"));
    const std::size_t after = entriesOf("/proc/self/fd").size();
    return before == after ? "" : "left open";
  });
  EXPECT_EQ(result, "");
}

// --- Aliases -------------------------------------------------------------------------------------

class AliasTest : public LinkTargetsTest {
 protected:
  // `url` is a line such as "URL=file:///tmp".
  std::string toldOf(const std::string& url) {
    putFile(tree_.at("a.desktop"), "[Desktop Entry]\nType=Link\nName=A\n" + url + "\n");
    return told(alias("a.desktop"));
  }
};

TEST_F(AliasTest, an_entry_with_a_file_url_leads_to_the_file) {
  tree_.plant("a\\sfile\n");
  EXPECT_EQ(toldOf("URL=file://" + tree_.path() + "/a%20file"),
            "exists: " + tree_.path() + "/a file");
  EXPECT_EQ(toldOf("URL=file://" + tree_.path() + "/gone%FF"),
            "missing: " + tree_.path() + "/gone\xff");
}

TEST_F(AliasTest, a_damaged_file_url_leads_nowhere) {
  EXPECT_EQ(toldOf("URL=file:///bad%zz"), "missing: ");
}

TEST_F(AliasTest, other_entries_are_no_aliases) {
  EXPECT_EQ(toldOf("URL=https://example.org/"), "no link");
  EXPECT_EQ(toldOf("Exec=/bin/true"), "no link");
  putFile(tree_.at("a.desktop"), "[Desktop Entry]\nType=Application\nURL=file:///none\n");
  EXPECT_EQ(told(alias("a.desktop")), "no link");
}

TEST_F(AliasTest, a_target_on_a_remote_file_system_is_not_looked_for) {
  mountAlso("3 1 0:41 / @/nas rw - fuse.sshfs server:/x rw\n");
  tree_.plant("link -> nas\n");
  EXPECT_EQ(toldOf("URL=file://" + tree_.path() + "/nas/gone"),
            "unknown: " + tree_.path() + "/nas/gone");
  EXPECT_EQ(toldOf("URL=file://" + tree_.path() + "/link/gone"),
            "unknown: " + tree_.path() + "/link/gone");
}

TEST_F(AliasTest, a_path_longer_than_the_longest_is_followed) {
  std::string url = "URL=file://" + tree_.path();
  for (int i = 0; i < 1000; ++i) url += "/../" + tree_.path().substr(1, 4);
  EXPECT_TRUE(toldOf(url + "/gone").starts_with("missing: /"));
}

TEST_F(AliasTest, only_a_small_regular_file_is_read) {
  tree_.plant(
      "pipe.desktop fifo\nsocket.desktop socket\nfolder.desktop/\nlink.desktop -> a.desktop\n");
  const std::string start = "URL=file:///none\n#";
  ASSERT_EQ(toldOf(start), "missing: /none");
  for (const char* name : {"pipe", "socket", "folder", "link", "gone"}) {
    EXPECT_EQ(told(alias(std::string(name) + ".desktop")), "no link") << name;
  }
  const std::string empty = "[Desktop Entry]\nType=Link\nName=A\n\n";
  const std::size_t most = std::size_t{64} * 1024;
  EXPECT_EQ(toldOf(start + std::string(most - start.size() - empty.size(), 'x')), "missing: /none");
  EXPECT_EQ(toldOf(start + std::string(most - start.size() - empty.size() + 1, 'x')), "no link");
}

TEST_F(AliasTest, an_entry_that_this_user_may_not_read_is_none) {
  ASSERT_EQ(toldOf("URL=file:///none"), "missing: /none");
  ASSERT_EQ(::chmod(tree_.at("a.desktop").c_str(), 0600), 0);
  const std::string result = asOtherUser([this] { return told(alias("a.desktop")); });
  EXPECT_EQ(result, geteuid() == 0 ? "no link" : "missing: /none");
}

TEST(AliasNames, a_name_with_the_suffix_of_desktop_entries_may_be_an_alias) {
  EXPECT_TRUE(LinkTargets::mayBeAlias("a.desktop"));
  EXPECT_FALSE(LinkTargets::mayBeAlias("a.desktop~"));
  EXPECT_FALSE(LinkTargets::mayBeAlias("desktop"));
}

}  // namespace
}  // namespace tessaly

// Items that the system's zip leaves out, mostly silently, and items that change while it works:
// such an archive is never reported as complete, and the file that it would replace is kept.
#include <algorithm>
#include <atomic>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "reclaim/ZipEngine.h"
#include "reclaim/ZipListing.h"
#include "support/ForkedChild.h"
#include "support/Needs.h"
#include "support/PlainFiles.h"
#include "support/TempTree.h"
#include "support/TestTool.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using End = ZipEngine::Archived::End;

class ZipLosses : public testing::Test {
 protected:
  ZipLosses() {
    fs::permissions(tree_.path(), fs::perms(0755));
    fs::permissions(tree_.at("kept"), fs::perms::all);
  }

  ZipEngine::Request request() const {
    const Result<FileIdentity> old = FileIdentity::of(to_);
    return {.paths = {tree_.at("in")},
            .to = to_,
            .replaced = old ? std::optional(old.value()) : std::nullopt};
  }

  // The result and the cause of archiving "in", as text that can be passed between processes.
  static std::string told(const ZipEngine::Archived& archived) {
    constexpr const char* ends[] = {"made", "not made", "incomplete", "given up"};
    return std::string(ends[static_cast<int>(archived.end)]) + ": " + archived.cause;
  }
  std::string toldToOther() const {
    return asOtherUser([&] { return told(ZipEngine::archive(request())); });
  }

  // Archives "in" and calls `meanwhile` right after zip has ended, or right before it starts.
  enum class When { before, after };
  ZipEngine::Archived archivedWhile(When when, const std::function<void()>& meanwhile) const {
    ZipEngine::Services services;
    services.run = [&](const std::string& path, const std::vector<std::string>& args,
                       double timeout, const std::string& cwd,
                       const std::function<bool()>& isCancelled) {
      if (when == When::before) meanwhile();
      Shell::Ending ending = Shell::runToEnd(path, args, timeout, cwd, isCancelled);
      if (when == When::after) meanwhile();
      return ending;
    };
    return ZipEngine::archive(request(), services);
  }

  std::vector<std::string> kept() const { return entriesOf(tree_.at("kept")); }

  TempTree tree_{
      "in/\n"
      "  film 4K\n"
      "  Code/\n"
      "    deep/\n"
      "      main.cpp 4K\n"
      "kept/\n"};
  std::string to_ = tree_.at("kept/out.zip");
};

TEST_F(ZipLosses, an_unreadable_file_is_reported) {
  putFile(to_, "old");
  fs::permissions(tree_.at("in/Code/deep/main.cpp"), fs::perms::none);
  EXPECT_EQ(toldToOther(), "incomplete: in/Code/deep/main.cpp (cannot be read)");
  EXPECT_EQ(contentOf(to_), "old");
  EXPECT_THAT(kept(), ElementsAre("out.zip"));
}

TEST_F(ZipLosses, an_unreadable_folder_is_reported) {
  fs::permissions(tree_.at("in/Code/deep"), fs::perms::none);
  EXPECT_EQ(toldToOther(), "incomplete: in/Code/deep (cannot be read)");
  fs::permissions(tree_.at("in/Code/deep"), fs::perms::owner_all);
  EXPECT_THAT(kept(), IsEmpty());
}

TEST_F(ZipLosses, a_folder_that_can_be_listed_but_not_entered_is_reported) {
  fs::permissions(tree_.at("in/Code/deep"), fs::perms(0644));
  EXPECT_EQ(toldToOther(), "incomplete: in/Code/deep (cannot be read)");
  fs::permissions(tree_.at("in/Code/deep"), fs::perms::owner_all);
}

TEST_F(ZipLosses, pipes_sockets_and_dangling_links_are_reported) {
  tree_.plant("in/Code", "pipe fifo\n");
  EXPECT_EQ(told(ZipEngine::archive(request())),
            "incomplete: in/Code/pipe (neither a file nor a folder)");
  fs::remove(tree_.at("in/Code/pipe"));
  tree_.plant("in/Code", "tap socket\n");
  EXPECT_EQ(told(ZipEngine::archive(request())),
            "incomplete: in/Code/tap (neither a file nor a folder)");
  fs::remove(tree_.at("in/Code/tap"));
  tree_.plant("in/Code", "lock -> nowhere\n");
  EXPECT_EQ(told(ZipEngine::archive(request())),
            "incomplete: in/Code/lock (a link that leads to no file or folder)");
  fs::remove(tree_.at("in/Code/lock"));
  EXPECT_EQ(told(ZipEngine::archive(request())), "made: ");
}

TEST_F(ZipLosses, links_with_an_existing_target_are_archived) {
  tree_.plant("in", "alias -> film\nway -> Code\n");
  EXPECT_EQ(told(ZipEngine::archive(request())), "made: ");
  const auto listing = ZipListing::at(to_);
  ASSERT_TRUE(listing);
  EXPECT_EQ(listing->sizeOf("in/alias"), 4096);
  EXPECT_EQ(listing->sizeOf("in/way/deep/main.cpp"), 4096);
}

TEST_F(ZipLosses, many_losses_are_reported_in_a_short_text) {
  tree_.plant("in", std::string(200, 'n') + "#### x3000 mode=0\n");
  const std::string words = toldToOther();
  EXPECT_THAT(words, HasSubstr("and 2997 more"));
  EXPECT_LE(words.size(), 1000U);
}

TEST_F(ZipLosses, many_warnings_of_zip_do_not_block_it) {
  tree_.plant("in", "f#### x3000\n");
  const auto close = [&] {
    for (const std::string& name : entriesOf(tree_.at("in"))) {
      if (name.starts_with("f0") || name.starts_with("f1") || name.starts_with("f2")) {
        chmod(tree_.at("in/" + name).c_str(), 0);
      }
    }
  };
  ASSERT_EQ(chmod(tree_.at("in").c_str(), 0777), 0);
  const uid_t other = geteuid() == 0 ? 65534 : geteuid();
  for (const std::string& name : entriesOf(tree_.at("in"))) {
    ASSERT_EQ(lchown(tree_.at("in/" + name).c_str(), other, static_cast<gid_t>(-1)), 0);
  }
  const std::string words = asOtherUser([&] { return told(archivedWhile(When::before, close)); });
  EXPECT_THAT(words, HasSubstr("incomplete: zip warning"));
  EXPECT_THAT(kept(), IsEmpty());
}

TEST_F(ZipLosses, losses_are_reported_even_with_endless_warnings) {
  ZipEngine::Services services;
  services.run = [](const std::string&, const std::vector<std::string>&, double timeout,
                    const std::string& cwd, const std::function<bool()>& isCancelled) {
    return Shell::runToEnd(testTool(), {"complain", "1048576", "exit", "18"}, timeout, cwd,
                           isCancelled);
  };
  EXPECT_EQ(ZipEngine::archive(request(), services).end, End::incomplete);
}

TEST_F(ZipLosses, a_folder_that_becomes_unreadable_while_zip_runs_is_noticed) {
  if (geteuid() != 0)
    GTEST_SKIP() << needs(Need::root, "only root can give a folder to another user");
  ASSERT_EQ(chown(tree_.at("in/Code/deep").c_str(), 65534, 65534), 0);
  const auto close = [&] { chmod(tree_.at("in/Code/deep").c_str(), 0); };
  EXPECT_EQ(asOtherUser([&] { return told(archivedWhile(When::before, close)); }),
            "incomplete: in/Code/deep (cannot be read)");
}

TEST_F(ZipLosses, an_entry_missing_in_a_successful_archive_is_noticed) {
  ZipEngine::Services services;
  services.run = [](const std::string& path, std::vector<std::string> args, double timeout,
                    const std::string& cwd, const std::function<bool()>& isCancelled) {
    args.insert(args.end(), {"-x", "*/main.cpp"});
    return Shell::runToEnd(path, args, timeout, cwd, isCancelled);
  };
  const ZipEngine::Archived archived = ZipEngine::archive(request(), services);
  EXPECT_EQ(archived.end, End::incomplete);
  EXPECT_THAT(archived.cause, HasSubstr("in/Code/deep/main.cpp"));
  EXPECT_THAT(archived.cause, Not(HasSubstr("film")));
}

TEST_F(ZipLosses, a_change_deep_inside_after_packing_makes_the_archive_incomplete) {
  const std::string file = tree_.at("in/Code/deep/main.cpp");
  const std::vector<std::function<void()>> changes = {
      [&] { putFile(file, "longer or shorter"); },
      [&] { putFile(file, std::string(fs::file_size(file), 'x')); },
      [&] { putFile(tree_.at("in/Code/deep/new"), "new"); },
      [&] { fs::remove(tree_.at("in/Code/deep/new")); },
      [&] {
        putFile(tree_.at("other"), contentOf(file));
        fs::rename(tree_.at("other"), file);
      },
      [&] {
        fs::remove(file);
        fs::create_symlink("../../film", file);
      },
  };
  for (std::size_t k = 0; k < changes.size(); ++k) {
    const ZipEngine::Archived archived = archivedWhile(When::after, changes[k]);
    EXPECT_EQ(archived.end, End::incomplete) << k;
    EXPECT_THAT(archived.cause, Not(IsEmpty()));
    EXPECT_THAT(kept(), IsEmpty());
  }
}

TEST_F(ZipLosses, replacing_an_item_while_zip_runs_makes_the_archive_incomplete) {
  const auto exchange = [&] {
    fs::rename(tree_.at("in"), tree_.at("away"));
    fs::copy(tree_.at("away"), tree_.at("in"), fs::copy_options::recursive);
  };
  EXPECT_EQ(archivedWhile(When::after, exchange).end, End::incomplete);
}

TEST_F(ZipLosses, an_archive_of_unchanged_items_is_complete) {
  EXPECT_EQ(archivedWhile(When::after, [] {}).end, End::made);
  EXPECT_THAT(kept(), ElementsAre("out.zip"));
}

TEST_F(ZipLosses, cancelling_reports_no_losses) {
  putFile(to_, "old");
  const ToolMessages ready(tree_.at("ready"));
  std::atomic<bool> isGivenUp = false;
  std::thread other([&] {
    ready.wait();
    isGivenUp = true;
  });
  ZipEngine::Request given = request();
  given.isGivenUp = [&] { return isGivenUp.load(); };
  ZipEngine::Services services;
  services.run = [&](const std::string&, const std::vector<std::string>& args, double timeout,
                     const std::string& cwd, const std::function<bool()>& isCancelled) {
    return Shell::runToEnd(testTool(), {"make", args[2], "tell", ready.path(), "sleep"}, timeout,
                           cwd, isCancelled);
  };
  EXPECT_EQ(ZipEngine::archive(given, services).end, End::givenUp);
  other.join();
  EXPECT_EQ(contentOf(to_), "old");
  EXPECT_THAT(kept(), ElementsAre("out.zip"));
  EXPECT_EQ(fs::file_size(tree_.at("in/film")), 4096U);
}

}  // namespace
}  // namespace tessaly

#include "platform/HeldItem.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "support/Descriptor.h"
#include "support/ForkedChild.h"
#include "support/OwnProcess.h"
#include "support/PlainFiles.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::Optional;
using Type = HeldItem::Type;

std::string firstBytes(const HeldItem& item, std::size_t count, std::int64_t offset = 0) {
  std::string bytes(count, '\0');
  const Result<std::size_t> length = item.read(offset, bytes.data(), count);
  return length ? bytes.substr(0, length.value()) : "cannot be read";
}

std::vector<std::string> entriesOf(const HeldItem& item) {
  std::vector<std::string> names;
  const Outcome outcome = item.forEachEntry([&names](const HeldItem::Entry& entry) {
    names.push_back(std::string(entry.name) + (entry.isFolder ? "/" : ""));
    return true;
  });
  EXPECT_TRUE(outcome.ok());
  std::sort(names.begin(), names.end());
  return names;
}

TEST(HeldItem, a_file_has_its_length_and_its_time) {
  const TempTree tree("file 5 mtime=1600000000.25");
  const Result<HeldItem> item = HeldItem::at(tree.at("file"));
  ASSERT_TRUE(item.ok());
  EXPECT_EQ(item.value().facts().type, Type::file);
  EXPECT_EQ(item.value().facts().size, 5);
  EXPECT_THAT(item.value().facts().modified, Optional(1600000000.25));
  EXPECT_FALSE(item.value().facts().isBrokenLink);
  EXPECT_EQ(item.value().facts().linkTarget, "");
}

TEST(HeldItem, the_creation_time_is_known_exactly_if_the_file_system_stores_it) {
  const TempTree tree("file");
  struct statx status {};
  ASSERT_EQ(::statx(AT_FDCWD, tree.at("file").c_str(), 0, STATX_BTIME, &status), 0);
  const Result<HeldItem> item = HeldItem::at(tree.at("file"));
  ASSERT_TRUE(item.ok());
  if ((status.stx_mask & STATX_BTIME) != 0) {
    EXPECT_THAT(
        item.value().facts().created,
        Optional(static_cast<double>(status.stx_btime.tv_sec) + status.stx_btime.tv_nsec / 1e9));
  }
  // The proc file system stores no creation time.
  const Result<HeldItem> process = HeldItem::at("/proc/self/status");
  ASSERT_TRUE(process.ok());
  EXPECT_EQ(process.value().facts().created, std::nullopt);
}

TEST(HeldItem, content_is_read_from_the_given_offset) {
  const TempTree tree;
  putFile(tree.at("file"), "0123456789");
  Result<HeldItem> item = HeldItem::at(tree.at("file"));
  ASSERT_TRUE(item.ok());
  ASSERT_TRUE(item.value().openContent().ok());
  EXPECT_EQ(firstBytes(item.value(), 4), "0123");
  EXPECT_EQ(firstBytes(item.value(), 4, 8), "89");
  EXPECT_EQ(firstBytes(item.value(), 4, 10), "");
}

TEST(HeldItem, the_held_file_is_read_after_another_one_has_replaced_it) {
  const TempTree tree;
  putFile(tree.at("file"), "this one");
  Result<HeldItem> item = HeldItem::at(tree.at("file"));
  ASSERT_TRUE(item.ok());
  putFile(tree.at("other"), "another");
  ASSERT_EQ(::rename(tree.at("other").c_str(), tree.at("file").c_str()), 0);
  ASSERT_TRUE(item.value().openContent().ok());
  EXPECT_EQ(firstBytes(item.value(), 100), "this one");
}

TEST(HeldItem, the_identity_belongs_to_the_item_and_not_to_its_name) {
  const TempTree tree("file\nlink -> file\nother");
  const HeldItem::Identity identity = HeldItem::at(tree.at("file")).value().facts().identity;
  EXPECT_NE(identity, HeldItem::at(tree.at("other")).value().facts().identity);
  EXPECT_EQ(identity, HeldItem::at(tree.at("link")).value().facts().identity);
  EXPECT_NE(identity, HeldItem::itself(tree.at("link")).value().facts().identity);
  ASSERT_EQ(::rename(tree.at("file").c_str(), tree.at("moved").c_str()), 0);
  ASSERT_EQ(::rename(tree.at("other").c_str(), tree.at("file").c_str()), 0);
  EXPECT_EQ(identity, HeldItem::at(tree.at("moved")).value().facts().identity);
  EXPECT_NE(identity, HeldItem::at(tree.at("file")).value().facts().identity);
}

TEST(HeldItem, a_link_that_is_not_to_be_followed_is_an_item_of_its_own) {
  const TempTree tree("file 5\nlink -> file");
  Result<HeldItem> link = HeldItem::itself(tree.at("link"));
  ASSERT_TRUE(link.ok());
  EXPECT_EQ(link.value().facts().type, Type::other);
  EXPECT_EQ(link.value().facts().linkTarget, "file");
  EXPECT_FALSE(link.value().openContent().ok());
  const Result<HeldItem> file = HeldItem::itself(tree.at("file"));
  ASSERT_TRUE(file.ok());
  EXPECT_EQ(file.value().facts().type, Type::file);
  EXPECT_EQ(file.value().facts().size, 5);
}

TEST(HeldItem, the_own_path_of_an_item_contains_no_link) {
  const TempTree tree("folder/\n  file\nlink -> folder/file\nbroken -> nowhere");
  const auto ownPath = [&tree](const char* name) {
    const Result<std::string> path = HeldItem::at(tree.at(name)).value().ownPath();
    return path ? path.value() : path.error().description();
  };
  EXPECT_EQ(ownPath("folder/file"), tree.at("folder/file"));
  EXPECT_EQ(ownPath("link"), tree.at("folder/file"));
  EXPECT_EQ(ownPath("broken"), tree.at("broken"));
}

TEST(HeldItem, a_link_is_followed_and_its_target_is_known) {
  const TempTree tree;
  putFile(tree.at("file"), "text");
  ASSERT_EQ(::symlink("./file", tree.at("link").c_str()), 0);
  Result<HeldItem> item = HeldItem::at(tree.at("link"));
  ASSERT_TRUE(item.ok());
  EXPECT_EQ(item.value().facts().type, Type::file);
  EXPECT_EQ(item.value().facts().size, 4);
  EXPECT_EQ(item.value().facts().linkTarget, "./file");
  EXPECT_FALSE(item.value().facts().isBrokenLink);
  ASSERT_TRUE(item.value().openContent().ok());
  EXPECT_EQ(firstBytes(item.value(), 100), "text");
}

TEST(HeldItem, a_broken_link_is_described_by_the_link_itself) {
  const std::string target = std::string(300, 'x') + "/\xFF";
  const TempTree tree("file\nround -> round\nthrough -> file/on");
  ASSERT_EQ(::symlink(target.c_str(), tree.at("dead").c_str()), 0);
  for (const auto& [name, says] : std::vector<std::pair<std::string, std::string>>{
           {"dead", target}, {"round", "round"}, {"through", "file/on"}}) {
    const Result<HeldItem> item = HeldItem::at(tree.at(name));
    ASSERT_TRUE(item.ok()) << name;
    EXPECT_TRUE(item.value().facts().isBrokenLink) << name;
    EXPECT_EQ(item.value().facts().type, Type::other) << name;
    EXPECT_EQ(item.value().facts().linkTarget, says);
    EXPECT_TRUE(item.value().facts().modified.has_value()) << name;
  }
}

// A process that opens a pipe for writing waits for a reader, so opening it for reading would have
// an effect.
TEST(HeldItem, pipes_and_sockets_are_never_opened) {
  const TempTree tree("pipe fifo\nsocket socket");
  for (const char* name : {"pipe", "socket"}) {
    Result<HeldItem> item = HeldItem::at(tree.at(name));
    ASSERT_TRUE(item.ok()) << name;
    EXPECT_EQ(item.value().facts().type, Type::other) << name;
    EXPECT_FALSE(item.value().openContent().ok()) << name;
    // No process has it open for reading, so a writer gets ENXIO.
    EXPECT_LT(::open(tree.at(name).c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC), 0) << name;
    EXPECT_EQ(errno, ENXIO) << name;
  }
}

TEST(HeldItem, devices_are_never_opened) {
  Result<HeldItem> item = HeldItem::at("/dev/zero");
  ASSERT_TRUE(item.ok());
  EXPECT_EQ(item.value().facts().type, Type::other);
  EXPECT_FALSE(item.value().openContent().ok());
}

TEST(HeldItem, missing_and_invalid_paths_are_refused) {
  const TempTree tree("file");
  const auto kindOf = [](const std::string& path) {
    const Result<HeldItem> item = HeldItem::at(path);
    return item.ok() ? SystemError{} : item.error();
  };
  EXPECT_EQ(kindOf(tree.at("gone")), SystemError::fromErrno(ENOENT, tree.at("gone")));
  EXPECT_EQ(kindOf(tree.at("file/below")), SystemError::fromErrno(ENOTDIR, tree.at("file/below")));
  EXPECT_EQ(kindOf(""), SystemError::fromErrno(EINVAL, ""));
  EXPECT_EQ(kindOf("file"), SystemError::fromErrno(EINVAL, "file"));
  const std::string withZero = tree.at("file") + std::string(1, '\0') + "more";
  EXPECT_EQ(kindOf(withZero), SystemError::fromErrno(EINVAL, withZero));
}

TEST(HeldItem, a_file_without_read_permission_has_facts_but_cannot_be_opened) {
  const TempTree tree("closed 7 mode=0\nlocked/ mode=0");
  ASSERT_EQ(::chmod(tree.path().c_str(), 0755), 0);
  const std::string told = asOtherUser([&]() -> std::string {
    Result<HeldItem> file = HeldItem::at(tree.at("closed"));
    if (!file) return "the file is not told";
    if (file.value().facts().size != 7) return "its size is wrong";
    const Outcome opened = file.value().openContent();
    if (opened) return "it can be opened";
    if (opened.error().kind != SystemError::Kind::notPermitted) return "it is another error";
    const Result<HeldItem> folder = HeldItem::at(tree.at("locked"));
    if (!folder) return "the folder is not told";
    const Outcome read = folder.value().forEachEntry([](const auto&) { return true; });
    if (read) return "the folder can be read";
    const Result<HeldItem> below = HeldItem::at(tree.at("locked/below"));
    if (below) return "what is below is told";
    return below.error().kind == SystemError::Kind::notPermitted ? "" : "another error below";
  });
  EXPECT_EQ(told, "");
}

TEST(HeldItem, the_entries_of_a_folder_are_listed_and_their_sizes_are_read) {
  const TempTree tree(
      "top/\n  file 3\n  .hidden\n  folder/\n    deep\n  link -> folder\n  pipe fifo");
  const Result<HeldItem> item = HeldItem::at(tree.at("top"));
  ASSERT_TRUE(item.ok());
  EXPECT_EQ(item.value().facts().type, Type::folder);
  EXPECT_THAT(entriesOf(item.value()),
              testing::ElementsAre(".hidden", "file", "folder/", "link", "pipe"));
  EXPECT_EQ(item.value().entrySize("file"), 3);
  EXPECT_EQ(item.value().entrySize("folder"), 0);
  EXPECT_EQ(item.value().entrySize("gone"), 0);
}

TEST(HeldItem, the_listing_stops_when_the_callback_returns_false) {
  const TempTree tree("file### x100");
  const Result<HeldItem> item = HeldItem::at(tree.path());
  ASSERT_TRUE(item.ok());
  int seen = 0;
  EXPECT_TRUE(item.value().forEachEntry([&seen](const auto&) { return ++seen < 3; }).ok());
  EXPECT_EQ(seen, 3);
}

TEST(HeldItem, an_item_with_a_path_beyond_the_longest_can_be_held) {
  const std::string name(200, 'n');
  TempTree deep;
  deep.chain("", name, 30, [](int folder, int level) {
    if (level != 30) return;
    const Descriptor file(::openat(folder, "file", O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    EXPECT_EQ(::write(file.get(), "deep", 4), 4);
  });
  std::string path = deep.path();
  for (int level = 0; level < 30; ++level) path += "/" + name;
  Result<HeldItem> item = HeldItem::at(path + "/file");
  ASSERT_TRUE(item.ok()) << item.error().code;
  ASSERT_TRUE(item.value().openContent().ok());
  EXPECT_EQ(firstBytes(item.value(), 10), "deep");
  const Result<HeldItem> folder = HeldItem::at(path);
  ASSERT_TRUE(folder.ok());
  EXPECT_THAT(entriesOf(folder.value()), testing::ElementsAre("file"));
}

TEST(HeldItem, no_descriptor_is_left_open) {
  const TempTree tree("file 3\nlink -> file\nfolder/\n  a");
  const OwnProcess before = OwnProcess::now();
  for (const char* name : {"file", "link", "folder", "gone"}) {
    Result<HeldItem> item = HeldItem::at(tree.at(name));
    if (!item) continue;
    [[maybe_unused]] const Outcome opened = item.value().openContent();
    [[maybe_unused]] const Outcome read =
        item.value().forEachEntry([](const auto&) { return false; });
    HeldItem moved = std::move(item.value());
    item = std::move(moved);
  }
  EXPECT_EQ(OwnProcess::now(), before);
}

}  // namespace
}  // namespace tessaly

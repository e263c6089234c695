#include "platform/linux/trash/TreePass.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// Records the calls, and runs the test's actions during them.
class Notes final : public TreePass {
 public:
  explicit Notes(AfterError afterError = AfterError::goOn) : TreePass(afterError) {}
  using TreePass::AfterError;

  std::vector<std::string> met;
  std::vector<std::string> left;
  std::function<int(std::string_view)> onMeet = [](std::string_view) { return 0; };
  std::function<int(const std::string&)> onLeave = [](const std::string&) { return 0; };

 private:
  FileDescriptor open(const FileDescriptor& held) override {
    return openFolder(held, ".", O_RDONLY);
  }
  int meet(const FileDescriptor&, std::string_view name, unsigned char type,
           bool& isFolder) override {
    met.emplace_back(name);
    isFolder = type == DT_DIR;
    return onMeet(name);
  }
  int leave(const FileDescriptor&, const std::string& name) override {
    left.push_back(name);
    return onLeave(name);
  }
};

class TreePassTest : public testing::Test {
 protected:
  Outcome run(TreePass& pass) const {
    const FileDescriptor above(::open(tree_.path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    return pass.run(above, "item", "/item");
  }

  TempTree tree_ = TempTree(R"(
    item/
      a/
        b/
          file
      link -> ../beside
      file
    beside/
      outer/
        file
  )");
};

TEST_F(TreePassTest, folders_are_left_after_their_contents) {
  Notes notes;
  EXPECT_TRUE(run(notes));
  EXPECT_THAT(notes.met, UnorderedElementsAre("a", "link", "file", "b", "file"));
  EXPECT_THAT(notes.left, ElementsAre("b", "a", "item"));
}

TEST_F(TreePassTest, a_pass_can_be_repeated) {
  Notes notes;
  EXPECT_TRUE(run(notes));
  notes.left.clear();
  EXPECT_TRUE(run(notes));
  EXPECT_THAT(notes.left, ElementsAre("b", "a", "item"));
}

TEST_F(TreePassTest, the_first_error_is_reported_and_no_folder_above_it_is_left) {
  Notes notes;
  notes.onMeet = [&](std::string_view name) { return name == "b" ? EIO : 0; };
  const Outcome outcome = run(notes);
  ASSERT_FALSE(outcome);
  EXPECT_EQ(outcome.error(), SystemError::fromErrno(EIO, "/item/a/b"));
  EXPECT_THAT(notes.left, IsEmpty());
}

TEST_F(TreePassTest, a_pass_stops_after_an_error_if_requested) {
  tree_.plant("many/\n  a/\n    file\n  b/\n    file\n");
  Notes notes(Notes::AfterError::stop);
  notes.onMeet = [&](std::string_view) { return EIO; };
  EXPECT_FALSE(run(notes));
  EXPECT_EQ(notes.met.size(), 1U);
}

TEST_F(TreePassTest, an_item_that_disappears_is_no_error) {
  Notes notes;
  notes.onMeet = [&](std::string_view name) {
    if (name == "b") fs::remove_all(tree_.at("item/a/b"));
    return name == "file" ? ENOENT : 0;
  };
  EXPECT_TRUE(run(notes));
  EXPECT_THAT(notes.left, ElementsAre("a", "item"));
}

TEST_F(TreePassTest, a_folder_that_is_not_empty_is_passed_again_a_limited_number_of_times) {
  Notes notes;
  int rounds = 0;
  notes.onLeave = [&](const std::string& name) {
    return name == "b" && ++rounds < 3 ? ENOTEMPTY : 0;
  };
  EXPECT_TRUE(run(notes));
  EXPECT_THAT(notes.left, ElementsAre("b", "b", "b", "a", "item"));
  notes.onLeave = [](const std::string& name) { return name == "b" ? ENOTEMPTY : 0; };
  const Outcome outcome = run(notes);
  ASSERT_FALSE(outcome);
  EXPECT_EQ(outcome.error(), SystemError::fromErrno(ENOTEMPTY, "/item/a/b"));
}

// Moving a folder away during its visit must not lead the pass into another folder.
TEST_F(TreePassTest, a_pass_does_not_go_up_into_another_folder) {
  Notes notes;
  notes.onMeet = [&](std::string_view name) {
    if (name == "b") fs::rename(tree_.at("item/a"), tree_.at("beside/a"));
    return 0;
  };
  const Outcome outcome = run(notes);
  ASSERT_FALSE(outcome);
  EXPECT_EQ(outcome.error().code, ESTALE);
  EXPECT_THAT(notes.left, ElementsAre("b"));
  EXPECT_THAT(notes.met, testing::Not(testing::Contains("outer")));
}

TEST_F(TreePassTest, a_pass_does_not_start_in_another_folder_than_the_given_one) {
  tree_.plant("other/\n  film\n");
  const FileDescriptor above(::open(tree_.path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  const Result<ItemIdentity> item = identityOf(above, "item", "");
  ASSERT_TRUE(item);
  for (const char* name : {"item", "other"}) {
    Notes notes;
    const Outcome outcome = notes.run(above, name, item.value(), "/x");
    const bool isItem = name == std::string("item");
    EXPECT_EQ(outcome.ok(), isItem) << name;
    EXPECT_EQ(notes.met.empty(), !isItem) << name;
    if (!isItem) {
      EXPECT_EQ(outcome.error(), SystemError::fromErrno(ESTALE, "/x"));
    }
  }
}

TEST_F(TreePassTest, a_pass_does_not_enter_a_folder_that_was_replaced_by_a_link) {
  Notes notes;
  notes.onMeet = [&](std::string_view name) {
    if (name == "a") {
      fs::remove_all(tree_.at("item/a"));
      fs::create_directory_symlink(tree_.at("beside"), tree_.at("item/a"));
    }
    return 0;
  };
  const Outcome outcome = run(notes);
  ASSERT_FALSE(outcome);
  EXPECT_EQ(outcome.error(), SystemError::fromErrno(ENOTDIR, "/item/a"));
  EXPECT_THAT(notes.met, testing::Not(testing::Contains("outer")));
}

}  // namespace
}  // namespace tessaly

#include "session/Selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "session/SessionFixture_test.h"
#include "support/FakePasteboard.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The part alone: what it says goes to a list.
class SelectionAlone : public testing::Test {
 protected:
  FakePasteboard pasteboard_;
  std::vector<std::string> said_;
  Selection selection_{pasteboard_,
                       [this](FieldChanges&, const std::string& text) { said_.push_back(text); }};
};

TEST_F(SelectionAlone, copies_the_selected_paths_and_says_how_many) {
  selection_.selectNodes({file("/b", 1), file("/a", 1)}, false);
  selection_.copySelectedPaths();
  EXPECT_EQ(pasteboard_.text, "/b\n/a");
  EXPECT_THAT(said_, ElementsAre("Copied 2 paths"));
}

TEST_F(SelectionAlone, copies_the_focused_path_where_nothing_is_selected) {
  selection_.copySelectedPaths();
  EXPECT_EQ(pasteboard_.text, std::nullopt);
  EXPECT_THAT(said_, IsEmpty());
  selection_.setFocused(file("/a", 1));
  selection_.copySelectedPaths();
  EXPECT_EQ(pasteboard_.text, "/a");
}

TEST_F(SelectionAlone, focuses_the_last_node_that_is_selected) {
  selection_.selectNodes({file("/a", 1), file("/b", 1)}, true);
  EXPECT_EQ(selection_.focused()->path(), "/b");
  selection_.toggleSelect(file("/a", 1));
  EXPECT_EQ(selection_.focused()->path(), "/a");
  EXPECT_THAT(selection_.selected(), ElementsAre("/b"));
}

}  // namespace
}  // namespace tessaly

#include "session/Selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"
#include "support/FakePasteboard.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The part alone; its toasts are recorded.
class SelectionAlone : public testing::Test {
 protected:
  FakePasteboard pasteboard_;
  std::vector<std::string> said_;
  Selection selection_{pasteboard_,
                       [this](FieldChanges&, const std::string& text) { said_.push_back(text); }};
};

TEST_F(SelectionAlone, the_selected_paths_are_copied_and_counted_in_a_toast) {
  selection_.selectNodes({file("/b", 1), file("/a", 1)}, false);
  selection_.copySelectedPaths();
  EXPECT_EQ(pasteboard_.text, "/b\n/a");
  EXPECT_THAT(said_, ElementsAre("Copied 2 paths"));
}

TEST_F(SelectionAlone, the_focused_path_is_copied_without_a_selection) {
  selection_.copySelectedPaths();
  EXPECT_EQ(pasteboard_.text, std::nullopt);
  EXPECT_THAT(said_, IsEmpty());
  selection_.setFocused(file("/a", 1));
  selection_.copySelectedPaths();
  EXPECT_EQ(pasteboard_.text, "/a");
}

TEST_F(SelectionAlone, another_node_can_be_copied_in_place_of_the_focused_one) {
  selection_.setFocused(file("/a", 1));
  selection_.copySelectedPaths(std::nullopt);
  EXPECT_EQ(pasteboard_.text, std::nullopt);
  selection_.copySelectedPaths(file("/b", 1));
  EXPECT_EQ(pasteboard_.text, "/b");
  selection_.selectNodes({file("/c", 1)}, false);
  selection_.copySelectedPaths(file("/b", 1));
  EXPECT_EQ(pasteboard_.text, "/c");
}

TEST_F(SelectionAlone, the_last_selected_node_has_the_focus) {
  selection_.selectNodes({file("/a", 1), file("/b", 1)}, true);
  EXPECT_EQ(selection_.focused()->path(), "/b");
  selection_.toggleSelect(file("/a", 1));
  EXPECT_EQ(selection_.focused()->path(), "/a");
  EXPECT_THAT(selection_.selected(), ElementsAre("/b"));
}

TEST_F(SelectionAlone, clearing_is_announced_only_if_something_was_selected) {
  const QSignalSpy changes(&selection_, &Selection::selectionChanged);
  selection_.clearSelection();
  EXPECT_EQ(changes.count(), 0);
  selection_.selectNodes({file("/a", 1)}, false);
  selection_.clearSelection();
  EXPECT_EQ(changes.count(), 2);
}

}  // namespace
}  // namespace tessaly

#include "app/model/NodeActions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/FakePasteboard.h"
#include "support/FakeWorkspace.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NodeActionsTest : public ::testing::Test {
 protected:
  NodeActions::OnPath note(const std::string& door) {
    return [this, door](const std::string& path) { asked_.push_back(door + " " + path); };
  }

  static NodeHandle odd() {
    DiskNode::Fields fields;
    fields.path = "/data/caf\xe9\n";
    fields.name = "caf\xe9\n";
    return NodeHandle(DiskNode(fields));
  }

  FakeWorkspace workspace_;
  FakePasteboard pasteboard_;
  std::vector<std::string> asked_;
  NodeActions actions_{{.workspace = workspace_,
                        .pasteboard = pasteboard_,
                        .quickLook = note("look"),
                        .openTerminal = note("terminal"),
                        .openInEditor = note("editor")}};
};

TEST_F(NodeActionsTest, actions_pass_on_the_bytes_of_the_path) {
  actions_.reveal(odd());
  EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre("/data/caf\xe9\n")));
  actions_.open(odd());
  EXPECT_THAT(workspace_.opened, ElementsAre("/data/caf\xe9\n"));
  actions_.copyPath(odd());
  EXPECT_EQ(pasteboard_.text, "/data/caf\xe9\n");
  actions_.quickLook(odd());
  actions_.openTerminal(odd());
  actions_.openInEditor(odd());
  EXPECT_THAT(asked_, ElementsAre("look /data/caf\xe9\n", "terminal /data/caf\xe9\n",
                                  "editor /data/caf\xe9\n"));
}

TEST_F(NodeActionsTest, actions_do_nothing_without_a_node) {
  const NodeHandle none;
  actions_.reveal(none);
  actions_.open(none);
  actions_.copyPath(none);
  actions_.quickLook(none);
  actions_.openTerminal(none);
  actions_.openInEditor(none);
  EXPECT_THAT(workspace_.revealed, IsEmpty());
  EXPECT_THAT(workspace_.opened, IsEmpty());
  EXPECT_EQ(pasteboard_.text, std::nullopt);
  EXPECT_THAT(asked_, IsEmpty());
}

TEST_F(NodeActionsTest, actions_do_nothing_with_a_remainder) {
  DiskNode::Fields fields;
  fields.name = "+ 6 more";
  fields.path = "/data/__rest__";
  const NodeHandle remainder{DiskNode(fields)};
  actions_.reveal(remainder);
  actions_.open(remainder);
  actions_.copyPath(remainder);
  actions_.quickLook(remainder);
  actions_.openTerminal(remainder);
  actions_.openInEditor(remainder);
  EXPECT_THAT(workspace_.revealed, IsEmpty());
  EXPECT_THAT(workspace_.opened, IsEmpty());
  EXPECT_EQ(pasteboard_.text, std::nullopt);
  EXPECT_THAT(asked_, IsEmpty());
}

TEST_F(NodeActionsTest, actions_accept_files_named_like_a_remainder) {
  for (const char* name : {"__rest__", "+ 6 more"}) {
    DiskNode::Fields fields;
    fields.name = name;
    fields.path = std::string("/data/") + name;
    actions_.reveal(NodeHandle(DiskNode(fields)));
  }
  EXPECT_THAT(workspace_.revealed,
              ElementsAre(ElementsAre("/data/__rest__"), ElementsAre("/data/+ 6 more")));
}

}  // namespace
}  // namespace tessaly

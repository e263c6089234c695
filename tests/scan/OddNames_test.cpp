#include "scan/ScanFacts.h"
#include "support/SequentialScan.h"
#include "support/TreeDifference.h"

namespace tessaly {
namespace {

using testing::UnorderedElementsAre;

class OddNames : public ScanFacts {};
TESSALY_FOR_ALL_WALKERS(OddNames);

TEST_P(OddNames, names_that_are_not_utf8_keep_their_bytes) {
  const TempTree tree(R"(
    \xff\xfe/
      \x80.mp4 1M
      caf\xe9 1M
    caf\xc3\xa9/
      film 1M
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(below(root, "\xff\xfe/\x80.mp4").path(), tree.at("\xff\xfe/\x80.mp4"));
  EXPECT_EQ(below(root, "\xff\xfe/\x80.mp4").kind(), FileKind::video);
  EXPECT_TRUE(has(root, "\xff\xfe/caf\xe9"));
  EXPECT_TRUE(has(root, "caf\xc3\xa9/film"));
  EXPECT_EQ(root.size(), 3 * MiB);
}

TEST_P(OddNames, names_that_differ_only_in_unicode_composition_are_two) {
  const TempTree tree(R"(
    \xc3\xa9/
      film 1M
    e\xcc\x81/
      film 1M
    E/
      film 1M
    e/
      film 1M
  )");
  EXPECT_THAT(childNames(scan(tree.path())),
              UnorderedElementsAre("\xc3\xa9", "e\xcc\x81", "E", "e"));
}

TEST_P(OddNames, names_may_contain_line_feeds_and_control_characters) {
  const TempTree tree(R"(
    two\nlines/
      \n 1M
      \x01\x1b[31m\x7f 1M
      \s 1M
    \\ 1M
    -rf 1M
    * 1M
    ...  1M
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_THAT(childNames(root), UnorderedElementsAre("two\nlines", "\\", "-rf", "*", "..."));
  EXPECT_THAT(childNames(below(root, "two\nlines")),
              UnorderedElementsAre("\n", "\x01\x1b[31m\x7f", " "));
}

TEST_P(OddNames, names_may_be_255_bytes_long) {
  const std::string longest(255, 'n');
  std::string highest;
  for (int i = 0; i < 255; ++i) highest += "\\xfe";
  TempTree tree;
  tree.plant(longest + "/\n  " + longest + " 1M\n  " + highest + " 1M");
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(below(root, longest + "/" + longest).size(), 1 * MiB);
  EXPECT_EQ(below(root, longest + "/" + std::string(255, '\xfe')).size(), 1 * MiB);
}

TEST_P(OddNames, hidden_files_count) {
  const TempTree tree(R"(
    .hidden/
      .film 1M
      .small 4K
  )");
  const DiskNode hidden = below(scan(tree.path()), ".hidden");
  EXPECT_EQ(hidden.size(), 1 * MiB + 8 * KiB);
  EXPECT_TRUE(has(hidden, ".film"));
}

TEST_P(OddNames, names_may_contain_every_byte_but_slash_and_zero) {
  TempTree tree;
  std::string text;
  for (int byte = 1; byte < 256; ++byte) {
    if (byte == '/' || byte == '.') continue;
    const char digits[] = "0123456789abcdef";
    text += std::string("\\x") + digits[byte / 16] + digits[byte % 16] + "/\n";
  }
  tree.plant(text);
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(root.children().size(), 80U);
  EXPECT_EQ(root.children()[0].name(), "\x01");
  ScanRecord expected;
  ScanRecord record;
  EXPECT_EQ(differenceOf(SequentialScan::scan(tree.path(), expected.callbacks()),
                         GetParam().scan(tree.path(), record.callbacks())),
            "");
  EXPECT_EQ(differenceOf(expected, record), "");
}

}  // namespace
}  // namespace tessaly

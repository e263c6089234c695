#include "app/panes/UnreadableText.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

UnreadableItems items(int count, const std::string& path = "/root", int code = EACCES) {
  UnreadableItems all;
  for (int i = 0; i < count; ++i) all.add(SystemError::fromErrno(code, path));
  return all;
}

TEST(UnreadableText, the_text_is_empty_if_everything_was_read) {
  EXPECT_EQ(UnreadableText::figure({}), QString());
  EXPECT_EQ(UnreadableText::list({}), QString());
}

TEST(UnreadableText, the_text_counts_the_unreadable_items) {
  EXPECT_EQ(UnreadableText::figure(items(1)), QStringLiteral("· 1 unreadable"));
  EXPECT_EQ(UnreadableText::figure(items(12345)), QStringLiteral("· 12345 unreadable"));
}

TEST(UnreadableText, each_item_is_listed_with_its_cause) {
  UnreadableItems two;
  two.add(SystemError::fromErrno(EACCES, "/root"));
  two.add(SystemError::fromErrno(EIO, "/media/old disk"));
  EXPECT_EQ(UnreadableText::list(two),
            QStringLiteral("/root: not permitted\n/media/old disk: the disk cannot be read there"));
}

TEST(UnreadableText, twenty_items_are_listed_and_the_rest_counted) {
  EXPECT_EQ(UnreadableText::list(items(20)).count(u'\n'), 19);
  const QString many = UnreadableText::list(items(500));
  EXPECT_EQ(many.count(u'\n'), 20);
  EXPECT_TRUE(many.endsWith(QStringLiteral("/root: not permitted\nand 480 more")));
}

TEST(UnreadableText, a_hostile_path_is_shown_on_one_line) {
  EXPECT_EQ(UnreadableText::list(items(1, "/a\nb\xe2\x80\xae\xff")),
            QStringLiteral("/a\ufffdb\ufffd\ufffd: not permitted"));
}

// A path of up to 73 characters fits; a flag is one character.
TEST(UnreadableText, a_long_path_is_elided_in_the_middle_between_characters) {
  const std::string flag = "\xf0\x9f\x87\xa9\xf0\x9f\x87\xaa";
  const auto repeated = [](const std::string& part, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text += part;
    return text;
  };
  const std::string longest = "/" + repeated(flag, 72);
  EXPECT_EQ(UnreadableText::list(items(1, longest)),
            QString::fromStdString(longest + ": not permitted"));
  EXPECT_EQ(UnreadableText::list(items(1, longest + "/film")),
            QString::fromStdString("/" + repeated(flag, 23) + "…" + repeated(flag, 43) +
                                   "/film: not permitted"));
}

TEST(UnreadableText, an_unknown_cause_is_shown_in_the_systems_words) {
  EXPECT_EQ(UnreadableText::reason(SystemError::fromErrno(ENXIO, "/x")),
            QStringLiteral("No such device or address"));
  EXPECT_EQ(UnreadableText::reason(SystemError::fromErrno(EMFILE, "/x")),
            QStringLiteral("too many files are open"));
  EXPECT_EQ(UnreadableText::reason(SystemError::fromErrno(ETIMEDOUT, "/x")),
            QStringLiteral("the volume does not answer"));
}

}  // namespace
}  // namespace tessaly

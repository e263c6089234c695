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

TEST(UnreadableText, says_nothing_where_all_was_read) {
  EXPECT_EQ(UnreadableText::figure({}), QString());
  EXPECT_EQ(UnreadableText::list({}), QString());
}

TEST(UnreadableText, counts_what_could_not_be_read) {
  EXPECT_EQ(UnreadableText::figure(items(1)), QStringLiteral("· 1 unreadable"));
  EXPECT_EQ(UnreadableText::figure(items(12345)), QStringLiteral("· 12345 unreadable"));
}

TEST(UnreadableText, lists_each_with_its_cause) {
  UnreadableItems two;
  two.add(SystemError::fromErrno(EACCES, "/root"));
  two.add(SystemError::fromErrno(EIO, "/media/old disk"));
  EXPECT_EQ(UnreadableText::list(two),
            QStringLiteral("/root: not permitted\n/media/old disk: the disk cannot be read there"));
}

TEST(UnreadableText, lists_twenty_and_counts_the_rest) {
  EXPECT_EQ(UnreadableText::list(items(20)).count(u'\n'), 19);
  const QString many = UnreadableText::list(items(500));
  EXPECT_EQ(many.count(u'\n'), 20);
  EXPECT_TRUE(many.endsWith(QStringLiteral("/root: not permitted\nand 480 more")));
}

TEST(UnreadableText, shows_a_hostile_path_on_one_line) {
  EXPECT_EQ(UnreadableText::list(items(1, "/a\nb\xe2\x80\xae\xff")),
            QStringLiteral("/a\ufffdb\ufffd\ufffd: not permitted"));
}

// A path of 73 characters has room, of which a flag is one.
TEST(UnreadableText, cuts_a_long_path_in_the_middle_between_characters) {
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

TEST(UnreadableText, gives_the_words_of_the_system_where_it_has_none) {
  EXPECT_EQ(UnreadableText::reason(SystemError::fromErrno(ENXIO, "/x")),
            QStringLiteral("No such device or address"));
  EXPECT_EQ(UnreadableText::reason(SystemError::fromErrno(EMFILE, "/x")),
            QStringLiteral("too many files are open"));
  EXPECT_EQ(UnreadableText::reason(SystemError::fromErrno(ETIMEDOUT, "/x")),
            QStringLiteral("the volume does not answer"));
}

}  // namespace
}  // namespace tessaly

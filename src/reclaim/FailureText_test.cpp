#include "reclaim/FailureText.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/UnicodeText.h"

namespace tessaly {
namespace {

using FailureText::Act;
using Failures = std::vector<Trash::Failure>;

Trash::Failure failure(const std::string& path, int code) {
  return {.path = path, .cause = SystemError::fromErrno(code, path)};
}

struct Words {
  int code;
  const char* reason;
};

TEST(FailureText, every_cause_of_a_failed_move_has_a_text) {
  constexpr Words all[] = {{ENOSPC, "no space for one more file on the disk"},
                           {EDQUOT, "the quota on the disk is used up"},
                           {EXDEV, "no Trash on this volume"},
                           {EACCES, "not permitted"},
                           {EPERM, "not permitted"},
                           {EROFS, "the volume is read-only"},
                           {ENOENT, "not there any more"},
                           {ENOTDIR, "not there any more"},
                           {EEXIST, "no free name in the Trash"},
                           {EBUSY, "a volume is mounted there"},
                           {ENOTEMPTY, "no longer empty"},
                           {ESTALE, "moved or replaced meanwhile"},
                           {EINVAL, "in the Trash already, or the Trash is in it"},
                           {ENAMETOOLONG, "the name or the path is too long"},
                           {EMFILE, "too many files are open"},
                           {EOPNOTSUPP, "the file system cannot do it"},
                           {ELOOP, "a link stands where a folder was"},
                           {EIO, "Input/output error"},
                           {EISDIR, "Is a directory"},
                           {0, "unknown cause"}};
  for (const Words& words : all) {
    EXPECT_EQ(FailureText::reason(failure("/a/b", words.code), Act::moveToTrash), words.reason)
        << words.code;
  }
}

TEST(FailureText, an_item_that_has_changed_has_a_text) {
  const Trash::Failure changed{.path = "/a/b",
                               .cause = {.kind = SystemError::Kind::changed, .path = "/a/b"}};
  EXPECT_EQ(FailureText::line({changed}, Act::moveToTrash),
            "“b” could not be moved to the Trash: changed since it was listed");
}

TEST(FailureText, every_cause_of_a_failed_put_back_has_a_text) {
  constexpr Words all[] = {{ENOSPC, "no space for one more file on the disk"},
                           {EDQUOT, "the quota on the disk is used up"},
                           {EXDEV, "the old place is on another volume now"},
                           {EACCES, "not permitted"},
                           {EROFS, "the volume is read-only"},
                           {ENOENT, "the old folder cannot be made"},
                           {ENOTDIR, "a file stands where the old folder was"},
                           {EEXIST, "something else stands at the old place"},
                           {ESTALE, "another item has the name in the Trash now"},
                           {ENAMETOOLONG, "the name or the path is too long"},
                           {ELOOP, "a link stands where a folder was"},
                           {EIO, "Input/output error"}};
  for (const Words& words : all) {
    EXPECT_EQ(FailureText::reason(failure("/a/b", words.code), Act::putBack), words.reason)
        << words.code;
  }
}

TEST(FailureText, an_item_missing_in_the_trash_differs_from_a_missing_folder) {
  const Trash::Failure gone{.path = "/a/b", .cause = SystemError::fromErrno(ENOENT, "/trash/b")};
  EXPECT_EQ(FailureText::reason(gone, Act::putBack), "not found in the Trash");
  const Trash::Failure unknown{.path = "/a/b", .cause = SystemError::fromErrno(ENOENT, "")};
  EXPECT_EQ(FailureText::reason(unknown, Act::putBack), "not found in the Trash");
}

TEST(FailureText, no_failures_give_an_empty_line) {
  EXPECT_EQ(FailureText::line({}, Act::moveToTrash), "");
}

TEST(FailureText, one_item_is_named_with_its_reason) {
  EXPECT_EQ(FailureText::line({failure("/data/notes.txt", EXDEV)}, Act::moveToTrash),
            "“notes.txt” could not be moved to the Trash: no Trash on this volume");
  EXPECT_EQ(FailureText::line({failure("/data/notes.txt", EEXIST)}, Act::putBack),
            "“notes.txt” could not be put back: something else stands at the old place");
}

TEST(FailureText, the_first_items_with_one_reason_are_named_and_the_rest_is_counted) {
  Failures failures = {failure("/a", ENOSPC), failure("/b/", ENOSPC)};
  EXPECT_EQ(FailureText::line(failures, Act::moveToTrash),
            "“a” and “b” could not be moved to the Trash: no space for one more file on the disk");
  failures.push_back(failure("/c", ENOSPC));
  EXPECT_EQ(FailureText::line(failures, Act::moveToTrash),
            "“a”, “b” and 1 more could not be moved to the Trash: no space for one more file on "
            "the disk");
}

TEST(FailureText, items_are_grouped_by_reason) {
  EXPECT_EQ(FailureText::line({failure("/a", ENOSPC), failure("/b", EACCES), failure("/c", ENOSPC),
                               failure("/d", ENOSPC)},
                              Act::moveToTrash),
            "4 items could not be moved to the Trash: “a”, “c” and 1 more (no space for one more "
            "file on the disk), “b” (not permitted)");
}

TEST(FailureText, items_beyond_the_third_reason_are_counted) {
  EXPECT_EQ(FailureText::line({failure("/a", EACCES), failure("/b", EROFS), failure("/c", EBUSY),
                               failure("/d", EIO), failure("/e", EMFILE)},
                              Act::moveToTrash),
            "5 items could not be moved to the Trash: “a” (not permitted), “b” (the volume is "
            "read-only), “c” (a volume is mounted there) and 2 more for other reasons");
}

TEST(FailureText, a_name_keeps_its_bytes) {
  EXPECT_EQ(FailureText::line({failure("/caf\xe9\n", EROFS)}, Act::putBack),
            "“caf\xe9\n” could not be put back: the volume is read-only");
}

TEST(FailureText, the_length_of_the_line_is_limited) {
  Failures failures;
  for (const int code : {ENOSPC, EINVAL, EXDEV, EIO, EROFS, EBUSY}) {
    for (int i = 0; i < 2000; ++i)
      failures.push_back(failure("/" + std::string(255, 'm') + std::to_string(i), code));
  }
  const std::string line = FailureText::line(failures, Act::moveToTrash);
  EXPECT_TRUE(line.starts_with("12000 items could not be moved to the Trash: “mmm")) << line;
  EXPECT_LE(UnicodeText::graphemeCount(line), 500U) << line;
}

TEST(FailureText, a_long_name_is_cut_between_characters) {
  std::string name;
  for (int i = 0; i < 33; ++i) name += "e\u0301";
  const std::string line = FailureText::line({failure("/" + name, EROFS)}, Act::moveToTrash);
  EXPECT_TRUE(line.starts_with("“" + name.substr(0, name.size() - 3) + "…” could")) << line;
}

}  // namespace
}  // namespace tessaly

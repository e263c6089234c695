#include "platform/tools/Mdfind.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

#include "platform/tools/SearchFixture_test.h"
#include "support/ForkedChild.h"

namespace tessaly::tools {
namespace {

using testing::HasSubstr;

class MdfindTest : public SearchFixture {
 protected:
  std::ostringstream out_;
  std::ostringstream err_;

  int run(const std::vector<std::string>& args) {
    out_.str("");
    err_.str("");
    return mdfindWith(args, {.out = out_, .err = err_}, settings_);
  }

  void expectLineOfError(const std::string& part) const {
    EXPECT_THAT(err_.str(), HasSubstr(part));
    EXPECT_EQ(err_.str().find('\n'), err_.str().size() - 1);
  }
};

TEST_F(MdfindTest, a_search_by_size_prints_a_path_on_each_line) {
  tree_.plant("a 8K\nb\\sc 12K\nsmall 4K\n");
  EXPECT_EQ(run({"-onlyin", tree_.path(), "kMDItemFSSize >= 8192"}), done);
  EXPECT_EQ(out_.str(), tree_.at("b c") + "\n" + tree_.at("a") + "\n");
  EXPECT_EQ(err_.str(), "");
}

TEST_F(MdfindTest, a_search_by_name_prints_a_path_on_each_line) {
  tree_.plant("film\nold\\sfilm\nother\n");
  EXPECT_EQ(run({"-onlyin", tree_.path(), "-name", "FILM"}), done);
  EXPECT_EQ(out_.str(), tree_.at("film") + "\n" + tree_.at("old film") + "\n");
  EXPECT_EQ(run({"-onlyin", tree_.path(), "-name", "none of them"}), done);
  EXPECT_EQ(out_.str() + err_.str(), "");
}

TEST_F(MdfindTest, the_answer_ends_at_a_whole_line_below_60_kib) {
  tree_.plant("a-rather-long-name-of-a-film-#### 4K x1500\n");
  EXPECT_EQ(run({"-onlyin", tree_.path(), "kMDItemFSSize >= 0"}), incomplete);
  const std::string output = out_.str();
  EXPECT_LT(output.size(), WholeLines::limit);
  EXPECT_GT(output.size(), WholeLines::limit - 200);
  EXPECT_TRUE(output.ends_with("\n"));
  EXPECT_TRUE(output.starts_with(tree_.at("a-rather-long-name-of-a-film-0000") + "\n"));
  expectLineOfError("there are more");
}

TEST_F(MdfindTest, a_search_that_is_late_prints_what_it_has_and_says_so) {
  tree_.plant("film 8K\n");
  settings_.deadline = Deadline::after(0);
  EXPECT_EQ(run({"-onlyin", tree_.path(), "kMDItemFSSize >= 1"}), incomplete);
  expectLineOfError("the time was up");
  EXPECT_TRUE(out_.str().empty() || out_.str() == tree_.at("film") + "\n");
}

TEST_F(MdfindTest, a_folder_that_cannot_be_read_is_named_and_changes_no_status) {
  tree_.plant("film 8K\nlo\\ncked/ mode=0\n");
  std::filesystem::permissions(tree_.path(), std::filesystem::perms(0755));
  const std::string wrong = asOtherUser([this]() -> std::string {
    if (run({"-onlyin", tree_.path(), "-name", "film"}) != done) return err_.str();
    if (out_.str() != tree_.at("film") + "\n") return out_.str();
    return err_.str();  // such a folder is not entered, since nothing in it could be printed
  });
  EXPECT_EQ(wrong, "");
  tree_.plant("locked/ mode=0\n");
  const std::string told = asOtherUser([this] {
    return run({"-onlyin", tree_.path(), "-name", "film"}) == done ? err_.str() : "it fails";
  });
  EXPECT_EQ(told,
            "mdfind: 1 item could not be read: " + tree_.at("locked") + ": Permission denied\n");
}

TEST_F(MdfindTest, folders_that_cannot_be_read_are_counted_and_the_name_of_one_is_shown) {
  tree_.plant("a/\n  lo\\x1bcked/ mode=0\n  lo\\x1bck/ mode=0\n");
  std::filesystem::permissions(tree_.path(), std::filesystem::perms(0755));
  const std::string told = asOtherUser([this] {
    return run({"-onlyin", tree_.path(), "-name", "film"}) == done ? err_.str() : "it fails";
  });
  EXPECT_THAT(told, HasSubstr("mdfind: 2 items could not be read: " + tree_.at("a/lo?ck")));
}

TEST_F(MdfindTest, a_scope_that_cannot_be_searched_is_an_error) {
  tree_.plant("file 8K\nbad\\xFF/\n");
  EXPECT_EQ(run({"-onlyin", tree_.at("missing"), "-name", "film"}), failed);
  expectLineOfError("mdfind: " + tree_.at("missing") + ": No such file or directory");
  EXPECT_EQ(run({"-onlyin", tree_.at("file"), "-name", "film"}), failed);
  expectLineOfError("Not a directory");
  EXPECT_EQ(run({"-onlyin", tree_.at("bad\xFF"), "-name", "film"}), failed);
  expectLineOfError("bad?: a path that is not UTF-8");
  EXPECT_EQ(run({"-onlyin", tree_.at("two\nlines"), "-name", "film"}), failed);
  expectLineOfError("two?lines: a path");
  EXPECT_EQ(run({"-onlyin", tree_.at("mis\x1bsing"), "-name", "film"}), failed);
  expectLineOfError("mis?sing: No such file or directory");
  EXPECT_EQ(out_.str(), "");
}

TEST_F(MdfindTest, other_queries_and_arguments_are_refused) {
  EXPECT_EQ(run({"-onlyin", tree_.path(), "kMDItemKind == 'a'"}), failed);
  expectLineOfError("this query is not understood: \"kMDItemKind == 'a'\"");
  EXPECT_EQ(run({"-onlyin", tree_.path()}), misused);
  expectLineOfError("usage: mdfind");
  EXPECT_EQ(run({}), misused);
  EXPECT_EQ(out_.str(), "");
}

}  // namespace
}  // namespace tessaly::tools

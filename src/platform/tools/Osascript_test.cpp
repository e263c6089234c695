#include "platform/tools/Osascript.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace tessaly::tools {
namespace {

using testing::HasSubstr;

class KnownTrashCan : public TrashCan {
 public:
  Result<std::int64_t> counted = std::int64_t{0};
  Outcome emptied = tessaly::succeeded();
  int timesEmptied = 0;

  Result<std::int64_t> count() override { return counted; }
  Outcome empty() override {
    ++timesEmptied;
    return emptied;
  }
};

class OsascriptTest : public testing::Test {
 protected:
  KnownTrashCan trash_;
  std::ostringstream out_;
  std::ostringstream err_;

  int run(const std::vector<std::string>& args) {
    return osascript(args, {.out = out_, .err = err_}, Seams{.trash = trash_});
  }

  void expectLineOfError(const std::string& part) const {
    EXPECT_THAT(err_.str(), HasSubstr(part));
    EXPECT_EQ(err_.str().find('\n'), err_.str().size() - 1);
    EXPECT_EQ(out_.str(), "");
  }
};

constexpr const char* count = "tell application \"Finder\" to count items of trash";
constexpr const char* empty = "tell application \"Finder\" to empty trash";

TEST_F(OsascriptTest, prints_the_count_of_the_trash) {
  trash_.counted = std::int64_t{12345};
  EXPECT_EQ(run({"-e", count}), 0);
  EXPECT_EQ(out_.str(), "12345\n");
  EXPECT_EQ(err_.str(), "");
  EXPECT_EQ(trash_.timesEmptied, 0);
}

TEST_F(OsascriptTest, tells_why_the_trash_cannot_be_counted) {
  trash_.counted = SystemError::fromErrno(EACCES, "/home/x/Trash");
  EXPECT_EQ(run({"-e", count}), 1);
  expectLineOfError("/home/x/Trash: Permission denied");
}

TEST_F(OsascriptTest, empties_the_trash_and_prints_nothing) {
  EXPECT_EQ(run({"-e", empty}), 0);
  EXPECT_EQ(out_.str() + err_.str(), "");
  EXPECT_EQ(trash_.timesEmptied, 1);
}

TEST_F(OsascriptTest, tells_that_the_trash_cannot_be_emptied_here) {
  trash_.emptied = SystemError::fromErrno(EOPNOTSUPP, "/home/x/Trash");
  EXPECT_EQ(run({"-e", empty}), 1);
  expectLineOfError("not available");
}

TEST_F(OsascriptTest, tells_why_the_trash_cannot_be_emptied) {
  trash_.emptied = SystemError::fromErrno(EROFS, "/home/x/Trash");
  EXPECT_EQ(run({"-e", empty}), 1);
  expectLineOfError("/home/x/Trash: Read-only file system");
}

TEST_F(OsascriptTest, does_not_understand_other_scripts) {
  for (const std::string script :
       {"", "tell application \"Finder\" to empty", "display alert \"a\"",
        "tell application \"Finder\" to empty trash now"}) {
    EXPECT_EQ(run({"-e", script}), 1) << script;
    expectLineOfError("execution error");
    err_.str("");
  }
  EXPECT_EQ(trash_.timesEmptied, 0);
}

TEST_F(OsascriptTest, is_misused_without_exactly_one_script) {
  const std::vector<std::vector<std::string>> misuses = {
      {}, {"-e"}, {empty}, {"-x", empty}, {"-e", empty, "more"}, {"-e", empty, "-e", empty}};
  for (const std::vector<std::string>& args : misuses) {
    EXPECT_EQ(run(args), 2);
    expectLineOfError("usage: osascript -e SCRIPT");
    err_.str("");
  }
  EXPECT_EQ(trash_.timesEmptied, 0);
}

TEST_F(OsascriptTest, helps) {
  EXPECT_EQ(run({"--help"}), 0);
  EXPECT_THAT(out_.str(), HasSubstr(count));
  EXPECT_THAT(out_.str(), HasSubstr(empty));
  EXPECT_EQ(err_.str(), "");
}

}  // namespace
}  // namespace tessaly::tools

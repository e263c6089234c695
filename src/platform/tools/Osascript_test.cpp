#include "platform/tools/Osascript.h"

#include <cerrno>
#include <csignal>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace tessaly::tools {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class KnownTrashCan : public TrashCan {
 public:
  Result<std::int64_t> counted = std::int64_t{0};
  EmptiedTrash emptied;
  int timesEmptied = 0;
  std::function<void()> whileEmptying = [] {};

  Result<std::int64_t> count() override { return counted; }
  EmptiedTrash empty() override {
    ++timesEmptied;
    whileEmptying();
    return emptied;
  }
};

class OsascriptTest : public testing::Test {
 protected:
  KnownTrashCan trash_;
  std::ostringstream out_;
  std::ostringstream err_;

  int run(const std::vector<std::string>& args) {
    return osascript(args, {.out = out_, .err = err_}, Services{.trash = trash_});
  }

  void expectLineOfError(const std::string& part) const {
    EXPECT_THAT(err_.str(), HasSubstr(part));
    EXPECT_EQ(err_.str().find('\n'), err_.str().size() - 1);
    EXPECT_EQ(out_.str(), "");
  }
};

constexpr const char* count = "tell application \"Finder\" to count items of trash";
constexpr const char* empty = "tell application \"Finder\" to empty trash";

TEST_F(OsascriptTest, the_number_of_items_in_the_trash_is_printed) {
  trash_.counted = std::int64_t{12345};
  EXPECT_EQ(run({"-e", count}), 0);
  EXPECT_EQ(out_.str(), "12345\n");
  EXPECT_EQ(err_.str(), "");
  EXPECT_EQ(trash_.timesEmptied, 0);
}

TEST_F(OsascriptTest, the_reason_why_the_trash_cannot_be_counted_is_printed) {
  trash_.counted = SystemError::fromErrno(EACCES, "/home/x/Trash");
  EXPECT_EQ(run({"-e", count}), 1);
  expectLineOfError("/home/x/Trash: Permission denied");
}

TEST_F(OsascriptTest, emptying_the_trash_prints_nothing) {
  EXPECT_EQ(run({"-e", empty}), 0);
  EXPECT_EQ(out_.str() + err_.str(), "");
  EXPECT_EQ(trash_.timesEmptied, 1);
}

TEST_F(OsascriptTest, emptying_is_completed_even_after_sigterm) {
  bool isFinished = false;
  trash_.whileEmptying = [&] {
    std::raise(SIGTERM);
    isFinished = true;
  };
  EXPECT_EQ(run({"-e", empty}), 0);
  EXPECT_TRUE(isFinished);
  // SIGTERM is ignored only during the emptying.
  EXPECT_EXIT(std::raise(SIGTERM), testing::KilledBySignal(SIGTERM), "");
}

TEST_F(OsascriptTest, the_first_item_that_could_not_be_deleted_is_printed) {
  trash_.emptied.deleted = 5;
  trash_.emptied.addFailure(SystemError::fromErrno(EROFS, "/home/x/Trash/files/film"));
  EXPECT_EQ(run({"-e", empty}), 1);
  expectLineOfError("1 item in the Trash cannot be deleted: ");
  EXPECT_THAT(err_.str(), HasSubstr("/home/x/Trash/files/film: Read-only file system"));
  EXPECT_THAT(err_.str(),
              StartsWith("0:" + std::to_string(std::string(empty).size()) + ": execution error: "));
  err_.str("");
  trash_.emptied.addFailure(SystemError::fromErrno(EBUSY, "/home/x/Trash/files/disk"));
  EXPECT_EQ(run({"-e", empty}), 1);
  expectLineOfError("2 items in the Trash cannot be deleted: /home/x/Trash/files/film: ");
}

TEST_F(OsascriptTest, an_error_is_printed_on_one_line_of_limited_length_whatever_the_name) {
  const std::string longPath(std::size_t{1} << 20U, 'n');
  for (const std::string& path : {std::string("/a\nb\r\x1b[31m"), longPath}) {
    trash_.emptied = EmptiedTrash();
    trash_.emptied.addFailure(SystemError::fromErrno(EPERM, path));
    EXPECT_EQ(run({"-e", empty}), 1);
    expectLineOfError("execution error");
    EXPECT_THAT(err_.str(), HasSubstr(": Operation not permitted (-10000)"));
    EXPECT_EQ(err_.str().find('\r'), std::string::npos);
    EXPECT_EQ(err_.str().find('\x1b'), std::string::npos);
    EXPECT_LT(err_.str().size(), 8192U);
    err_.str("");
  }
}

TEST_F(OsascriptTest, other_scripts_are_refused) {
  for (const std::string script :
       {"", "tell application \"Finder\" to empty", "display alert \"a\"",
        "tell application \"Finder\" to empty trash now"}) {
    EXPECT_EQ(run({"-e", script}), 1) << script;
    expectLineOfError("execution error");
    err_.str("");
  }
  EXPECT_EQ(trash_.timesEmptied, 0);
}

TEST_F(OsascriptTest, the_tool_needs_exactly_one_script) {
  const std::vector<std::vector<std::string>> misuses = {
      {}, {"-e"}, {empty}, {"-x", empty}, {"-e", empty, "more"}, {"-e", empty, "-e", empty}};
  for (const std::vector<std::string>& args : misuses) {
    EXPECT_EQ(run(args), 2);
    expectLineOfError("usage: osascript -e SCRIPT");
    err_.str("");
  }
  EXPECT_EQ(trash_.timesEmptied, 0);
}

TEST_F(OsascriptTest, the_option_help_prints_the_usage) {
  EXPECT_EQ(run({"--help"}), 0);
  EXPECT_THAT(out_.str(), HasSubstr(count));
  EXPECT_THAT(out_.str(), HasSubstr(empty));
  EXPECT_EQ(err_.str(), "");
}

}  // namespace
}  // namespace tessaly::tools

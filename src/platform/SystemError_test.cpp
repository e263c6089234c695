#include "platform/SystemError.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <memory>
#include <utility>

namespace tessaly {
namespace {

using Kind = SystemError::Kind;

TEST(SystemError, an_error_keeps_its_path_and_its_code) {
  const SystemError error = SystemError::fromErrno(ENOSPC, "/full/\xff");
  EXPECT_EQ(error.path, "/full/\xff");
  EXPECT_EQ(error.code, ENOSPC);
}

TEST(SystemError, codes_are_mapped_to_the_kinds_that_callers_distinguish) {
  EXPECT_EQ(SystemError::fromErrno(ENOENT, "x").kind, Kind::notFound);
  EXPECT_EQ(SystemError::fromErrno(EEXIST, "x").kind, Kind::alreadyExists);
  EXPECT_EQ(SystemError::fromErrno(EACCES, "x").kind, Kind::notPermitted);
  EXPECT_EQ(SystemError::fromErrno(EPERM, "x").kind, Kind::notPermitted);
  EXPECT_EQ(SystemError::fromErrno(EROFS, "x").kind, Kind::readOnly);
  EXPECT_EQ(SystemError::fromErrno(ENOSPC, "x").kind, Kind::noSpace);
  EXPECT_EQ(SystemError::fromErrno(EDQUOT, "x").kind, Kind::noSpace);
  EXPECT_EQ(SystemError::fromErrno(EXDEV, "x").kind, Kind::crossesDevices);
  EXPECT_EQ(SystemError::fromErrno(ENAMETOOLONG, "x").kind, Kind::nameTooLong);
  EXPECT_EQ(SystemError::fromErrno(ENOTDIR, "x").kind, Kind::notADirectory);
  EXPECT_EQ(SystemError::fromErrno(EISDIR, "x").kind, Kind::isADirectory);
  EXPECT_EQ(SystemError::fromErrno(EMFILE, "x").kind, Kind::tooManyOpenFiles);
  EXPECT_EQ(SystemError::fromErrno(ENFILE, "x").kind, Kind::tooManyOpenFiles);
  EXPECT_EQ(SystemError::fromErrno(ESTALE, "x").kind, Kind::stale);
  EXPECT_EQ(SystemError::fromErrno(ELOOP, "x").kind, Kind::linkOnTheWay);
  EXPECT_EQ(SystemError::fromErrno(ENOSYS, "x").kind, Kind::notSupported);
  EXPECT_EQ(SystemError::fromErrno(EIO, "x").kind, Kind::other);
}

TEST(SystemError, the_description_consists_of_the_path_and_the_cause) {
  EXPECT_EQ(SystemError::fromErrno(ENOENT, "/gone").description(),
            "/gone: No such file or directory");
}

TEST(Result, a_result_holds_a_value_or_an_error) {
  const Result<int> value = 7;
  ASSERT_TRUE(value.ok());
  EXPECT_EQ(value.value(), 7);

  const Result<int> failed = SystemError::fromErrno(EROFS, "/cd");
  ASSERT_FALSE(failed.ok());
  EXPECT_EQ(failed.error(), SystemError::fromErrno(EROFS, "/cd"));
}

TEST(Result, a_value_that_cannot_be_copied_can_be_moved_out) {
  Result<std::unique_ptr<int>> held = std::make_unique<int>(3);
  const std::unique_ptr<int> taken = std::move(held).value();
  EXPECT_EQ(*taken, 3);
}

TEST(Outcome, an_outcome_of_success_is_ok) {
  EXPECT_TRUE(succeeded().ok());
}

}  // namespace
}  // namespace tessaly

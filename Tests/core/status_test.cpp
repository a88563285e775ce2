#include "Core/status.h"

#include <gtest/gtest.h>

#include <cerrno>

using vireonix::core::Status;

TEST(Status, SuccessIsOkAndAFailureKeepsItsErrorAndPlace) {
  EXPECT_TRUE(Status::success().ok());
  const Status status = Status::failure(ENOENT, "a/b");
  EXPECT_FALSE(status.ok());
  EXPECT_EQ(status.error, ENOENT);
  EXPECT_EQ(status.path, "a/b");
}

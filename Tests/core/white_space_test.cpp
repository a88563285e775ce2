#include "Core/white_space.h"

#include <gtest/gtest.h>

using vireonix::core::skipWhiteSpace;

TEST(WhiteSpace, AllOfItGoesAndNothingElse) {
  EXPECT_EQ(skipWhiteSpace(""), "");
  EXPECT_EQ(skipWhiteSpace(" \t\r\n\v\f"), "");
  EXPECT_EQ(skipWhiteSpace("\xC2\x85\xE2\x80\xA8\xE3\x80\x80 x "), "x ");
  EXPECT_EQ(skipWhiteSpace("\xE2\x80\x8B"
                           "5"),
            "\xE2\x80\x8B"
            "5");
  EXPECT_EQ(skipWhiteSpace("x"), "x");
}

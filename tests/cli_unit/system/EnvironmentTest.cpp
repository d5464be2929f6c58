#include <gtest/gtest.h>

#include <cstdlib>

#include "cli/system/Environment.h"

namespace quillpress::cli {
namespace {

TEST(EnvironmentTest, AVariableIsSetAndRemoved) {
  setVariable("QUILLPRESS_TEST", "a value");
  ASSERT_NE(std::getenv("QUILLPRESS_TEST"), nullptr);
  EXPECT_STREQ(std::getenv("QUILLPRESS_TEST"), "a value");
  setVariable("QUILLPRESS_TEST", std::nullopt);
  EXPECT_EQ(std::getenv("QUILLPRESS_TEST"), nullptr);
}

TEST(EnvironmentTest, TimeIsThatOfGreenwichAndGoesBeyond2038) {
  const std::tm time = universalTime(4102444799);
  EXPECT_EQ(time.tm_year, 199);
  EXPECT_EQ(time.tm_mon, 11);
  EXPECT_EQ(time.tm_mday, 31);
  EXPECT_EQ(time.tm_hour, 23);
  EXPECT_EQ(time.tm_min, 59);
  EXPECT_EQ(time.tm_sec, 59);
}

TEST(EnvironmentTest, ThereIsAProcessor) {
  EXPECT_GE(processorCount(), 1U);
}

}  // namespace
}  // namespace quillpress::cli

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "cli/pdf/CreationDate.h"

namespace quillpress::cli {
namespace {

// "D:20241231235959Z"
bool isOfThisCentury(std::string_view date) {
  constexpr std::size_t kLength = 17;
  if (date.size() != kLength || !date.starts_with("D:20") || !date.ends_with('Z')) return false;
  const std::string_view digits = date.substr(2, kLength - 3);
  return std::all_of(digits.begin(), digits.end(), [](char digit) { return digit >= '0' && digit <= '9'; });
}

class CreationDateTest : public testing::Test {
 protected:
  ~CreationDateTest() override { unsetenv("SOURCE_DATE_EPOCH"); }

  static std::string dateAt(const char* seconds) {
    setenv("SOURCE_DATE_EPOCH", seconds, 1);
    return creationDate();
  }
};

TEST_F(CreationDateTest, ItIsInUniversalTime) {
  EXPECT_EQ(dateAt("0"), "D:19700101000000Z");
  EXPECT_EQ(dateAt("1700000000"), "D:20231114221320Z");
}

TEST_F(CreationDateTest, ThePresentIsTheDefault) {
  EXPECT_TRUE(isOfThisCentury(creationDate())) << creationDate();
  EXPECT_TRUE(isOfThisCentury(dateAt("yesterday"))) << dateAt("yesterday");
}

}  // namespace
}  // namespace quillpress::cli

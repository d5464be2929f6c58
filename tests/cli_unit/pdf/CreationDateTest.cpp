#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>

#include "cli/pdf/CreationDate.h"

namespace quillpress::cli {
namespace {

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
  const std::regex form("D:20[0-9]{12}Z");
  EXPECT_TRUE(std::regex_match(creationDate(), form));
  EXPECT_TRUE(std::regex_match(dateAt("yesterday"), form));
}

}  // namespace
}  // namespace quillpress::cli

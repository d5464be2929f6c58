#include <gtest/gtest.h>

#include "cli/conversion/ErrorSearch.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

class ErrorSearchTest : public FolderTest {
 protected:
  std::optional<std::uint64_t> found(const std::string& job, std::uint64_t begin, std::uint64_t end) {
    return findError(write("job.ps", job), begin, end);
  }
};

TEST_F(ErrorSearchTest, TheByteBehindTheTokenIsFound) {
  const std::string job = "%!\n1 setlinewidth wrong 2 setlinewidth\n";
  EXPECT_EQ(found(job, 0, job.size()), job.find("wrong") + 5);
  EXPECT_EQ(found(job, 10, 30), job.find("wrong") + 5);
}

TEST_F(ErrorSearchTest, OffsetsCountTheEnvelope) {
  const std::string job = "\x1B%-12345X@PJL\n%!\nwrong \n";
  EXPECT_EQ(found(job, 14, job.size()), job.find("wrong") + 5);
}

TEST_F(ErrorSearchTest, ASingleByteNeedsNoSearch) {
  EXPECT_EQ(findError("missing.ps", 7, 8), 7U);
}

TEST_F(ErrorSearchTest, AnErrorElsewhereIsNotFound) {
  const std::string job = "%!\nwrong 1 setlinewidth\n";
  EXPECT_EQ(found(job, 10, 20), std::nullopt);
  EXPECT_EQ(found("%!\n1 setlinewidth\n", 0, 10), std::nullopt);
}

TEST_F(ErrorSearchTest, WhatCannotBeReadTwiceIsNotSearched) {
  EXPECT_EQ(findError("-", 0, 10), std::nullopt);
  EXPECT_EQ(findError(path("missing.ps"), 0, 10), std::nullopt);
  EXPECT_EQ(findError("/dev/null", 0, 10), std::nullopt);
}

}  // namespace
}  // namespace quillpress::cli

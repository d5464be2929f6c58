#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "cli/conversion/ChunkFeeder.h"

namespace quillpress::cli {
namespace {

using Chunks = std::vector<std::pair<std::string, std::uint64_t>>;

class ChunkFeederTest : public testing::Test {
 protected:
  Chunks chunks_;
  ChunkFeeder feeder_{
      4, [this](std::string_view chunk, std::uint64_t offset) { chunks_.emplace_back(chunk, offset); }};
};

TEST_F(ChunkFeederTest, TextIsCutIntoChunksOfOneSize) {
  feeder_.add("abcdefghij", 100);
  feeder_.flush();
  EXPECT_EQ(chunks_, (Chunks{{"abcd", 100}, {"efgh", 104}, {"ij", 108}}));
}

TEST_F(ChunkFeederTest, ChunksDoNotDependOnHowTextComes) {
  feeder_.add("a", 0);
  feeder_.add("bcde", 1);
  feeder_.add("", 5);
  feeder_.add("fghi", 5);
  feeder_.flush();
  EXPECT_EQ(chunks_, (Chunks{{"abcd", 0}, {"efgh", 4}, {"i", 8}}));
}

TEST_F(ChunkFeederTest, NothingIsNoChunk) {
  feeder_.flush();
  feeder_.add("abcd", 0);
  feeder_.flush();
  EXPECT_EQ(chunks_, (Chunks{{"abcd", 0}}));
}

TEST_F(ChunkFeederTest, WhatIsClearedIsNotFed) {
  feeder_.add("ab", 0);
  feeder_.clear();
  feeder_.add("cd", 50);
  feeder_.flush();
  EXPECT_EQ(chunks_, (Chunks{{"cd", 50}}));
}

TEST_F(ChunkFeederTest, ClearingWhileFedIsAllowed) {
  ChunkFeeder clearing(2, [&](std::string_view chunk, std::uint64_t offset) {
    chunks_.emplace_back(chunk, offset);
    clearing.clear();
  });
  clearing.add("abcd", 0);
  EXPECT_EQ(chunks_, (Chunks{{"ab", 0}, {"cd", 2}}));
}

}  // namespace
}  // namespace quillpress::cli

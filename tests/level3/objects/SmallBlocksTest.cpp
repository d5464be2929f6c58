#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>

#include "postscript/level3/objects/SmallBlocks.h"

namespace quillpress::level3 {
namespace {

TEST(SmallBlocksTest, BlocksLieApartAndAreAlignedForNumbers) {
  SmallBlocks blocks;
  constexpr std::size_t kCount = 5000;
  constexpr std::size_t kBytes = 100;
  std::set<char*> taken;
  for (std::size_t i = 0; i < kCount; ++i) {
    char* const block = static_cast<char*>(blocks.take(kBytes));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(std::uint64_t), 0U);
    std::memset(block, 1, kBytes);
    taken.insert(block);
  }
  ASSERT_EQ(taken.size(), kCount);
  const char* before = nullptr;
  for (const char* const block : taken) {
    EXPECT_TRUE(before == nullptr || block >= before + kBytes);
    before = block;
  }
}

TEST(SmallBlocksTest, WhatIsGivenBackIsTakenAgainForTheSameSize) {
  SmallBlocks blocks;
  void* const first = blocks.take(40);
  void* const second = blocks.take(40);
  blocks.give(first, 40);
  blocks.give(second, 40);
  EXPECT_NE(blocks.take(100), second);
  EXPECT_EQ(blocks.take(40), second);
  EXPECT_EQ(blocks.take(33), first);
}

TEST(SmallBlocksTest, TheLargestSizeIsKeptLikeTheOthers) {
  SmallBlocks blocks;
  void* const block = blocks.take(SmallBlocks::kLargest);
  std::memset(block, 1, SmallBlocks::kLargest);
  blocks.give(block, SmallBlocks::kLargest);
  EXPECT_EQ(blocks.take(SmallBlocks::kLargest), block);
}

}  // namespace
}  // namespace quillpress::level3

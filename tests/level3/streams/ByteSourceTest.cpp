#include <gtest/gtest.h>

#include <array>

#include "postscript/level3/streams/ByteSource.h"
#include "postscript/level3/streams/CallbackStreams.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {
namespace {

PieceSource pieces(std::vector<std::string> texts) {
  return PieceSource([texts, next = std::size_t{0}]() mutable -> std::optional<Bytes> {
    if (next == texts.size()) return Bytes();
    return bytesOf(texts[next++]);
  });
}

TEST(ByteSourceTest, ReadsAcrossBlocks) {
  PieceSource source = pieces({"ab", "c", "def"});
  std::array<Byte, 5> target{};
  EXPECT_EQ(source.read(target), 5U);
  EXPECT_EQ(textOf(target), "abcde");
  EXPECT_EQ(source.position(), 5U);
  EXPECT_EQ(source.get(), 'f');
  EXPECT_EQ(source.get(), ByteSource::kNoByte);
  EXPECT_EQ(source.state(), StreamState::kEnd);
}

TEST(ByteSourceTest, AReadThatReachesTheEndIsShort) {
  PieceSource source = pieces({"abc"});
  std::array<Byte, 5> target{};
  EXPECT_EQ(source.read(target), 3U);
}

TEST(ByteSourceTest, AnEmptyPieceIsTheEnd) {
  PieceSource source = pieces({"a", "", "b"});
  EXPECT_EQ(source.get(), 'a');
  EXPECT_FALSE(source.refill());
  EXPECT_FALSE(source.refill());
}

TEST(ByteSourceTest, APieceThatIsMissingIsAnError) {
  PieceSource source([] { return std::optional<Bytes>(); });
  EXPECT_FALSE(source.refill());
  EXPECT_TRUE(source.hasFailed());
  EXPECT_EQ(source.errorName(), "ioerror");
}

TEST(ByteSourceTest, TakesBackWhatIsStillBuffered) {
  PieceSource source = pieces({"ab", "cd"});
  std::array<Byte, 3> target{};
  source.read(target);
  EXPECT_FALSE(source.giveBack(2));
  EXPECT_TRUE(source.giveBack(1));
  EXPECT_EQ(source.position(), 2U);
  EXPECT_EQ(source.get(), 'c');
}

TEST(ByteSourceTest, SeeksAndReadsAgainAfterTheEnd) {
  MemorySource source(bytesOf("abc"));
  source.drain();
  EXPECT_EQ(source.get(), ByteSource::kNoByte);
  EXPECT_TRUE(source.seek(1));
  EXPECT_EQ(source.get(), 'b');
  EXPECT_EQ(source.position(), 2U);
  EXPECT_EQ(source.available(), 1U);
}

TEST(ByteSourceTest, DoesNotSeekBehindItsEnd) {
  MemorySource source(bytesOf("abc"));
  source.get();
  EXPECT_FALSE(source.seek(4));
  EXPECT_EQ(source.get(), 'b');
}

TEST(ByteSourceTest, AClosedSourceHasNoBytes) {
  MemorySource source(bytesOf("abc"));
  source.get();
  source.close();
  source.close();
  EXPECT_TRUE(source.isClosed());
  EXPECT_FALSE(source.refill());
  EXPECT_FALSE(source.seek(0));
  EXPECT_EQ(source.position(), 1U);
}

TEST(ByteSourceTest, ACallbackIsLetGoWhenTheSourceIsClosed) {
  const auto held = std::make_shared<int>(0);
  PieceSource source([held] { return std::optional<Bytes>(Bytes()); });
  EXPECT_EQ(held.use_count(), 2);
  source.close();
  EXPECT_EQ(held.use_count(), 1);
}

TEST(ByteSourceTest, ABlockNeverGrowsBeyondItsSize) {
  BlockSource source([](std::span<Byte> block) -> std::optional<std::size_t> { return block.size() + 1; }, 4);
  EXPECT_TRUE(source.refill());
  EXPECT_EQ(source.peek().size(), 4U);
}

}  // namespace
}  // namespace quillpress::level3

#include <gtest/gtest.h>
#include <zlib.h>

#include <string>

#include "postscript/level3/pdf/DeflateQueue.h"

namespace quillpress::level3 {
namespace {

std::string inflated(std::string_view bytes, std::size_t size) {
  std::string result(size, '\0');
  uLongf count = size;
  const int status = uncompress(reinterpret_cast<Bytef*>(result.data()), &count,
                                reinterpret_cast<const Bytef*>(bytes.data()), bytes.size());
  return status == Z_OK && count == size ? result : "unreadable";
}

std::string content(int number, std::size_t size) {
  std::string result;
  while (result.size() < size) result += std::to_string(number) + " 0 m ";
  return result;
}

TEST(DeflateQueueTest, StreamsComeBackInOrderAsTheyWere) {
  DeflateQueue queue;
  for (int number = 1; number <= 200; ++number) {
    queue.add(static_cast<ObjectNumber>(number), "/N " + std::to_string(number),
              content(number, 100UL * number));
  }
  for (int number = 1; number <= 200; ++number) {
    ASSERT_FALSE(queue.isEmpty());
    const DeflateQueue::Stream stream = queue.take();
    const std::string expected = content(number, 100UL * number);
    EXPECT_EQ(stream.number, static_cast<ObjectNumber>(number));
    EXPECT_EQ(stream.entries, "/N " + std::to_string(number));
    EXPECT_EQ(stream.data, expected);
    ASSERT_EQ(inflated(stream.deflatedData(), expected.size()), expected);
  }
  EXPECT_TRUE(queue.isEmpty());
}

TEST(DeflateQueueTest, WithoutAThreadStreamsAreDeflatedByWhoeverTakesThem) {
  constexpr std::size_t kMoreThanThereIs = ~std::size_t{0} / 4;
  DeflateQueue queue(kMoreThanThereIs);
  for (ObjectNumber number = 1; number <= 20; ++number)
    queue.add(number, "", content(static_cast<int>(number), 5000));
  for (ObjectNumber number = 1; number <= 20; ++number) {
    const DeflateQueue::Stream stream = queue.take();
    const std::string expected = content(static_cast<int>(number), 5000);
    EXPECT_EQ(stream.number, number);
    EXPECT_EQ(inflated(stream.deflatedData(), expected.size()), expected);
  }
}

TEST(DeflateQueueTest, AStreamThatIsReadyIsTakenInBetween) {
  DeflateQueue queue;
  int taken = 0;
  for (int number = 0; number < 500; ++number) {
    queue.add(static_cast<ObjectNumber>(number), "", content(number, 5000));
    while (!queue.isEmpty() && queue.isReady())
      EXPECT_EQ(queue.take().number, static_cast<ObjectNumber>(taken++));
  }
  while (!queue.isEmpty()) EXPECT_EQ(queue.take().number, static_cast<ObjectNumber>(taken++));
  EXPECT_EQ(taken, 500);
}

TEST(DeflateQueueTest, BytesAreThoseOfStreamsNotTaken) {
  DeflateQueue queue;
  EXPECT_EQ(queue.bytes(), 0U);
  queue.add(1, "", std::string(10, 'a'));
  queue.add(2, "", std::string(200, 'b'));
  EXPECT_EQ(queue.bytes(), 210U);
  EXPECT_EQ(queue.take().data.size(), 10U);
  EXPECT_EQ(queue.bytes(), 200U);
  EXPECT_EQ(queue.take().data.size(), 200U);
  EXPECT_EQ(queue.bytes(), 0U);
}

TEST(DeflateQueueTest, NothingIsAStreamToo) {
  DeflateQueue queue;
  queue.add(1, "", "");
  EXPECT_EQ(inflated(queue.take().deflatedData(), 0), "");
}

TEST(DeflateQueueTest, StreamsThatNobodyTakesAreLost) {
  DeflateQueue queue;
  for (ObjectNumber number = 1; number <= 20; ++number) queue.add(number, "", std::string(200'000, 'x'));
}

}  // namespace
}  // namespace quillpress::level3

#include <gtest/gtest.h>

#include <mutex>

#include "cli/system/Threads.h"

namespace quillpress::cli {
namespace {

TEST(ThreadsTest, TwoThreadsTakeTurns) {
  Mutex mutex;
  ConditionVariable changed;
  int turn = 0;
  Thread other = startThread([&] {
    for (int mine = 1; mine < 100; mine += 2) {
      std::unique_lock lock(mutex);
      changed.wait(lock, [&] { return turn == mine; });
      ++turn;
      changed.notify_all();
    }
  });
  for (int mine = 0; mine < 100; mine += 2) {
    std::unique_lock lock(mutex);
    changed.wait(lock, [&] { return turn == mine; });
    ++turn;
    changed.notify_all();
  }
  ASSERT_TRUE(other.joinable());
  other.join();
  EXPECT_FALSE(other.joinable());
  EXPECT_EQ(turn, 100);
}

}  // namespace
}  // namespace quillpress::cli

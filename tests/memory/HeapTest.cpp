// What the other tests here stand on.

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

#include "tests/heap/Heap.h"

namespace quillpress {
namespace {

// Called as functions, which unlike new expressions no compiler may leave out.
void* take(std::size_t size) {
  return ::operator new(size);
}
void give(void* data) {
  ::operator delete(data);
}

TEST(HeapTest, TellsWhatIsLeft) {
  const heap::Watch watch;
  const std::size_t before = watch.left();
  void* first = take(5);
  void* second = take(0);
  EXPECT_EQ(watch.left(), before + 2);
  give(first);
  EXPECT_EQ(watch.left(), before + 1);
  give(second);
  EXPECT_EQ(watch.left(), before);
  EXPECT_EQ(watch.made(), 2U);
}

TEST(HeapTest, LeavesOutWhatIsNobodys) {
  const heap::Watch watch;
  const std::size_t before = watch.left();
  void* data = nullptr;
  {
    const heap::Unwatched unwatched;
    data = take(5);
  }
  EXPECT_EQ(watch.left(), before);
  give(data);
  EXPECT_EQ(watch.left(), before);
}

TEST(HeapTest, FailsOneBlock) {
  heap::Watch watch;
  watch.failAt(2, false);
  give(take(1));
  EXPECT_FALSE(watch.hasFailed());
  EXPECT_THROW(take(1), std::bad_alloc);
  EXPECT_TRUE(watch.hasFailed());
  give(take(1));
}

TEST(HeapTest, FailsAllBlocksFromOneOn) {
  heap::Watch watch;
  watch.failAt(2, true);
  give(take(1));
  EXPECT_THROW(take(1), std::bad_alloc);
  EXPECT_EQ(::operator new(1, std::nothrow), nullptr);
  watch.failNoMore();
  give(take(1));
}

TEST(HeapTest, BoundsTheBytesAtOneTimeAndInAll) {
  heap::Watch watch;
  watch.bound(100, 250);
  void* data = take(60);
  EXPECT_THROW(take(60), std::bad_alloc);
  give(data);
  give(take(100));
  EXPECT_THROW(take(101), std::bad_alloc);
  EXPECT_THROW(take(100), std::bad_alloc);
}

TEST(HeapTest, GoesBackToTheCheckpoint) {
  std::vector<std::string>* texts = nullptr;
  heap::Checkpoint moment([&] {
    texts = new std::vector<std::string>{"a text that is too long to stand in the string itself", "b"};
  });
  for (int i = 0; i < 3; ++i) {
    {
      const heap::Watch watch;
      texts->front() = std::string(1000, 'x');
      texts->push_back("c");
      if (i == 1) delete texts;
    }
    moment.goBack();
    ASSERT_EQ(texts->size(), 2U);
    EXPECT_EQ(texts->front(), "a text that is too long to stand in the string itself");
    EXPECT_EQ(texts->back(), "b");
  }
}

TEST(HeapTest, BringsBackObjectsOutsideTheHeap) {
  static std::string text;
  heap::Checkpoint moment([] { text = "a text that is too long to stand in the string itself"; });
  moment.add(&text, sizeof(std::string));
  {
    const heap::Watch watch;
    text = std::string(1000, 'x');
  }
  moment.goBack();
  EXPECT_EQ(text, "a text that is too long to stand in the string itself");
}

}  // namespace
}  // namespace quillpress

// Memory that runs out at any moment: the n-th block of a program cannot be had, for every n, once or with
// all that come after it. The call must fail cleanly, the next job must come out as ever, and nothing may be
// left over.

#include <gtest/gtest.h>
#include <quillpress/converter.h>

#include <cctype>
#include <string>

#include "postscript/lib/pdf/PdfObjectList.h"
#include "tests/heap/Heap.h"
#include "tests/memory/Programs.h"

namespace quillpress {
namespace {

constexpr float kIdentity[6] = {1, 0, 0, 1, 0, 0};

struct Outcome {
  bool isDone = false;
  std::string content;
};

Outcome convert(void* handle, std::string_view chunk) {
  int length = static_cast<int>(chunk.size());
  const char* content = PSConvertToPdf(handle, chunk.data(), &length);
  const heap::Unwatched unwatched;
  if (content != nullptr) return {true, {content, static_cast<std::size_t>(length)}};
  EXPECT_EQ(length, static_cast<int>(chunk.size()));
  return {};
}

// Objects are numbered through the process, so their numbers depend on what was made before.
std::string withoutNumbers(const std::string& content) {
  std::string text;
  for (std::size_t i = 0; i < content.size(); ++i) {
    const bool isNumber = text.ends_with("/PA") || text.ends_with("/PSI");
    if (!isNumber || std::isdigit(static_cast<unsigned char>(content[i])) == 0) text += content[i];
  }
  return text;
}

// Lets a job that was given up come to its end: what it left running goes on, and what it left open, a
// string, a procedure, a read, is closed.
void bringToAnEnd(void* handle) {
  const std::string blanks(100, ' ');
  for (const std::string_view chunk : {"\n", ")", "\n>", "~>", "}", "}", "}"}) convert(handle, chunk);
  for (int i = 0; i < 4; ++i) convert(handle, blanks);
  convert(handle, "clear makepattern ");
  PSStartPage(handle, kIdentity);
}

std::string contentOfNextJob(void* handle) {
  bringToAnEnd(handle);
  const Outcome outcome = convert(handle, nextJob());
  const heap::Unwatched unwatched;
  if (!outcome.isDone) return std::string("fails: ") + PSGetErrorStr(handle);
  return withoutNumbers(outcome.content);
}

// What a host does with a chunk, objects included.
Outcome convertAndTakeObjects(void* handle, std::string_view chunk) {
  Outcome outcome = convert(handle, chunk);
  unsigned count = 0;
  PdfObject** objects = PSGetPdfObjects(handle, &count);
  EXPECT_NE(objects, nullptr);
  return outcome;
}

// One handle for all tests, opened once and set back after each use.
class OpenHandle {
 public:
  static OpenHandle& ofProcess() {
    static OpenHandle handle;
    return handle;
  }

  // Runs an action with the open handle, closes it, and tells how many blocks are left over.
  template <typename Action>
  std::size_t use(Action action) {
    std::size_t left = 0;
    {
      heap::Watch watch;
      action(handle_, watch);
      watch.failNoMore();
      PSClose(handle_);
      PdfObjectList::ofProcess() = PdfObjectList();
      left = watch.left();
    }
    checkpoint_.goBack();
    return left;
  }

 private:
  OpenHandle() { checkpoint_.add(&PdfObjectList::ofProcess(), sizeof(PdfObjectList)); }

  void* handle_ = nullptr;
  PdfObjectList& list_ = PdfObjectList::ofProcess();  // made before the checkpoint
  heap::Checkpoint checkpoint_{[this] { handle_ = PSOpen(kIdentity); }};
};

class AllocationFailureTest : public testing::TestWithParam<Program> {
 protected:
  void SetUp() override {
    const std::size_t left = OpenHandle::ofProcess().use([this](void* handle, heap::Watch& watch) {
      healthy_ = convertAndTakeObjects(handle, GetParam().text);
      blocks_ = watch.made();
      const std::string error = PSGetErrorStr(handle);
      next_ = contentOfNextJob(handle);
      const heap::Unwatched unwatched;
      EXPECT_EQ(error, "");
    });
    ASSERT_EQ(left, 0U);
    ASSERT_TRUE(healthy_.isDone);
    ASSERT_GT(blocks_, 0U);
    ASSERT_FALSE(next_.starts_with("fails")) << next_;
  }

  void failEach(bool forEver) {
    for (std::uint64_t n = 1; n <= blocks_ && !HasFailure(); ++n) {
      SCOPED_TRACE("block " + std::to_string(n) + " of " + std::to_string(blocks_));
      const std::size_t left = OpenHandle::ofProcess().use([&](void* handle, heap::Watch& watch) {
        watch.failAt(n, forEver);
        const Outcome outcome = convertAndTakeObjects(handle, GetParam().text);
        watch.failNoMore();
        const std::string error = PSGetErrorStr(handle);
        const std::string next = contentOfNextJob(handle);
        const heap::Unwatched unwatched;
        EXPECT_TRUE(watch.hasFailed());
        EXPECT_EQ(error, "");
        if (outcome.isDone) {
          EXPECT_EQ(outcome.content, healthy_.content);
        }
        EXPECT_EQ(next, next_);
      });
      EXPECT_EQ(left, 0U);
    }
  }

  Outcome healthy_;
  std::uint64_t blocks_ = 0;
  std::string next_;
};

TEST_P(AllocationFailureTest, OnceLeavesTheConverterUsable) {
  failEach(false);
}

TEST_P(AllocationFailureTest, ForEverLeavesTheConverterUsable) {
  failEach(true);
}

std::string nameOf(const testing::TestParamInfo<Program>& program) {
  return std::string(program.param.name);
}

INSTANTIATE_TEST_SUITE_P(Of, AllocationFailureTest, testing::ValuesIn(programs().begin(), programs().end()),
                         nameOf);

TEST(AllocationFailureOfOpeningTest, GivesNoHandleAndLeavesNothing) {
  for (std::uint64_t n = 1;; ++n) {
    heap::Watch watch;
    const std::size_t before = watch.left();
    watch.failAt(n, false);
    void* handle = PSOpen(kIdentity);
    watch.failNoMore();
    const bool hasFailed = watch.hasFailed();
    PSClose(handle);
    ASSERT_EQ(watch.left(), before) << "block " << n;
    const heap::Unwatched unwatched;
    ASSERT_EQ(handle == nullptr, hasFailed) << "block " << n;
    if (!hasFailed) break;
  }
}

}  // namespace
}  // namespace quillpress

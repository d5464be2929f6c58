// Requests that only the machine's memory bounds, and what callers can be told in 32 bits.

#include <gtest/gtest.h>
#include <quillpress/converter.h>

#include <new>
#include <string>

#include "postscript/lib/base/MemoryProbe.h"
#include "tests/unit/ConverterFixture.h"

#ifdef __linux__
#include <sys/resource.h>
#endif

namespace quillpress {
namespace {

// Lets the process have only so much memory while it lives, as a careful host would. (Under AddressSanitizer
// the limit is an option of the sanitizer.)
class LimitedMemory {
 public:
#ifdef __linux__
  LimitedMemory() {
    getrlimit(RLIMIT_AS, &before_);
#ifndef __SANITIZE_ADDRESS__
    const rlimit limited{rlim_t{3} << 30U, before_.rlim_max};
    setrlimit(RLIMIT_AS, &limited);
#endif
  }
  ~LimitedMemory() {
    setrlimit(RLIMIT_AS, &before_);
  }

 private:
  rlimit before_{};
#else
  LimitedMemory() {}
  ~LimitedMemory() {}

 public:
#endif
  LimitedMemory(const LimitedMemory&) = delete;
  LimitedMemory& operator=(const LimitedMemory&) = delete;
};

class MemoryLimitTest : public ConverterFixture {
 protected:
  // Fails as an allocation does: no content, no error text; the operand below and the next job are there.
  void expectRefused(const std::string& job) {
    content("clear ");
    int length = -1;
    EXPECT_EQ(PSConvertToPdf(&converter_, ("7 " + job).c_str(), &length), nullptr) << job;
    EXPECT_EQ(length, -1);
    EXPECT_STREQ(PSGetErrorStr(&converter_), "");
    EXPECT_EQ(content("count 1 eq exch 7 eq and {gsave} if "), "q ");
  }
};

TEST_F(MemoryLimitTest, AProbeFailsForMoreThanThereCanBe) {
  EXPECT_THROW(probeMemory(SIZE_MAX / 2, 1), std::bad_alloc);
  EXPECT_THROW(probeMemory(SIZE_MAX / 8, 16), std::bad_alloc);
  EXPECT_NO_THROW(probeMemory(1000, 8));
  EXPECT_NO_THROW(probeMemory(0, 8));
}

TEST_F(MemoryLimitTest, AnArrayBeyondMemoryFailsCleanly) {
  const LimitedMemory limited;
  expectRefused("2147483647 array ");
  expectRefused("2000000000 array ");
}

TEST_F(MemoryLimitTest, AStringBeyondMemoryFailsCleanly) {
  const LimitedMemory limited;
  expectRefused("2147483647 string ");
}

TEST_F(MemoryLimitTest, ALargeArrayIsMade) {
  content("20000000 array dup 19999999 5 put dup length exch dup 0 get exch 19999999 get ");
  EXPECT_EQ(message("5 concat "), "Illegal param to concat operator");
  const ObjectStack& operands = converter_.interpreter().operandStack();
  ASSERT_EQ(operands.count(), 3U);
  EXPECT_EQ(operands.at(0)->printString(), "20000000");
  EXPECT_EQ(operands.at(1)->printString(), "null");
  EXPECT_EQ(operands.at(2)->printString(), "5");
}

TEST_F(MemoryLimitTest, ALargeStringIsMade) {
  content("300000000 string length ");
  EXPECT_EQ(converter_.interpreter().operandStack().at(0)->printString(), "300000000");
}

#if INTPTR_MAX > INT32_MAX
// With 32-bit addresses memory ends before.
TEST_F(MemoryLimitTest, ContentThatCannotBeToldFailsCleanly) {
  content("/s 100000000 string def ");
  EXPECT_EQ(message("22 {8 8 true matrix s imagemask} repeat "), "page content too long for one call");
  EXPECT_EQ(converter_.errorText().find("Exception:[Postscript2Pdf.cpp:"), 0U);
  converter_.interpreter().executionStack().clear();
  EXPECT_EQ(content("gsave "), "q ");
}
#endif

}  // namespace
}  // namespace quillpress

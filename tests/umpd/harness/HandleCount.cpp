#include "tests/umpd/harness/HandleCount.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>

namespace quillpress::harness {
namespace {

// The kernel gives away the lowest value that is free, so what leaks cannot hide behind these.
constexpr std::uintptr_t kMostHandles = 4096;
constexpr std::uintptr_t kStep = 4;

}  // namespace

// Each value is tried. Wine answers 0 to GetProcessHandleCount; asking for the handles of all processes makes
// Wine's server read on without an end, until it crashes, where a process has none at that moment.
unsigned long handleCount() {
  unsigned long count = 0;
  for (std::uintptr_t value = kStep; value <= kMostHandles * kStep; value += kStep) {
    DWORD flags = 0;
    if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
  }
  return count;
}

void expectNoMoreHandlesThan(unsigned long before) {
  for (int tries = 0; tries < 100 && handleCount() > before; ++tries) Sleep(10);
  EXPECT_LE(handleCount(), before);
}

}  // namespace quillpress::harness

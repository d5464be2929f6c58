#include "tests/umpd/harness/Watchdog.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <cstdio>

namespace quillpress::harness {
namespace {

constexpr DWORD kMillisecondsBetweenLooks = 200;
constexpr DWORD kMargin = 5000;

std::atomic<DWORD> deadline;
std::atomic<bool> isArmed;

DWORD WINAPI watch(void*) {
  for (;;) {
    ::Sleep(kMillisecondsBetweenLooks);
    // The difference is right also when the tick count has begun anew.
    if (!isArmed || static_cast<LONG>(GetTickCount() - deadline) < 0) continue;
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    std::fprintf(stderr, "the watchdog ends %s.%s, which takes too long\n",
                 test != nullptr ? test->test_suite_name() : "?", test != nullptr ? test->name() : "?");
    std::fflush(nullptr);
    TerminateProcess(GetCurrentProcess(), 3);
  }
}

class Listener final : public ::testing::EmptyTestEventListener {
  void OnTestStart(const ::testing::TestInfo&) override { Watchdog::allow(Watchdog::kSeconds); }
  void OnTestEnd(const ::testing::TestInfo&) override { isArmed = false; }
};

}  // namespace

void Watchdog::start() {
  // GoogleTest takes it over.
  ::testing::UnitTest::GetInstance()->listeners().Append(new Listener);
  CloseHandle(CreateThread(nullptr, 0, watch, nullptr, 0, nullptr));
}

void Watchdog::allow(unsigned seconds) {
  deadline = GetTickCount() + 1000 * seconds;
  isArmed = true;
}

unsigned long Watchdog::remainingMilliseconds() {
  const LONG remaining = static_cast<LONG>(deadline - GetTickCount()) - static_cast<LONG>(kMargin);
  return remaining > 0 ? static_cast<unsigned long>(remaining) : 0;
}

}  // namespace quillpress::harness

// The main function of every test program here.

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "tests/umpd/harness/Watchdog.h"

namespace {

LONG WINAPI reportCrash(EXCEPTION_POINTERS* exception) {
  const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
  std::fprintf(stderr, "%s.%s crashes: exception 0x%lx at %p\n",
               test != nullptr ? test->test_suite_name() : "?", test != nullptr ? test->name() : "?",
               exception->ExceptionRecord->ExceptionCode, exception->ExceptionRecord->ExceptionAddress);
  std::fflush(nullptr);
  TerminateProcess(GetCurrentProcess(), 4);
  return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

int main(int count, char** arguments) {
  // The C runtime reads a TZ variable by itself, and badly: local times are Windows' business.
  _putenv("TZ=");
  _tzset();

  ::testing::InitGoogleTest(&count, arguments);
  // A crash ends the program at once instead of opening a window.
  ::testing::GTEST_FLAG(catch_exceptions) = false;
  SetUnhandledExceptionFilter(reportCrash);
  quillpress::harness::Watchdog::start();
  return RUN_ALL_TESTS();
}

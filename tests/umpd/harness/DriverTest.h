#pragma once

#include <gtest/gtest.h>

#include "tests/umpd/harness/Boxes.h"
#include "tests/umpd/harness/DebuggerOutput.h"
#include "tests/umpd/harness/Library.h"
#include "tests/umpd/harness/LoadedByName.h"
#include "tests/umpd/harness/WindowsRelease.h"

namespace quillpress::harness {

// What every test of the library stands on. Replacements hold until the library goes, after the members of
// the test's own fixture: they must not refer to what is gone by then when the library is still called.
class DriverTest : public ::testing::Test {
 protected:
  Library library;
  LoadedByName byName{library};
  Boxes boxes{library};
  DebuggerOutput debuggerOutput{library};
};

// The same once for every Windows release given to INSTANTIATE_TEST_SUITE_P.
class EveryWindowsTest : public DriverTest, public ::testing::WithParamInterface<WindowsRelease> {
 protected:
  EveryWindowsTest() { pretend(library, GetParam()); }
};

}  // namespace quillpress::harness

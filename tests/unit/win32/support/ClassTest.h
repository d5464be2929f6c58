#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/umpd/harness/WindowsRelease.h"
#include "tests/unit/win32/support/OwnImports.h"

namespace quillpress::classes {

// What every test of a class stands on: message boxes are answered at once, and what goes to the debugger is
// noted. A box that a test does not take fails it.
class ClassTest : public ::testing::Test {
 protected:
  ClassTest();
  ~ClassTest() override;

  // The boxes since the last call, as "[caption] text".
  [[nodiscard]] std::vector<std::wstring> takeBoxes();

  // The texts that the debugger was told since the last call, joined.
  [[nodiscard]] std::wstring takeDebuggerOutput();

  // Has the classes believe that they run on this release of Windows.
  void pretend(const harness::WindowsRelease& release);

  OwnImports imports;

 private:
  std::vector<std::wstring> boxes_;
  std::wstring debuggerOutput_;
};

// A name that no kernel object of the machine has yet.
std::wstring newObjectName();

}  // namespace quillpress::classes

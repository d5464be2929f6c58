#pragma once

#include <optional>
#include <string>

namespace quillpress::driver {

// A program to start, detached and with normal priority.
struct ProgramRun {
  std::wstring application;      // its path
  std::wstring commandLine;      // begins with the path
  std::wstring workingFolder;    // empty: the caller's
  std::optional<int> showState;  // as for ShowWindow; 11 counts as 0, hidden
  bool waitForEnd = false;       // without limit
};

// Starts the program. False, with a message in the debugger output, when it cannot be started. After the end
// of a program that was waited for, `exitCode`, where not null, holds what it returned.
bool runProgram(const ProgramRun& run, unsigned long* exitCode = nullptr);

}  // namespace quillpress::driver

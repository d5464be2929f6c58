#pragma once

#include <optional>
#include <string>

namespace quillpress::driver {
// A program to start, without handles of this process.
struct ProgramRun {
  std::wstring
      application;  // its path; empty: the first word of the command line, looked for as Windows does
  std::wstring commandLine;      // begins with the path
  std::wstring workingFolder;    // empty: the caller's
  std::optional<int> showState;  // as for ShowWindow; 11 counts as 0, hidden
  bool isDetached = false;       // without the caller's console, with normal priority
  bool waitForEnd = false;       // without limit
  void* endWhen = nullptr;       // an event that ends the program while it is waited for; may be null
};

// Starts the program; the one place that does. False, with the last error, when it cannot be started. After
// the end of a program that was waited for, `exitCode`, where not null, holds what it returned.
bool startProgram(const ProgramRun& run, unsigned long* exitCode = nullptr);

// Runs a helper of the product: the same, detached, with a message in the debugger output when it cannot be
// started.
bool runProgram(ProgramRun run, unsigned long* exitCode = nullptr);
}  // namespace quillpress::driver

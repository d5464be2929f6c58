#pragma once

#include <windows.h>

#include <string>

#include "tests/umpd/launcher/support/Handle.h"

namespace quillpress::harness {

// A program that a test starts. What still runs at the end is ended.
class Process {
 public:
  // With a handle, one that can be inherited, for its standard output.
  explicit Process(std::wstring commandLine, DWORD flags = 0, HANDLE output = nullptr);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  [[nodiscard]] DWORD id() const { return id_; }

  // Whether it ends within so many milliseconds.
  [[nodiscard]] bool endsWithin(DWORD milliseconds) const;

  // Its exit code, waited for; the test fails when it does not come.
  [[nodiscard]] DWORD exitCode() const;

  // Ends it as the task manager does.
  void kill() const;

 private:
  Handle process_;
  DWORD id_ = 0;
};

// The folder of a program or DLL, with a backslash at its end; that of the test program for null.
std::wstring folderOf(HMODULE module);

}  // namespace quillpress::harness

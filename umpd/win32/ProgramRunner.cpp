#include "umpd/win32/ProgramRunner.h"

#include <array>

#include "umpd/rules/Trace.h"
#include "umpd/win32/Diagnostics.h"
#include "umpd/win32/Resources.h"

namespace quillpress::driver {
namespace {
// SW_FORCEMINIMIZE, which is meant for the windows of hung threads and not for how a program starts.
constexpr int kForceMinimise = 11;

STARTUPINFOW startupFor(const ProgramRun& run) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  if (run.showState) {
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = static_cast<WORD>(*run.showState == kForceMinimise ? SW_HIDE : *run.showState);
  }
  return startup;
}

void waitForEnd(HANDLE process, HANDLE endWhen) {
  const std::array handles{process, endWhen};
  const DWORD count = endWhen == nullptr ? 1 : 2;
  // When both have come the program has ended by itself.
  if (WaitForMultipleObjects(count, handles.data(), FALSE, INFINITE) == WAIT_OBJECT_0) return;
  TerminateProcess(process, ERROR_CANCELLED);
  WaitForSingleObject(process, INFINITE);
}

const wchar_t* orNull(const std::wstring& text) {
  return text.empty() ? nullptr : text.c_str();
}
}  // namespace

bool startProgram(const ProgramRun& run, unsigned long* exitCode) {
  // The system writes into the command line that it is given.
  std::wstring commandLine = run.commandLine;
  STARTUPINFOW startup = startupFor(run);
  PROCESS_INFORMATION process{};
  const DWORD flags = run.isDetached ? DETACHED_PROCESS | NORMAL_PRIORITY_CLASS : 0;
  if (CreateProcessW(orNull(run.application), commandLine.data(), nullptr, nullptr, FALSE, flags, nullptr,
                     orNull(run.workingFolder), &startup, &process) == 0) {
    return false;
  }
  // Both are this process's to close, waited for or not; the program runs on without them.
  const KernelHandle processHandle(process.hProcess);
  const KernelHandle threadHandle(process.hThread);
  if (run.waitForEnd) {
    waitForEnd(processHandle.get(), run.endWhen);
    if (exitCode != nullptr) GetExitCodeProcess(processHandle.get(), exitCode);
  }
  return true;
}

bool runProgram(ProgramRun run, unsigned long* exitCode) {
  QUILLPRESS_TRACE(L"about to execute [%s]\n", run.commandLine);
  run.isDetached = true;
  if (startProgram(run, exitCode)) return true;
  writeDriverDebugOutput(L"CreateProcess failed.  Cmd Line : " + run.commandLine + L"\n");
  return false;
}
}  // namespace quillpress::driver

#include "umpd/win32/ProgramRunner.h"

#include "umpd/rules/Trace.h"
#include "umpd/win32/DriverDebugOutput.h"
#include "umpd/win32/Handles.h"

namespace quillpress::driver {
namespace {

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

}  // namespace

bool runProgram(const ProgramRun& run, unsigned long* exitCode) {
  std::wstring commandLine = run.commandLine;
  STARTUPINFOW startup = startupFor(run);
  PROCESS_INFORMATION process{};
  trace(L"about to execute [%s]\n", commandLine.c_str());
  if (CreateProcessW(run.application.c_str(), commandLine.data(), nullptr, nullptr, FALSE,
                     DETACHED_PROCESS | NORMAL_PRIORITY_CLASS, nullptr,
                     run.workingFolder.empty() ? nullptr : run.workingFolder.c_str(), &startup,
                     &process) == 0) {
    writeDriverDebugOutput(L"CreateProcess failed.  Cmd Line : " + run.commandLine + L"\n");
    return false;
  }
  const KernelHandle processHandle(process.hProcess);
  const KernelHandle threadHandle(process.hThread);
  if (run.waitForEnd) {
    WaitForSingleObject(processHandle.get(), INFINITE);
    if (exitCode != nullptr) GetExitCodeProcess(processHandle.get(), exitCode);
  }
  return true;
}

}  // namespace quillpress::driver

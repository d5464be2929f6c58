#include "tests/umpd/launcher/support/Process.h"

#include <gtest/gtest.h>

#include <array>

namespace quillpress::harness {

Process::Process(std::wstring commandLine, DWORD flags, HANDLE output) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  if (output != nullptr) {
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output;
    startup.hStdError = output;
  }
  PROCESS_INFORMATION information{};
  if (CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, output != nullptr, flags, nullptr,
                     nullptr, &startup, &information) == 0) {
    ADD_FAILURE() << "a program cannot be started: error " << GetLastError();
    return;
  }
  CloseHandle(information.hThread);
  process_.reset(information.hProcess);
  id_ = information.dwProcessId;
}

Process::~Process() {
  if (process_ && !endsWithin(0)) kill();
}

bool Process::endsWithin(DWORD milliseconds) const {
  return WaitForSingleObject(process_.get(), milliseconds) == WAIT_OBJECT_0;
}

DWORD Process::exitCode() const {
  EXPECT_TRUE(endsWithin(20000)) << "a program does not end";
  DWORD code = 0;
  GetExitCodeProcess(process_.get(), &code);
  return code;
}

void Process::kill() const {
  TerminateProcess(process_.get(), 99);
  WaitForSingleObject(process_.get(), INFINITE);
}

std::wstring folderOf(HMODULE module) {
  std::array<wchar_t, 1024> path{};
  GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
  const std::wstring text = path.data();
  return text.substr(0, text.rfind(L'\\') + 1);
}

}  // namespace quillpress::harness

#include "tests/umpd/harness/FreshProcess.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/umpd/harness/Text.h"
#include "tests/umpd/harness/Watchdog.h"

namespace quillpress::harness {
namespace {

constexpr wchar_t kVariable[] = L"QUILLPRESS_FRESH_PROCESS";

std::wstring commandLine() {
  std::array<wchar_t, 1024> program{};
  GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
  const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
  const std::string name = std::string(test->test_suite_name()) + "." + test->name();
  return L"\"" + std::wstring(program.data()) + L"\" --gtest_filter=" + widen(name);
}

// A file for what the other process prints, gone with this object.
class OutputFile {
 public:
  OutputFile() {
    std::array<wchar_t, MAX_PATH> folder{};
    GetTempPathW(MAX_PATH, folder.data());
    GetTempFileNameW(folder.data(), L"qp", 0, path_.data());
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    handle_ =
        CreateFileW(path_.data(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0, nullptr);
  }
  ~OutputFile() {
    CloseHandle(handle_);
    DeleteFileW(path_.data());
  }
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  [[nodiscard]] HANDLE handle() const { return handle_; }

  [[nodiscard]] std::string text() const {
    std::ifstream file(narrow(path_.data()), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::array<wchar_t, MAX_PATH> path_{};
  HANDLE handle_ = nullptr;
};

// The exit code, or nothing sensible when the process had to be ended.
DWORD waitFor(HANDLE process) {
  if (WaitForSingleObject(process, Watchdog::remainingMilliseconds()) != WAIT_OBJECT_0) {
    ADD_FAILURE() << "the fresh process does not end";
    TerminateProcess(process, 1);
  }
  DWORD code = 1;
  GetExitCodeProcess(process, &code);
  return code;
}

void runAgain() {
  const OutputFile output;
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output.handle();
  startup.hStdError = output.handle();
  PROCESS_INFORMATION process{};
  std::wstring command = commandLine();
  SetEnvironmentVariableW(kVariable, L"1");
  const BOOL started = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                      &startup, &process);
  SetEnvironmentVariableW(kVariable, nullptr);
  ASSERT_TRUE(started) << "error " << GetLastError();
  const DWORD code = waitFor(process.hProcess);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  EXPECT_EQ(code, 0U) << "in a fresh process:\n" << output.text();
}

}  // namespace

void inFreshProcess(const std::function<void()>& body) {
  const bool isFresh = GetEnvironmentVariableW(kVariable, nullptr, 0) != 0;
  if (isFresh) {
    body();
  } else {
    runAgain();
  }
}

}  // namespace quillpress::harness

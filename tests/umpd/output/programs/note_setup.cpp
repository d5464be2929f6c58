// Stands in for the set-up program: writes its command line, as UTF-16, into the file named by
// NOTE_SETUP_FILE, after a moment in which a caller that does not wait would go on.

#include <windows.h>

#include <array>
#include <cwchar>

int main() {
  std::array<wchar_t, 1024> path{};
  GetEnvironmentVariableW(L"NOTE_SETUP_FILE", path.data(), static_cast<DWORD>(path.size()));
  Sleep(400);
  const HANDLE file =
      CreateFileW(path.data(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  const wchar_t* const line = GetCommandLineW();
  DWORD written = 0;
  const auto size = static_cast<DWORD>(std::wcslen(line) * sizeof *line);
  const BOOL isWhole = WriteFile(file, line, size, &written, nullptr);
  CloseHandle(file);
  return isWhole != 0 ? 0 : 1;
}

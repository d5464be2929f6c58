// Writes how it was started into the file named by NOTE_START_FILE, one UTF-16 text a line: its command line
// and its working folder. Ends with the exit code in NOTE_START_EXIT.

#include <windows.h>

#include <array>
#include <cstdlib>
#include <string>

namespace {

std::wstring variable(const wchar_t* name) {
  std::array<wchar_t, 1024> value{};
  GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size()));
  return value.data();
}

std::wstring workingFolder() {
  std::array<wchar_t, 1024> folder{};
  GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data());
  return folder.data();
}

}  // namespace

int main() {
  const std::wstring text = std::wstring(GetCommandLineW()) + L"\n" + workingFolder() + L"\n";
  const HANDLE file = CreateFileW(variable(L"NOTE_START_FILE").c_str(), GENERIC_WRITE, 0, nullptr,
                                  CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  DWORD written = 0;
  WriteFile(file, text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)), &written, nullptr);
  CloseHandle(file);
  return static_cast<int>(std::wcstol(variable(L"NOTE_START_EXIT").c_str(), nullptr, 10));
}

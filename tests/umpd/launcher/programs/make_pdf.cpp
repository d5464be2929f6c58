// Stands in for quillpress.exe: makes a file of the name behind "-o" that begins as a PDF does and then names
// the job, the last argument. The text behind "MAKE_PDF_STATUS=" in the environment is its exit code; 1 to 4
// make no file. With the name of an event in MAKE_PDF_WAITS_FOR it waits for that first.

#include <windows.h>
// After windows.h.
#include <shellapi.h>

#include <array>
#include <string>

namespace {

std::wstring variable(const wchar_t* name) {
  std::array<wchar_t, 1024> value{};
  GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size()));
  return value.data();
}

void waitAsTold() {
  const std::wstring name = variable(L"MAKE_PDF_WAITS_FOR");
  if (name.empty()) return;
  const HANDLE event = OpenEventW(SYNCHRONIZE, FALSE, name.c_str());
  WaitForSingleObject(event, 60'000);
}

std::string narrow(const wchar_t* text) {
  std::string bytes(4096, '\0');
  const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), static_cast<int>(bytes.size()),
                                       nullptr, nullptr);
  return bytes.substr(0, static_cast<std::size_t>(size - 1));
}

bool isWritten(const wchar_t* path, const std::string& bytes) {
  const HANDLE file =
      CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  DWORD written = 0;
  const BOOL whole = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  CloseHandle(file);
  return whole != 0;
}

}  // namespace

int main() {
  int count = 0;
  LPWSTR* const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  waitAsTold();
  const int status = _wtoi(variable(L"MAKE_PDF_STATUS").c_str());
  if (status >= 1 && status <= 4) return status;
  for (int i = 1; i + 1 < count; ++i) {
    const bool isOutput = std::wstring(arguments[i]) == L"-o";
    if (isOutput && isWritten(arguments[i + 1], "%PDF of " + narrow(arguments[count - 1]))) return status;
  }
  return 99;
}

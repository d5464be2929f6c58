// Writes the arguments that it was started with into the file named by NOTE_ARGUMENTS_FILE: UTF-8, each
// followed by a zero. The file appears under its name when it is complete. With "--stay" among them it lasts
// for a while.

#include <windows.h>
// After windows.h.
#include <shellapi.h>

#include <array>
#include <string>

namespace {

std::string toUtf8(const wchar_t* text) {
  std::string bytes(4096, '\0');
  const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), static_cast<int>(bytes.size()),
                                       nullptr, nullptr);
  return bytes.substr(0, static_cast<std::size_t>(size));
}

std::wstring noteFile() {
  std::array<wchar_t, 1024> path{};
  GetEnvironmentVariableW(L"NOTE_ARGUMENTS_FILE", path.data(), static_cast<DWORD>(path.size()));
  return path.data();
}

}  // namespace

int main() {
  int count = 0;
  LPWSTR* arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  std::string bytes;
  bool stays = false;
  for (int i = 0; i < count; ++i) {
    bytes += toUtf8(arguments[i]);
    stays = stays || arguments[i] == std::wstring(L"--stay");
  }

  const std::wstring path = noteFile();
  const std::wstring unfinished = path + L".unfinished";
  const HANDLE file = CreateFileW(unfinished.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  DWORD written = 0;
  const BOOL whole = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  CloseHandle(file);
  const BOOL inPlace = MoveFileW(unfinished.c_str(), path.c_str());
  if (stays) Sleep(2000);
  return whole != 0 && inPlace != 0 ? 0 : 1;
}

#include "tests/unit/win32/support/NoteStart.h"

#include <windows.h>

#include <array>
#include <cstring>

namespace quillpress::classes {

NoteStart::NoteStart() {
  SetEnvironmentVariableW(L"NOTE_START_FILE", folder_.file(L"note").c_str());
}

NoteStart::~NoteStart() {
  SetEnvironmentVariableW(L"NOTE_START_FILE", nullptr);
  SetEnvironmentVariableW(L"NOTE_START_EXIT", nullptr);
}

std::wstring NoteStart::program() {
  std::array<wchar_t, 1024> own{};
  GetModuleFileNameW(nullptr, own.data(), static_cast<DWORD>(own.size()));
  const std::wstring path = own.data();
  return path.substr(0, path.rfind(L'\\') + 1) + L"note_start.exe";
}

void NoteStart::setExitCode(int code) {
  SetEnvironmentVariableW(L"NOTE_START_EXIT", std::to_wstring(code).c_str());
}

bool NoteStart::hasRun() const {
  return harness::fileExists(folder_.file(L"note"));
}

std::wstring NoteStart::line(int number) const {
  const std::string bytes = harness::readFile(folder_.file(L"note"));
  std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
  for (int i = 0; i < number; ++i) text.erase(0, text.find(L'\n') + 1);
  return text.substr(0, text.find(L'\n'));
}

}  // namespace quillpress::classes

#include "tools/launcher/Log.h"

namespace quillpress::launcher {
namespace {

std::string toUtf8(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  const int needed = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  if (needed <= 0) return {};
  std::string bytes(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), needed, nullptr, nullptr);
  return bytes;
}

bool isConsole(HANDLE output) {
  DWORD mode = 0;
  return GetConsoleMode(output, &mode) != 0;
}

}  // namespace

Log::Log(const std::wstring& path) : toFile_(!path.empty()) {
  if (!toFile_) {
    // Null for a program that was started without one: then all writing comes to nothing.
    standardOutput_ = GetStdHandle(STD_OUTPUT_HANDLE);
    return;
  }
  file_.reset(CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                          OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

void Log::writeLine(std::wstring_view line) {
  const std::wstring text = std::wstring(line) + L'\n';
  const HANDLE output = toFile_ ? file_.get() : standardOutput_;
  DWORD written = 0;
  if (isConsole(output)) {
    WriteConsoleW(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    return;
  }
  const std::string bytes = toUtf8(text);
  WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

}  // namespace quillpress::launcher

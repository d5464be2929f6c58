#include "tests/umpd/harness/DriverFolder.h"

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h.
#include <winspool.h>

#include <array>

namespace quillpress::harness {
namespace {

std::wstring driverDirectory() {
  std::array<wchar_t, MAX_PATH> path{};
  DWORD needed = 0;
  EXPECT_TRUE(GetPrinterDriverDirectoryW(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(path.data()),
                                         sizeof path, &needed))
      << "error " << GetLastError();
  return path.data();
}

std::wstring versionFolder(const WindowsRelease& release) {
  if (release.is9x()) return L"\\";
  return release.isNt4() ? L"\\2\\" : L"\\3\\";
}

void makeFolders(const std::wstring& path) {
  for (size_t end = path.find(L'\\'); end != std::wstring::npos; end = path.find(L'\\', end + 1)) {
    CreateDirectoryW(path.substr(0, end).c_str(), nullptr);
  }
}

void writeBytes(const std::wstring& path, const void* bytes, size_t size) {
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(file, INVALID_HANDLE_VALUE) << "error " << GetLastError();
  DWORD written = 0;
  EXPECT_TRUE(WriteFile(file, bytes, static_cast<DWORD>(size), &written, nullptr));
  CloseHandle(file);
}

}  // namespace

DriverFolder::DriverFolder(const WindowsRelease& release)
    : path_(driverDirectory() + versionFolder(release)) {
  makeFolders(path_);
  removeIni();
}

DriverFolder::~DriverFolder() {
  removeIni();
}

void DriverFolder::writeIni(const std::string& text) const {
  writeBytes(path_ + L"twsconf.ini", text.data(), text.size());
}

void DriverFolder::writeIni(const std::wstring& text) const {
  const std::wstring marked = L"\xFEFF" + text;
  writeBytes(path_ + L"twsconf.ini", marked.data(), marked.size() * sizeof(wchar_t));
}

void DriverFolder::removeIni() const {
  DeleteFileW((path_ + L"twsconf.ini").c_str());
}

}  // namespace quillpress::harness

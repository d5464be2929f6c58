#include "tests/umpd/launcher/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <array>

#include "tests/umpd/launcher/support/Handle.h"

namespace quillpress::harness {

TemporaryFolder::TemporaryFolder() {
  static int count = 0;
  std::array<wchar_t, MAX_PATH> temporary{};
  GetTempPathW(static_cast<DWORD>(temporary.size()), temporary.data());
  const std::wstring start =
      std::wstring(temporary.data()) + L"quill" + std::to_wstring(GetCurrentProcessId()) + L"-";
  // A process of the same number may have left a folder behind.
  bool isMade = false;
  do {
    path_ = start + std::to_wstring(++count);
    isMade = CreateDirectoryW(path_.c_str(), nullptr) != 0;
  } while (!isMade && GetLastError() == ERROR_ALREADY_EXISTS);
  EXPECT_TRUE(isMade) << "error " << GetLastError();
}

TemporaryFolder::~TemporaryFolder() {
  for (const std::wstring& name : files()) {
    SetFileAttributesW(file(name).c_str(), FILE_ATTRIBUTE_NORMAL);
    DeleteFileW(file(name).c_str());
  }
  RemoveDirectoryW(path_.c_str());
}

std::vector<std::wstring> TemporaryFolder::files() const {
  std::vector<std::wstring> names;
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW(file(L"*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return names;
  do {
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names.emplace_back(found.cFileName);
  } while (FindNextFileW(search, &found) != 0);
  FindClose(search);
  std::sort(names.begin(), names.end());
  return names;
}

std::string readFile(const std::wstring& path) {
  const HANDLE opened =
      CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, 0, nullptr);
  if (opened == INVALID_HANDLE_VALUE) {
    ADD_FAILURE() << "a file cannot be read: error " << GetLastError();
    return {};
  }
  const Handle file(opened);
  std::string bytes(GetFileSize(file.get(), nullptr), '\0');
  DWORD read = 0;
  EXPECT_TRUE(ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr));
  bytes.resize(read);
  return bytes;
}

void writeFile(const std::wstring& path, const std::string& bytes) {
  const HANDLE opened =
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(opened, INVALID_HANDLE_VALUE) << "error " << GetLastError();
  const Handle file(opened);
  DWORD written = 0;
  EXPECT_TRUE(WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
}

bool fileExists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace quillpress::harness

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>

#include "win32/Handles.h"

namespace quillpress::classes {
namespace {

void removeFilesOf(const std::wstring& folder) {
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    DeleteFileW((folder + L"\\" + found.cFileName).c_str());
  } while (FindNextFileW(search, &found) != FALSE);
  FindClose(search);
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
  static int count = 0;
  std::array<wchar_t, MAX_PATH> root{};
  GetTempPathW(MAX_PATH, root.data());
  path_ = std::wstring(root.data()) + L"quillpress" + std::to_wstring(GetCurrentProcessId()) + L"-" +
          std::to_wstring(++count);
  EXPECT_TRUE(CreateDirectoryW(path_.c_str(), nullptr)) << "error " << GetLastError();
}

TemporaryFolder::~TemporaryFolder() {
  removeFilesOf(path_);
  EXPECT_TRUE(RemoveDirectoryW(path_.c_str())) << "error " << GetLastError();
}

bool fileExists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string bytesOf(const std::wstring& path) {
  const FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr));
  if (!file) {
    ADD_FAILURE() << "the file cannot be opened: error " << GetLastError();
    return {};
  }
  std::string bytes(GetFileSize(file.get(), nullptr), '\0');
  DWORD size = 0;
  EXPECT_TRUE(ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &size, nullptr));
  EXPECT_EQ(size, bytes.size());
  return bytes;
}

}  // namespace quillpress::classes

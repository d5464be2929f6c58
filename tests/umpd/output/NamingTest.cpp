#include "tests/umpd/output/NamingTest.h"

#include <algorithm>
#include <array>

namespace quillpress::harness {

// A path without a folder lies in the current one.
NamingTest::NamingTest() {
  std::array<wchar_t, MAX_PATH> current{};
  GetCurrentDirectoryW(static_cast<DWORD>(current.size()), current.data());
  formerCurrentFolder_ = current.data();
  SetCurrentDirectoryW(folder.path().c_str());
  pretendUser(library, user);
  settings.setNumber(L"FinishPrintEv", 1);
  setFolder(folder.path());
}

NamingTest::~NamingTest() {
  SetCurrentDirectoryW(formerCurrentFolder_.c_str());
  removeTree(folder.path());
}

int NamingTest::print(const std::wstring& documentName) {
  settings.remove(L"lastfile");
  Job job(library, printer, documentName, 1);
  const int written = job.write("bytes of the job");
  EXPECT_EQ(job.end(), 1);
  return written;
}

std::wstring NamingTest::place(const std::wstring& documentName) {
  EXPECT_EQ(print(documentName), 1);
  std::wstring path = settings.text(L"lastfile").value_or(L"");
  EXPECT_EQ(readFile(path), "bytes of the job");
  return path;
}

std::wstring NamingTest::choose(const std::wstring& documentName) {
  print(documentName);
  return settings.text(L"lastfile").value_or(L"nowhere");
}

void NamingTest::expectNoPath(const std::wstring& documentName) {
  EXPECT_EQ(print(documentName), 0);
  const Box box = boxes.takeOne();
  EXPECT_EQ(box.caption, L"setOutputFilename failed");
  EXPECT_TRUE(box.wide);
  EXPECT_EQ(box.owner, nullptr);
  EXPECT_NE(box.style & MB_SERVICE_NOTIFICATION, 0U);
  EXPECT_EQ(settings.text(L"lastfile"), std::nullopt);
}

bool isNumbered(const std::wstring& path, const std::wstring& before, const std::wstring& after) {
  if (path.size() <= before.size() + after.size() || !path.starts_with(before) || !path.ends_with(after))
    return false;
  const std::wstring number = path.substr(before.size(), path.size() - before.size() - after.size());
  return std::all_of(number.begin(), number.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

void removeTree(const std::wstring& path) {
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW((path + L"\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::wstring name = found.cFileName;
    if (name == L"." || name == L"..") continue;
    const std::wstring each = path + L"\\" + name;
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
      removeTree(each);
    } else {
      SetFileAttributesW(each.c_str(), FILE_ATTRIBUTE_NORMAL);
      DeleteFileW(each.c_str());
    }
  } while (FindNextFileW(search, &found) != 0);
  FindClose(search);
  RemoveDirectoryW(path.c_str());
}

}  // namespace quillpress::harness

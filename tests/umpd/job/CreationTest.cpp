// How the output file is created, and what happens when it cannot be.

#include <string>
#include <vector>

#include "tests/umpd/job/JobTest.h"

namespace quillpress::harness {
namespace {

class CreationTest : public JobTest {
 protected:
  // Has the library find no file at any path, as when one appears between its look and the creation.
  void hideFiles() { FAIL_EVERY(library, GetFileAttributesW, INVALID_FILE_ATTRIBUTES, ERROR_FILE_NOT_FOUND); }

  const std::wstring path = folder.file(L"Document.pdf");
};

TEST_F(CreationTest, AsksForWritingWhileOthersMayReadAndReplacesWhatIsThere) {
  struct Call {
    std::wstring path;
    DWORD access, sharing, disposition, attributes;
    bool hasSecurity, hasTemplate;
  };
  std::vector<Call> calls;
  library.replace("CreateFileW", [&](LPCWSTR file, DWORD access, DWORD sharing,
                                     LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD attributes,
                                     HANDLE model) {
    calls.push_back({file, access, sharing, disposition, attributes, security != nullptr, model != nullptr});
    return ::CreateFileW(file, access, sharing, security, disposition, attributes, model);
  });
  EXPECT_EQ(print(L"Document"), 1);
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0].path, path);
  EXPECT_EQ(calls[0].access, static_cast<DWORD>(GENERIC_WRITE));
  EXPECT_EQ(calls[0].sharing, static_cast<DWORD>(FILE_SHARE_READ));
  EXPECT_EQ(calls[0].disposition, static_cast<DWORD>(CREATE_ALWAYS));
  EXPECT_EQ(calls[0].attributes, static_cast<DWORD>(FILE_ATTRIBUTE_NORMAL));
  EXPECT_FALSE(calls[0].hasSecurity);
  EXPECT_FALSE(calls[0].hasTemplate);
}

TEST_F(CreationTest, OthersMayReadMeanwhile) {
  const Job job(library, printer);
  job.write("half");
  EXPECT_EQ(readFile(path), "half");
}

TEST_F(CreationTest, OthersMayNotWriteMeanwhile) {
  const Job job(library, printer);
  job.write("half");
  EXPECT_EQ(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                        OPEN_EXISTING, 0, nullptr),
            INVALID_HANDLE_VALUE);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SHARING_VIOLATION));
}

TEST_F(CreationTest, AFileThatExistsIsLeftAlone) {
  writeFile(path, "older");
  EXPECT_EQ(print(L"Document", "newer"), 1);
  EXPECT_EQ(readFile(path), "older");
  EXPECT_NE(lastFile(), path);
  EXPECT_EQ(readFile(*lastFile()), "newer");
}

TEST_F(CreationTest, AReadOnlyFileThatExistsIsLeftAlone) {
  writeFile(path, "older");
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(print(L"Document", "newer"), 1);
  EXPECT_EQ(readFile(path), "older");
  EXPECT_EQ(readFile(*lastFile()), "newer");
}

TEST_F(CreationTest, AFileThatAppearsMeanwhileIsReplaced) {
  writeFile(path, "much older than the other");
  hideFiles();
  EXPECT_EQ(print(L"Document", "newer"), 1);
  EXPECT_EQ(lastFile(), path);
  EXPECT_EQ(readFile(path), "newer");
}

// Creations that fail, one way or another.
class FailedCreationTest : public CreationTest {
 protected:
  FailedCreationTest() {
    library.replace("WriteFile", [this](HANDLE, LPCVOID, DWORD, LPDWORD, LPOVERLAPPED) -> BOOL {
      ++writes;
      return FALSE;
    });
  }

  // A job whose file cannot be created, from start to end.
  void expectFailure(const std::wstring& wantedPath) {
    Job job(library, printer, L"Document", 5);
    EXPECT_EQ(job.write("one"), 0);
    EXPECT_EQ(job.write("two"), 0);
    EXPECT_EQ(job.end(), 1);
    EXPECT_EQ(queue.controls().size(), 1U);
    EXPECT_EQ(lastFile(), wantedPath);
    EXPECT_EQ(lastName(), L"Document");
    EXPECT_TRUE(boxes.take().empty());
  }

  int writes = 0;
};

TEST_F(FailedCreationTest, OnAMissingDriveFailsTheWriteAndEndsTheJobAsUsual) {
  settings.setText(L"DefaultSaveDir", L"Q:\\nowhere");
  expectFailure(L"Q:\\nowhere\\Document.pdf");
}

TEST_F(FailedCreationTest, BelowAPlainFileFailsTheWriteAndEndsTheJobAsUsual) {
  writeFile(folder.file(L"plain"), "older");
  settings.setText(L"DefaultSaveDir", folder.file(L"plain\\below"));
  expectFailure(folder.file(L"plain\\below\\Document.pdf"));
  EXPECT_EQ(readFile(folder.file(L"plain")), "older");
}

TEST_F(FailedCreationTest, OfAFileThatOthersHoldFailsTheWriteAndEndsTheJobAsUsual) {
  writeFile(path, "older");
  const Handle holder(
      CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  hideFiles();
  expectFailure(path);
  EXPECT_EQ(readFile(path), "older");
}

TEST_F(FailedCreationTest, OfAReadOnlyFileFailsTheWriteAndEndsTheJobAsUsual) {
  writeFile(path, "older");
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
  hideFiles();
  // Windows refuses it to everybody; under Wine a superuser is let through.
  library.replace("CreateFileW",
                  [](LPCWSTR file, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security,
                     DWORD disposition, DWORD attributes, HANDLE model) -> HANDLE {
                    if ((::GetFileAttributesW(file) & FILE_ATTRIBUTE_READONLY) != 0) {
                      SetLastError(ERROR_ACCESS_DENIED);
                      return INVALID_HANDLE_VALUE;
                    }
                    return ::CreateFileW(file, access, sharing, security, disposition, attributes, model);
                  });
  expectFailure(path);
  EXPECT_EQ(readFile(path), "older");
}

TEST_F(FailedCreationTest, NeverGivesAnInvalidHandleToTheSystem) {
  int closings = 0;
  library.replace("CloseHandle", [&](HANDLE handle) -> BOOL {
    if (handle == INVALID_HANDLE_VALUE) ++closings;
    return ::CloseHandle(handle);
  });
  settings.setText(L"DefaultSaveDir", L"Q:\\nowhere");
  EXPECT_EQ(print(L"Document"), 0);
  EXPECT_EQ(writes, 0);
  EXPECT_EQ(closings, 0);
}

// A system that gives no handle at all, not even the invalid one.
class NoHandleTest : public FailedCreationTest {
 protected:
  NoHandleTest() { FAIL_EVERY(library, CreateFileW, nullptr, ERROR_ACCESS_DENIED); }
};

TEST_F(NoHandleTest, ShowsABoxWithThePathAsCaption) {
  const Job job(library, printer);
  EXPECT_EQ(job.write("x"), 0);
  const Box box = boxes.takeOne();
  EXPECT_EQ(box.caption, path);
  EXPECT_TRUE(box.wide);
  EXPECT_EQ(box.owner, nullptr);
  EXPECT_NE(box.style & MB_SERVICE_NOTIFICATION, 0U);
}

TEST_F(NoHandleTest, EndsWithoutTouchingTheQueueOrTellingAnybody) {
  Job job(library, printer);
  EXPECT_EQ(job.write("x"), 0);
  EXPECT_EQ(boxes.take().size(), 1U);
  EXPECT_EQ(job.write("x"), 0);
  EXPECT_EQ(job.end(), 1);
  EXPECT_TRUE(queue.controls().empty());
  EXPECT_EQ(lastFile(), std::nullopt);
  EXPECT_EQ(writes, 0);
}

}  // namespace
}  // namespace quillpress::harness

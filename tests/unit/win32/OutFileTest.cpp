#include <algorithm>

#include "tests/umpd/launcher/support/TemporaryFolder.h"
#include "tests/unit/win32/support/ClassTest.h"
#include "umpd/job/JobOutput.h"

namespace quillpress::driver {
namespace {

class OutFileTest : public classes::ClassTest {
 protected:
  static std::span<const std::byte> bytes(std::string_view text) {
    return {reinterpret_cast<const std::byte*>(text.data()), text.size()};
  }

  // Creation yields this handle until the end of the test.
  void failCreation(HANDLE result) {
    imports.replace("CreateFileW",
                    [result](LPCWSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD, HANDLE) -> HANDLE {
                      SetLastError(ERROR_ACCESS_DENIED);
                      return result;
                    });
  }

  // The handles closed from now on.
  std::vector<HANDLE>& watchClosing() {
    auto* const close = classes::real<decltype(CloseHandle)>(L"kernel32.dll", "CloseHandle");
    imports.replace("CloseHandle", [this, close](HANDLE handle) -> BOOL {
      closed.push_back(handle);
      return close(handle);
    });
    return closed;
  }

  std::vector<HANDLE> closed;
  const harness::TemporaryFolder folder;
  const std::wstring path = folder.file(L"out.pdf");
  OutFile file;
};

TEST_F(OutFileTest, IsNotBegunAtFirst) {
  EXPECT_FALSE(file.isBegun());
  EXPECT_FALSE(file.isCreated());
  EXPECT_FALSE(file.write(bytes("abc")));
  EXPECT_FALSE(file.write(bytes("")));
}

TEST_F(OutFileTest, HoldsWhatWasWritten) {
  ASSERT_TRUE(file.create(path));
  EXPECT_TRUE(file.isBegun());
  EXPECT_TRUE(file.isCreated());
  EXPECT_TRUE(file.write(bytes("abc")));
  EXPECT_TRUE(file.write(bytes("")));
  EXPECT_TRUE(file.write(bytes("def")));
  file.close();
  EXPECT_FALSE(file.isBegun());
  EXPECT_EQ(harness::readFile(path), "abcdef");
}

TEST_F(OutFileTest, ReplacesAFileThatExists) {
  ASSERT_TRUE(file.create(path));
  EXPECT_TRUE(file.write(bytes("a long text")));
  file.close();
  ASSERT_TRUE(file.create(path));
  EXPECT_TRUE(file.write(bytes("abc")));
  file.close();
  EXPECT_EQ(harness::readFile(path), "abc");
}

TEST_F(OutFileTest, OthersMayReadItAndNotWriteIt) {
  ASSERT_TRUE(file.create(path));
  EXPECT_TRUE(file.write(bytes("abc")));
  EXPECT_EQ(harness::readFile(path), "abc");
  const FileHandle writer(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, 0, nullptr));
  EXPECT_FALSE(writer);
  file.close();
}

TEST_F(OutFileTest, IsCreatedForWritingAnew) {
  auto* const create = classes::real<decltype(CreateFileW)>(L"kernel32.dll", "CreateFileW");
  imports.replace("CreateFileW",
                  [&](LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD how,
                      DWORD attributes, HANDLE model) -> HANDLE {
                    EXPECT_EQ(name, path);
                    EXPECT_EQ(access, static_cast<DWORD>(GENERIC_WRITE));
                    EXPECT_EQ(share, static_cast<DWORD>(FILE_SHARE_READ));
                    EXPECT_EQ(how, static_cast<DWORD>(CREATE_ALWAYS));
                    EXPECT_EQ(attributes, static_cast<DWORD>(FILE_ATTRIBUTE_NORMAL));
                    return create(name, access, share, security, how, attributes, model);
                  });
  EXPECT_TRUE(file.create(path));
  imports.restore("CreateFileW");
  file.close();
}

TEST_F(OutFileTest, AFailedCreationCountsAsBegun) {
  failCreation(INVALID_HANDLE_VALUE);
  EXPECT_FALSE(file.create(path));
  EXPECT_TRUE(file.isBegun());
  EXPECT_FALSE(file.isCreated());
  EXPECT_FALSE(file.write(bytes("abc")));
}

TEST_F(OutFileTest, TheInvalidHandleIsNotGivenToTheSystem) {
  failCreation(INVALID_HANDLE_VALUE);
  EXPECT_FALSE(file.create(path));
  imports.replace("WriteFile", [](HANDLE, LPCVOID, DWORD, LPDWORD, LPOVERLAPPED) -> BOOL {
    ADD_FAILURE();
    return TRUE;
  });
  EXPECT_FALSE(file.write(bytes("abc")));
  std::vector<HANDLE>& handles = watchClosing();
  file.close();
  EXPECT_EQ(std::count(handles.begin(), handles.end(), INVALID_HANDLE_VALUE), 0);
  EXPECT_FALSE(file.isBegun());
}

TEST_F(OutFileTest, WithoutAnyHandleItIsNotBegun) {
  failCreation(nullptr);
  EXPECT_FALSE(file.create(path));
  EXPECT_FALSE(file.isBegun());
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
}

TEST_F(OutFileTest, ABlockThatIsCutShortFails) {
  ASSERT_TRUE(file.create(path));
  imports.replace("WriteFile", [](HANDLE, LPCVOID, DWORD size, LPDWORD written, LPOVERLAPPED) -> BOOL {
    *written = size - 1;
    return TRUE;
  });
  EXPECT_FALSE(file.write(bytes("abc")));
  imports.restore("WriteFile");
  file.close();
}

TEST_F(OutFileTest, ItsEndClosesIt) {
  {
    OutFile abandoned;
    ASSERT_TRUE(abandoned.create(path));
    EXPECT_TRUE(abandoned.write(bytes("abc")));
  }
  EXPECT_EQ(harness::readFile(path), "abc");
  EXPECT_TRUE(DeleteFileW(path.c_str()));
}

}  // namespace
}  // namespace quillpress::driver

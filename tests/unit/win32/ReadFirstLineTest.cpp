#include <gtest/gtest.h>

#include "tests/umpd/launcher/support/TemporaryFolder.h"
#include "umpd/output/SetFilename.h"
#include "umpd/win32/Resources.h"

namespace quillpress::driver {
namespace {

constexpr std::size_t kBufferLength = 520;

class ReadFirstLineTest : public ::testing::Test {
 protected:
  void write(const std::string& bytes) const {
    const FileHandle file(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    EXPECT_TRUE(WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
  }

  [[nodiscard]] std::optional<std::wstring> lineOf(const std::string& bytes) const {
    write(bytes);
    return readFirstLine(path, kBufferLength);
  }

  const harness::TemporaryFolder folder;
  const std::wstring path = folder.file(L"name.txt");
};

TEST_F(ReadFirstLineTest, IsTheFirstLineWithoutItsEnd) {
  EXPECT_EQ(lineOf("Report.pdf \t\r\nmore\r\n"), L"Report.pdf");
  EXPECT_EQ(lineOf("Report.pdf"), L"Report.pdf");
}

TEST_F(ReadFirstLineTest, IsReadInTheAnsiCodePage) {
  EXPECT_EQ(lineOf("\xC4\x80.pdf\n"), L"\x00C4\x20AC.pdf");
}

TEST_F(ReadFirstLineTest, OfAnEmptyFileIsEmpty) {
  EXPECT_EQ(lineOf(""), L"");
  EXPECT_EQ(lineOf("\r\n"), L"");
}

TEST_F(ReadFirstLineTest, IsCutBelowTheBuffersSize) {
  for (const std::size_t length : {518U, 519U, 520U, 100'000U}) {
    EXPECT_EQ(lineOf(std::string(length, 'n')), std::wstring(std::min<std::size_t>(length, 519), L'n'));
  }
}

TEST_F(ReadFirstLineTest, IsNoneWhenTheFileCannotBeOpened) {
  EXPECT_EQ(readFirstLine(path, kBufferLength), std::nullopt);
  EXPECT_EQ(readFirstLine(folder.path(), kBufferLength), std::nullopt);
  EXPECT_EQ(readFirstLine(L"", kBufferLength), std::nullopt);
}

TEST_F(ReadFirstLineTest, OthersMayHaveTheFileOpen) {
  write("Report.pdf\n");
  const FileHandle writer(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
  ASSERT_TRUE(writer);
  EXPECT_EQ(readFirstLine(path, kBufferLength), L"Report.pdf");
}

}  // namespace
}  // namespace quillpress::driver

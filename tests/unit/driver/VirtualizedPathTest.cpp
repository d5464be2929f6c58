#include <gtest/gtest.h>

#include "umpd/rules/OutputPath.h"

namespace quillpress::driver {
namespace {

constexpr wchar_t kBelow[] = L"\\Microsoft\\Windows\\Temporary Internet Files\\Virtualized\\";

TEST(VirtualizedPathTest, LiesBelowTheFolderOfTheApplicationData) {
  EXPECT_EQ(virtualizedPath(L"C:\\Out\\Report.pdf", L"C:\\Users\\u\\AppData\\Local"),
            L"C:\\Users\\u\\AppData\\Local\\Microsoft\\Windows\\Temporary Internet Files\\Virtualized\\"
            L"C\\Users\\u\\AppData\\Local\\Report.pdf");
}

TEST(VirtualizedPathTest, OnlyTheNameOfThePathIsUsed) {
  const std::wstring expected = std::wstring(L"D:\\d") + kBelow + L"D\\d\\a.pdf";
  EXPECT_EQ(virtualizedPath(L"a.pdf", L"D:\\d"), expected);
  EXPECT_EQ(virtualizedPath(L"\\\\server\\share\\a.pdf", L"D:\\d"), expected);
}

TEST(VirtualizedPathTest, ASlashDoesNotDivide) {
  EXPECT_EQ(virtualizedPath(L"C:\\Out/a.pdf", L"D:\\d"),
            std::wstring(L"D:\\d") + kBelow + L"D\\d\\Out/a.pdf");
}

TEST(VirtualizedPathTest, OneSeparatorStandsBeforeTheName) {
  EXPECT_EQ(virtualizedPath(L"a.pdf", L"D:\\"), std::wstring(L"D:\\") + kBelow + L"D\\a.pdf");
}

TEST(VirtualizedPathTest, AFolderOfTheNetworkHasNoColon) {
  EXPECT_EQ(virtualizedPath(L"a.pdf", L"\\\\s\\u"), std::wstring(L"\\\\s\\u") + kBelow + L"\\\\s\\u\\a.pdf");
}

TEST(VirtualizedPathTest, WithoutTheFolderThereIsNone) {
  EXPECT_EQ(virtualizedPath(L"C:\\Out\\a.pdf", L""), L"");
}

}  // namespace
}  // namespace quillpress::driver

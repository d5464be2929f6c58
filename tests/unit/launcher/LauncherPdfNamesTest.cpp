#include <gtest/gtest.h>

#include "tools/launcher/CommandLine.h"
#include "tools/launcher/PdfNames.h"

namespace quillpress::launcher {
namespace {

TEST(LauncherPdfNamesTest, ThePdfTakesThePlaceOfAFileOfThatName) {
  EXPECT_EQ(pdfPathOf(L"C:\\Out\\Report.pdf"), L"C:\\Out\\Report.pdf");
  EXPECT_EQ(pdfPathOf(L"C:\\Out\\REPORT.PDF"), L"C:\\Out\\REPORT.PDF");
}

TEST(LauncherPdfNamesTest, AnEndingOfPostScriptGivesWay) {
  EXPECT_EQ(pdfPathOf(L"Report.ps"), L"Report.pdf");
  EXPECT_EQ(pdfPathOf(L"Report.EPS"), L"Report.pdf");
  EXPECT_EQ(pdfPathOf(L"C:\\a.b\\Report.prn"), L"C:\\a.b\\Report.pdf");
}

TEST(LauncherPdfNamesTest, AnyOtherNameGetsTheEndingAdded) {
  EXPECT_EQ(pdfPathOf(L"Report"), L"Report.pdf");
  EXPECT_EQ(pdfPathOf(L"Report.docx"), L"Report.docx.pdf");
  EXPECT_EQ(pdfPathOf(L"pdf"), L"pdf.pdf");
}

TEST(LauncherPdfNamesTest, AFolderTakesTheNameAlone) {
  EXPECT_EQ(inFolder(L"D:\\Archive", L"C:\\Out\\Report.pdf"), L"D:\\Archive\\Report.pdf");
  EXPECT_EQ(inFolder(L"D:\\Archive\\", L"C:Report.pdf"), L"D:\\Archive\\Report.pdf");
  EXPECT_EQ(inFolder(L"D:/", L"C:/Out/Report.pdf"), L"D:/Report.pdf");
}

TEST(LauncherPdfNamesTest, NamesThatAreTakenAreNumbered) {
  EXPECT_EQ(numbered(L"Report.pdf", 1), L"Report.pdf");
  EXPECT_EQ(numbered(L"Report.pdf", 2), L"Report (2).pdf");
  EXPECT_EQ(numbered(L"Report.PDF", 17), L"Report (17).pdf");
}

TEST(LauncherPdfNamesTest, AFolderEndsInItsSeparator) {
  EXPECT_EQ(folderOf(L"C:\\Out\\Report.pdf"), L"C:\\Out\\");
  EXPECT_EQ(folderOf(L"Report.pdf"), L"");
}

TEST(LauncherPdfNamesTest, NoNameOfAFileIsTakenForAnOption) {
  const std::wstring line = converterCommandLine(L"C:\\a b\\quillpress.exe", L"--batch \"x", L"~1.pdf");
  EXPECT_EQ(splitCommandLine(line),
            (std::vector<std::wstring>{L"C:\\a b\\quillpress.exe", L"--quiet", L"--timeout", L"600", L"-o",
                                       L"~1.pdf", L"--", L"--batch \"x"}));
}

}  // namespace
}  // namespace quillpress::launcher

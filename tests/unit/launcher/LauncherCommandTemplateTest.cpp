#include <gtest/gtest.h>

#include "tools/launcher/CommandLine.h"
#include "tools/launcher/CommandTemplate.h"

namespace quillpress::launcher {
namespace {

using Arguments = std::vector<std::wstring>;

// The arguments that the started program sees.
Arguments run(std::wstring_view command, std::wstring_view outputPath, std::wstring_view documentName) {
  std::wstring complaint;
  const auto parsed = CommandTemplate::parse(command, complaint);
  EXPECT_TRUE(parsed);
  EXPECT_EQ(complaint, L"");
  return parsed ? splitCommandLine(parsed->commandLine(outputPath, documentName)) : Arguments{};
}

std::wstring complaintAbout(std::wstring_view command) {
  std::wstring complaint;
  EXPECT_FALSE(CommandTemplate::parse(command, complaint));
  return complaint;
}

constexpr wchar_t kViewer[] = LR"(C:\Driver Folder\twsview.exe -nav="%s" -docname="%s")";

TEST(LauncherCommandTemplateTest, TheFirstPlaceholderIsThePathTheSecondTheDocument) {
  EXPECT_EQ(
      run(LR"("C:\Driver Folder\twsview.exe" -nav="%s" -docname="%s")", LR"(C:\My Files\a.pdf)", L"A letter"),
      (Arguments{LR"(C:\Driver Folder\twsview.exe)", LR"(-nav=C:\My Files\a.pdf)", L"-docname=A letter"}));
}

TEST(LauncherCommandTemplateTest, PlaceholdersNeedNoQuotes) {
  EXPECT_EQ(run(L"viewer %s %s", LR"(C:\My Files\a.pdf)", L"A letter"),
            (Arguments{L"viewer", LR"(C:\My Files\a.pdf)", L"A letter"}));
}

TEST(LauncherCommandTemplateTest, BothMayStandInOneArgument) {
  EXPECT_EQ(run(L"viewer %s,%s;", L"p", L"d"), (Arguments{L"viewer", L"p,d;"}));
}

TEST(LauncherCommandTemplateTest, PlaceholdersMayBeMissing) {
  EXPECT_EQ(run(L"viewer", L"p", L"d"), (Arguments{L"viewer"}));
  EXPECT_EQ(run(L"viewer -nav=%s", L"p", L"d"), (Arguments{L"viewer", L"-nav=p"}));
}

TEST(LauncherCommandTemplateTest, AThirdPlaceholderIsText) {
  EXPECT_EQ(run(L"viewer %s %s %s", L"p", L"d"), (Arguments{L"viewer", L"p", L"d", L"%s"}));
}

TEST(LauncherCommandTemplateTest, OtherPercentSignsAreText) {
  EXPECT_EQ(run(L"viewer -zoom=100% %d %%s", L"p", L"d"),
            (Arguments{L"viewer", L"-zoom=100%", L"%d", L"%p"}));
}

TEST(LauncherCommandTemplateTest, AnEmptyNameIsAnEmptyArgument) {
  EXPECT_EQ(run(L"viewer %s \"%s\" last", L"p", L""), (Arguments{L"viewer", L"p", L"", L"last"}));
}

TEST(LauncherCommandTemplateTest, NamesCannotLeaveTheirArgument) {
  const std::wstring_view viewer = LR"(viewer -nav="%s" -docname="%s")";
  for (const std::wstring name : {LR"(" -delete ")", LR"(a" b)", LR"(\" b)", LR"(\\" b)", LR"(a\)",
                                  LR"(a b\\)", LR"("")", L"a\tb", L"a\nb", LR"("&calc&")", L"'", L"^"}) {
    EXPECT_EQ(run(viewer, name, L"d"), (Arguments{L"viewer", L"-nav=" + name, L"-docname=d"}));
    EXPECT_EQ(run(viewer, L"p", name), (Arguments{L"viewer", L"-nav=p", L"-docname=" + name}));
  }
}

TEST(LauncherCommandTemplateTest, PlaceholdersInNamesAreText) {
  EXPECT_EQ(run(L"viewer %s %s", L"%s %s", L"%s"), (Arguments{L"viewer", L"%s %s", L"%s"}));
}

TEST(LauncherCommandTemplateTest, BlanksInAProgramWithoutQuotesEndIt) {
  EXPECT_EQ(run(kViewer, L"p", L"d"),
            (Arguments{LR"(C:\Driver)", LR"(Folder\twsview.exe)", L"-nav=p", L"-docname=d"}));
}

TEST(LauncherCommandTemplateTest, ACommandNeedsAProgram) {
  EXPECT_EQ(complaintAbout(L""), L"the command names no program");
  EXPECT_EQ(complaintAbout(L"  "), L"the command names no program");
  EXPECT_EQ(complaintAbout(LR"("" %s)"), L"the command names no program");
}

TEST(LauncherCommandTemplateTest, AFinishedFileIsNeverTheProgram) {
  EXPECT_EQ(complaintAbout(L"%s"), L"the program of the command cannot be a placeholder");
  EXPECT_EQ(complaintAbout(LR"("C:\%s.exe" %s)"), L"the program of the command cannot be a placeholder");
}

TEST(LauncherCommandTemplateTest, BatchFilesAreRefused) {
  const std::wstring refusal = L"the command cannot be a batch file: names would be read as commands";
  for (const std::wstring_view program :
       {LR"(C:\a.bat %s)", L"a.CMD", L"a.Bat", LR"("a.bat." x)", LR"("a.cmd .. " x)"}) {
    EXPECT_EQ(complaintAbout(program), refusal);
  }
  EXPECT_EQ(run(L"bat", L"", L""), Arguments{L"bat"});
  EXPECT_EQ(run(L"acrobat.exe", L"", L""), Arguments{L"acrobat.exe"});
  EXPECT_EQ(run(L"...", L"", L""), Arguments{L"..."});
}

}  // namespace
}  // namespace quillpress::launcher

// twsmsnd.exe where quillpress.exe lies beside it. Another program stands in for that, so that it can be slow
// and fail at will.

#include <gtest/gtest.h>

#include "tests/umpd/harness/Text.h"
#include "tests/umpd/harness/UserName.h"
#include "tests/umpd/launcher/support/LauncherLog.h"
#include "tests/umpd/launcher/support/Process.h"
#include "tests/umpd/launcher/support/Sender.h"
#include "tests/umpd/launcher/support/TemporaryFolder.h"

namespace quillpress::harness {
namespace {

class ConversionTest : public ::testing::Test {
 protected:
  using Line = std::vector<std::wstring>;

  ConversionTest() {
    SetEnvironmentVariableW(L"TWSMSND_OPTIONS", nullptr);
    makeItEndWith(0);
    const std::wstring delivered = folderOf(nullptr) + LR"(..\..\bin\twsmsnd.exe)";
    EXPECT_TRUE(CopyFileW(delivered.c_str(), installed.file(L"twsmsnd.exe").c_str(), FALSE));
    const std::wstring standIn = folderOf(nullptr) + L"make_pdf.exe";
    EXPECT_TRUE(CopyFileW(standIn.c_str(), installed.file(L"quillpress.exe").c_str(), FALSE));
  }
  ~ConversionTest() override {
    launcher.reset();
    SetEnvironmentVariableW(L"MAKE_PDF_STATUS", nullptr);
    SetEnvironmentVariableW(L"MAKE_PDF_WAITS_FOR", nullptr);
  }

  static void makeItEndWith(int status) {
    SetEnvironmentVariableW(L"MAKE_PDF_STATUS", std::to_wstring(status).c_str());
  }

  void start(const std::wstring& options) {
    launcher.emplace(L"\"" + installed.file(L"twsmsnd.exe") + L"\" --exit-after 50 --log \"" +
                     folder.file(L"log") + L"\" " + options);
    for (int tries = 0; tries < 1000 && !listens(); ++tries) Sleep(10);
    EXPECT_TRUE(listens());
  }

  [[nodiscard]] bool listens() const {
    return static_cast<bool>(Handle(OpenMutexW(SYNCHRONIZE, FALSE, channel.mutex().c_str())));
  }

  // A finished file with a job in it.
  [[nodiscard]] std::wstring job(const wchar_t* name) const {
    std::wstring path = folder.file(name);
    writeFile(path, "%!PS");
    return path;
  }

  void tellOf(const std::wstring& file) { EXPECT_TRUE(sender.send(stopPrintRecord("p", "d", narrow(file)))); }

  // What the log says behind the message itself when the launcher has left.
  [[nodiscard]] std::vector<Line> linesAtEnd() const {
    EXPECT_EQ(launcher->exitCode(), 0U);
    std::vector<Line> lines = readLauncherLog(folder.file(L"log"));
    if (!lines.empty()) lines.erase(lines.begin());
    return lines;
  }

  const Channel channel = channelOf(currentUserName());
  const TemporaryFolder installed;
  const TemporaryFolder folder;
  Sender sender{channel};
  std::optional<Process> launcher;
};

TEST_F(ConversionTest, ThePdfTakesThePlaceOfTheFile) {
  const std::wstring file = job(L"100%d report.pdf");
  start(L"--once --file-only");
  tellOf(file);
  EXPECT_EQ(linesAtEnd(), (std::vector<Line>{{L"converted", file, L"0"}}));
  EXPECT_EQ(readFile(file), "%PDF of " + narrow(file));
}

TEST_F(ConversionTest, ThePdfOfAFileWithAnotherEndingGoesBesideIt) {
  const std::wstring file = job(L"report.ps");
  writeFile(folder.file(L"report.pdf"), "another");
  start(L"--once --file-only");
  tellOf(file);
  EXPECT_EQ(linesAtEnd(), (std::vector<Line>{{L"converted", folder.file(L"report (2).pdf"), L"0"}}));
  EXPECT_EQ(readFile(file), "%!PS");
  EXPECT_EQ(readFile(folder.file(L"report.pdf")), "another");
}

TEST_F(ConversionTest, AFolderGetsThePdfs) {
  const std::wstring file = job(L"report.pdf");
  const std::wstring archive = folder.file(L"the archive");
  start(L"--once --file-only --folder \"" + archive + L"\"");
  tellOf(file);
  EXPECT_EQ(linesAtEnd(), (std::vector<Line>{{L"converted", archive + L"\\report.pdf", L"0"}}));
  EXPECT_EQ(readFile(archive + L"\\report.pdf"), "%PDF of " + narrow(file));
  EXPECT_EQ(readFile(file), "%!PS");
  DeleteFileW((archive + L"\\report.pdf").c_str());
  RemoveDirectoryW(archive.c_str());
}

TEST_F(ConversionTest, AJobThatFailsStaysAsItIs) {
  const std::wstring file = job(L"report.pdf");
  makeItEndWith(3);
  start(L"--once");
  tellOf(file);
  EXPECT_EQ(linesAtEnd(), (std::vector<Line>{{L"not converted", file, L"3"}}));
  EXPECT_EQ(readFile(file), "%!PS");
}

TEST_F(ConversionTest, BesideAPdfThatLacksPagesTheJobIsKept) {
  const std::wstring file = job(L"report.pdf");
  makeItEndWith(6);
  start(L"--once --file-only");
  tellOf(file);
  EXPECT_EQ(linesAtEnd(), (std::vector<Line>{{L"converted", file, L"6"}}));
  EXPECT_EQ(readFile(file), "%PDF of " + narrow(file));
  EXPECT_EQ(readFile(file + L".ps"), "%!PS");
}

TEST_F(ConversionTest, AFileThatIsAPdfIsLeftAlone) {
  const std::wstring file = folder.file(L"report.pdf");
  writeFile(file, "%PDF-1.4");
  start(L"--once --file-only");
  tellOf(file);
  EXPECT_EQ(linesAtEnd(), std::vector<Line>{});
  EXPECT_EQ(readFile(file), "%PDF-1.4");
}

TEST_F(ConversionTest, ACommandGetsThePdfWhenBothAreAskedFor) {
  const std::wstring file = job(L"report.ps");
  start(LR"(--once --convert --run "\"C:\no such program.exe\" %s")");
  tellOf(file);
  const std::wstring pdf = folder.file(L"report.pdf");
  EXPECT_EQ(linesAtEnd(), (std::vector<Line>{{L"converted", pdf, L"0"},
                                             {L"cannot run", LR"("C:\no such program.exe" )" + pdf}}));
}

TEST_F(ConversionTest, ACommandAloneGetsTheFileItself) {
  const std::wstring file = job(L"report.ps");
  start(LR"(--once --run "\"C:\no such program.exe\" %s")");
  tellOf(file);
  EXPECT_EQ(linesAtEnd(), (std::vector<Line>{{L"cannot run", LR"("C:\no such program.exe" )" + file}}));
}

TEST_F(ConversionTest, ASlowConversionHoldsUpNoSender) {
  const std::wstring name = L"quillpress-test-conversion";
  const Handle event(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
  SetEnvironmentVariableW(L"MAKE_PDF_WAITS_FOR", name.c_str());
  const std::wstring file = job(L"report.pdf");
  start(L"--file-only --exit-after 2");
  const DWORD begin = GetTickCount();
  tellOf(file);
  for (int i = 0; i < 20; ++i) EXPECT_TRUE(sender.send(startPrintRecord("p")));
  EXPECT_LT(GetTickCount() - begin, 2000U);
  EXPECT_EQ(readFile(file), "%!PS");
  // The launcher leaves when the file is done.
  EXPECT_FALSE(launcher->endsWithin(2500));
  SetEvent(event.get());
  EXPECT_EQ(launcher->exitCode(), 0U);
  EXPECT_EQ(readFile(file), "%PDF of " + narrow(file));
}

TEST_F(ConversionTest, CtrlCEndsAConversionAndLeavesTheFile) {
  const std::wstring name = L"quillpress-test-conversion";
  const Handle event(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
  SetEnvironmentVariableW(L"MAKE_PDF_WAITS_FOR", name.c_str());
  FreeConsole();
  ASSERT_TRUE(AllocConsole()) << "error " << GetLastError();
  const std::wstring file = job(L"report.pdf");
  start(L"--file-only");
  tellOf(file);
  // Programs that are started later would ignore the key, too.
  SetConsoleCtrlHandler(nullptr, TRUE);
  EXPECT_TRUE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0)) << "error " << GetLastError();
  EXPECT_EQ(linesAtEnd(), (std::vector<Line>{{L"not converted", file, L"1223"}}));
  SetConsoleCtrlHandler(nullptr, FALSE);
  FreeConsole();
  EXPECT_EQ(folder.files(), (std::vector<std::wstring>{L"log", L"report.pdf"}));
  EXPECT_EQ(readFile(file), "%!PS");
}

}  // namespace
}  // namespace quillpress::harness

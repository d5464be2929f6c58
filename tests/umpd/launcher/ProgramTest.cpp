// twsmsnd.exe as whoever writes a sender meets it.

#include <gtest/gtest.h>

#include "tests/umpd/harness/Text.h"
#include "tests/umpd/harness/UserName.h"
#include "tests/umpd/harness/WindowsRelease.h"
#include "tests/umpd/launcher/support/LauncherLog.h"
#include "tests/umpd/launcher/support/ObjectSecurity.h"
#include "tests/umpd/launcher/support/Process.h"
#include "tests/umpd/launcher/support/Sender.h"
#include "tests/umpd/launcher/support/TemporaryFolder.h"
#include "tests/umpd/launcher/support/Thread.h"

namespace quillpress::harness {
namespace {

class ProgramTest : public ::testing::Test {
 protected:
  using Line = std::vector<std::wstring>;
  using Lines = std::vector<Line>;

  ProgramTest() {
    SetEnvironmentVariableW(L"TWSMSND_OPTIONS", nullptr);
    SetEnvironmentVariableW(L"NOTE_ARGUMENTS_FILE", notes().c_str());
  }

  [[nodiscard]] std::wstring commandLine(const std::wstring& options) const {
    return L"\"" + program + L"\" --log \"" + log() + L"\" --exit-after 50 --no-convert " + options;
  }

  // Starts the launcher and waits until it listens.
  Process& start(const std::wstring& options = L"", DWORD flags = 0) {
    launcher.emplace(commandLine(options), flags);
    for (int tries = 0; tries < 1000 && !listens(); ++tries) Sleep(10);
    EXPECT_TRUE(listens());
    return *launcher;
  }

  [[nodiscard]] bool listens() const {
    return Handle(OpenEventW(SYNCHRONIZE, FALSE, channel.requestEvent().c_str())) &&
           Handle(OpenMutexW(SYNCHRONIZE, FALSE, channel.mutex().c_str()));
  }

  [[nodiscard]] std::wstring log() const { return folder.file(L"twsmsnd.log"); }
  [[nodiscard]] std::wstring notes() const { return folder.file(L"arguments"); }
  [[nodiscard]] Lines lines() const { return readLauncherLog(log()); }

  // The log is written when the sender has been let go.
  void expectLines(const Lines& expected) const {
    for (int tries = 0; tries < 1000 && lines() != expected; ++tries) Sleep(10);
    EXPECT_EQ(lines(), expected);
  }

  // --run with note_arguments and these arguments.
  [[nodiscard]] static std::wstring runNoting(const std::wstring& arguments) {
    return LR"(--run "\")" + folderOf(nullptr) + LR"(note_arguments.exe\" )" + arguments + L"\"";
  }

  // The arguments that the command saw, its own name left out. Waits for them.
  [[nodiscard]] Line notedArguments() const {
    for (int tries = 0; tries < 1000 && !fileExists(notes()); ++tries) Sleep(10);
    Line arguments;
    const std::string bytes = readFile(notes());
    for (std::size_t start = 0; start < bytes.size();) {
      const std::string argument = bytes.c_str() + start;
      start += argument.size() + 1;
      std::wstring text(argument.size(), L'\0');
      text.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, argument.data(),
                                                               static_cast<int>(argument.size()), text.data(),
                                                               static_cast<int>(text.size()))));
      arguments.push_back(text);
    }
    if (!arguments.empty()) arguments.erase(arguments.begin());
    // Whoever has renamed it may still hold it.
    for (int tries = 0; tries < 1000 && DeleteFileW(notes().c_str()) == 0; ++tries) Sleep(10);
    return arguments;
  }

  const std::wstring program = folderOf(nullptr) + LR"(..\..\bin\twsmsnd.exe)";
  const Channel channel = channelOf(currentUserName());
  const TemporaryFolder folder;
  Sender sender{channel};
  std::optional<Process> launcher;
};

TEST_F(ProgramTest, WritesALineForEachMessage) {
  start();
  EXPECT_TRUE(sender.send(startPrintRecord("A printer")));
  expectLines({{L"startprint", L"A printer"}});
  EXPECT_TRUE(sender.send(stopPrintRecord("A printer", "A document", "C:\\folder\\a.pdf")));
  expectLines(
      {{L"startprint", L"A printer"}, {L"stopprint", L"A printer", L"C:\\folder\\a.pdf", L"A document"}});
}

TEST_F(ProgramTest, WritesTheAnsiCodePageAsUtf8) {
  start();
  EXPECT_TRUE(sender.send(stopPrintRecord("\xC4\x80", "\xE9", "")));
  expectLines({{L"stopprint", L"\u00C4\u20AC", L"", L"\u00E9"}});
}

TEST_F(ProgramTest, NoNameCanPassForALine) {
  start();
  EXPECT_TRUE(sender.send(startPrintRecord("a\nstopprint\tb\r")));
  expectLines({{L"startprint", L"a\u240Astopprint\u2409b\u240D"}});
}

TEST_F(ProgramTest, AnswersCommandsThatItDoesNotKnow) {
  start();
  Record record = stopPrintRecord("p", "d", "f");
  setText(record, field::kCommand, "pauseprint");
  EXPECT_TRUE(sender.send(record));
  EXPECT_TRUE(sender.send(startPrintRecord("p")));
  expectLines({{L"unknown command", L"pauseprint"}, {L"startprint", L"p"}});
}

TEST_F(ProgramTest, AnswersTextsWithoutAnEnd) {
  start();
  Record allOnes;
  allOnes.fill(0xFF);
  EXPECT_TRUE(sender.send(allOnes));
  Record endlessName = startPrintRecord("");
  setText(endlessName, field::kPrinterName, std::string(260, 'p'));
  EXPECT_TRUE(sender.send(endlessName));
  Record endlessPath = stopPrintRecord("p", "d", std::string(260, 'f'));
  EXPECT_TRUE(sender.send(endlessPath));
  EXPECT_TRUE(sender.send(startPrintRecord(std::string(259, 'p'))));
  expectLines({{L"text without an end", L"command"},
               {L"text without an end", L"printer name"},
               {L"text without an end", L"output path"},
               {L"startprint", std::wstring(259, L'p')}});
}

TEST_F(ProgramTest, RunsTheCommandForAFinishedFile) {
  const std::wstring file = folder.file(L"a finished file.pdf");
  writeFile(file, "%PDF");
  start(runNoting(LR"(-nav=\"%s\" -docname=\"%s\")"));
  EXPECT_TRUE(sender.send(stopPrintRecord("p", "A document", narrow(file))));
  EXPECT_EQ(notedArguments(), (Line{L"-nav=" + file, L"-docname=A document"}));
}

TEST_F(ProgramTest, NamesCannotBreakOutOfTheCommand) {
  const std::wstring file = folder.file(L"a.pdf");
  writeFile(file, "%PDF");
  start(runNoting(LR"(-nav=\"%s\" -docname=\"%s\" last)"));
  for (const char* name :
       {R"(" -evil ")", R"(\" -evil \)", R"(a b\)", R"(a\\)", R"("&calc&")", "%s %s", "", "'", "^|<>"}) {
    EXPECT_TRUE(sender.send(stopPrintRecord("p", name, narrow(file))));
    EXPECT_EQ(notedArguments(), (Line{L"-nav=" + file, L"-docname=" + widen(name), L"last"})) << name;
  }
}

TEST_F(ProgramTest, RunsNothingForABeginningJob) {
  start(runNoting(L"%s"));
  EXPECT_TRUE(sender.send(startPrintRecord("p")));
  Sleep(500);
  EXPECT_FALSE(fileExists(notes()));
}

TEST_F(ProgramTest, RunsNothingForAFileThatIsNotThere) {
  start(runNoting(L"%s") + L" --once");
  const std::wstring file = folder.file(L"missing.pdf");
  EXPECT_TRUE(sender.send(stopPrintRecord("p", "d", narrow(file))));
  EXPECT_EQ(launcher->exitCode(), 0U);
  expectLines({{L"stopprint", L"p", file, L"d"}, {L"no such file", file}});
  EXPECT_FALSE(fileExists(notes()));
}

TEST_F(ProgramTest, SaysWhenTheCommandCannotBeRun) {
  const std::wstring file = folder.file(L"a.pdf");
  writeFile(file, "%PDF");
  start(LR"(--once --run "\"C:\no such program.exe\" %s")");
  EXPECT_TRUE(sender.send(stopPrintRecord("p", "d", narrow(file))));
  EXPECT_EQ(launcher->exitCode(), 0U);
  expectLines({{L"stopprint", L"p", file, L"d"}, {L"cannot run", LR"("C:\no such program.exe" )" + file}});
}

TEST_F(ProgramTest, DoesNotLetTheSenderWaitForTheCommand) {
  const std::wstring file = folder.file(L"a.pdf");
  writeFile(file, "%PDF");
  start(runNoting(L"--stay %s"));
  EXPECT_TRUE(sender.send(stopPrintRecord("p", "d", narrow(file))));
  EXPECT_TRUE(sender.send(startPrintRecord("p")));
  // A launcher that is ended while it starts a program leaves a process of Wine's that never gets going.
  EXPECT_EQ(notedArguments(), (Line{L"--stay", file}));
}

TEST_F(ProgramTest, LeavesAfterOneMessage) {
  start(L"--once");
  EXPECT_TRUE(sender.send(startPrintRecord("p")));
  EXPECT_EQ(launcher->exitCode(), 0U);
  EXPECT_FALSE(listens());
}

TEST_F(ProgramTest, LeavesAfterAFinishedFile) {
  start(L"--until-stopprint");
  EXPECT_TRUE(sender.send(startPrintRecord("p")));
  EXPECT_FALSE(launcher->endsWithin(500));
  EXPECT_TRUE(sender.send(stopPrintRecord("p", "d", "f")));
  EXPECT_EQ(launcher->exitCode(), 0U);
}

TEST_F(ProgramTest, LeavesWhenItsTimeIsOver) {
  const DWORD begin = GetTickCount();
  start(L"--exit-after 1");
  EXPECT_EQ(launcher->exitCode(), 0U);
  EXPECT_GE(GetTickCount() - begin, 950U);
  EXPECT_LT(GetTickCount() - begin, 10000U);
  expectLines({});
}

TEST_F(ProgramTest, ReadsOptionsFromTheEnvironmentFirst) {
  SetEnvironmentVariableW(L"TWSMSND_OPTIONS", L"--until-stopprint --exit-after 1");
  start(L"--once");
  SetEnvironmentVariableW(L"TWSMSND_OPTIONS", nullptr);
  EXPECT_TRUE(sender.send(startPrintRecord("p")));
  EXPECT_EQ(launcher->exitCode(), 0U);
}

TEST_F(ProgramTest, RefusesOptionsThatMakeNoSense) {
  for (const wchar_t* options : {L"--wrong", L"--run", L"--run a.bat", L"--exit-after x", L"--log \"\""}) {
    EXPECT_EQ(Process(commandLine(options)).exitCode(), 1U) << narrow(options);
  }
  EXPECT_EQ(Process(L"\"" + program + LR"(" --log "C:\no such folder\log")").exitCode(), 1U);
  EXPECT_EQ(Process(commandLine(L"--help")).exitCode(), 0U);
}

TEST_F(ProgramTest, OneUserHasOneLauncher) {
  start();
  EXPECT_EQ(Process(commandLine(L"")).exitCode(), 2U);
  EXPECT_TRUE(sender.send(startPrintRecord("p")));
}

TEST_F(ProgramTest, CannotListenWhereAnotherObjectHasItsName) {
  for (const std::wstring& name : {channel.memory(), channel.mutex(), channel.requestEvent()}) {
    const Handle squatter(CreateSemaphoreW(nullptr, 0, 1, name.c_str()));
    EXPECT_EQ(Process(commandLine(L"")).exitCode(), 3U) << narrow(name);
  }
}

TEST_F(ProgramTest, OwnsItsMutex) {
  start();
  const Handle mutex(OpenMutexW(SYNCHRONIZE, FALSE, channel.mutex().c_str()));
  EXPECT_EQ(WaitForSingleObject(mutex.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(ProgramTest, ItsObjectsAreForEverybody) {
  start();
  const Handle mutex(OpenMutexW(READ_CONTROL, FALSE, channel.mutex().c_str()));
  const Handle event(OpenEventW(READ_CONTROL, FALSE, channel.requestEvent().c_str()));
  const Handle memory(OpenFileMappingW(READ_CONTROL, FALSE, channel.memory().c_str()));
  for (const HANDLE object : {mutex.get(), event.get(), memory.get()}) {
    const ObjectSecurity security = securityOf(object);
    EXPECT_TRUE(security.isListNull);
    EXPECT_EQ(security.label, kLowIntegrity);
  }
}

TEST_F(ProgramTest, ItsRequestEventResetsItself) {
  start();
  EXPECT_TRUE(sender.send(startPrintRecord("p")));
  const Handle event(OpenEventW(SYNCHRONIZE, FALSE, channel.requestEvent().c_str()));
  EXPECT_EQ(WaitForSingleObject(event.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(ProgramTest, NothingStaysWhenItIsKilled) {
  start().kill();
  EXPECT_FALSE(listens());
  EXPECT_FALSE(Handle(OpenEventW(SYNCHRONIZE, FALSE, channel.requestEvent().c_str())));
  start();
  EXPECT_TRUE(sender.send(startPrintRecord("p")));
}

TEST_F(ProgramTest, TakesOverAMutexThatItsOwnerDiedWith) {
  start();
  const Handle kept(OpenMutexW(SYNCHRONIZE, FALSE, channel.mutex().c_str()));
  launcher->kill();
  start();
  EXPECT_TRUE(sender.send(startPrintRecord("p")));
  EXPECT_EQ(WaitForSingleObject(kept.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

// A sender whose launcher was ended before it had answered.
class DesertedSenderTest : public ProgramTest {
 protected:
  // The objects of a launcher that will not answer; a waiting sender keeps them alive.
  void desert(bool takesTheRequest) {
    const Handle memory(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Record),
                                           channel.memory().c_str()));
    const Handle request(CreateEventW(nullptr, FALSE, FALSE, channel.requestEvent().c_str()));
    sender.begin(startPrintRecord("deserted"));
    if (takesTheRequest) {
      EXPECT_EQ(WaitForSingleObject(request.get(), 0), WAIT_OBJECT_0);
    }
  }
};

TEST_F(DesertedSenderTest, IsServedByTheNextLauncher) {
  desert(true);
  EXPECT_FALSE(sender.isAcknowledged(100));
  start(L"--exit-after 2");
  EXPECT_TRUE(sender.isAcknowledged());
  EXPECT_EQ(launcher->exitCode(), 0U);
  expectLines({{L"startprint", L"deserted"}});
}

TEST_F(DesertedSenderTest, IsServedOnceWhenItsRequestWasNotTaken) {
  desert(false);
  start(L"--exit-after 2");
  EXPECT_TRUE(sender.isAcknowledged());
  EXPECT_EQ(launcher->exitCode(), 0U);
  expectLines({{L"startprint", L"deserted"}});
}

// A pipe that nobody reads takes some messages and then holds up whoever writes.
class BlockedOutputTest : public ProgramTest {
 protected:
  BlockedOutputTest() {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    CreatePipe(&reader_, &writer_, &inherited, 4096);
  }
  ~BlockedOutputTest() override {
    CloseHandle(reader_);
    CloseHandle(writer_);
  }

  void startOnPipe(const std::wstring& options) {
    launcher.emplace(L"\"" + program + L"\" " + options, 0, writer_);
    for (int tries = 0; tries < 1000 && !listens(); ++tries) Sleep(10);
    EXPECT_TRUE(listens());
  }

 private:
  HANDLE reader_ = nullptr;
  HANDLE writer_ = nullptr;
};

TEST_F(BlockedOutputTest, HoldsUpNoSender) {
  startOnPipe(L"--exit-after 50");
  const DWORD begin = GetTickCount();
  for (int job = 0; job < 1000; ++job) {
    ASSERT_TRUE(sender.send(startPrintRecord("A printer"))) << job;
    ASSERT_TRUE(sender.send(stopPrintRecord("A printer", "A document", "C:\\folder\\a.pdf"))) << job;
  }
  EXPECT_LT(GetTickCount() - begin, 30'000U);
}

TEST_F(BlockedOutputTest, DoesNotKeepTheProgramFromLeaving) {
  startOnPipe(L"--exit-after 2");
  for (int job = 0; job < 200; ++job) ASSERT_TRUE(sender.send(startPrintRecord("A printer")));
  EXPECT_EQ(launcher->exitCode(), 0U);
}

TEST_F(ProgramTest, ARequestWithoutASenderIsNoHarm) {
  start();
  const Handle event(OpenEventW(EVENT_MODIFY_STATE, FALSE, channel.requestEvent().c_str()));
  SetEvent(event.get());
  Sleep(200);
  EXPECT_TRUE(sender.send(startPrintRecord("p")));
  // The record that nobody has written is told first.
  expectLines({{L"unknown command", L""}, {L"startprint", L"p"}});
}

// A console for this program and those that it starts: where Ctrl+C is pressed.
class ConsoleTest : public ProgramTest {
 protected:
  ConsoleTest() {
    FreeConsole();
    EXPECT_TRUE(AllocConsole()) << "error " << GetLastError();
  }
  ~ConsoleTest() override {
    SetConsoleCtrlHandler(nullptr, FALSE);
    FreeConsole();
  }

  // Has the key reach all programs of the console but this one. Those that are started later ignore it, too.
  static void press(DWORD key) {
    SetConsoleCtrlHandler(nullptr, TRUE);
    EXPECT_TRUE(GenerateConsoleCtrlEvent(key, 0)) << "error " << GetLastError();
  }
};

TEST_F(ConsoleTest, CtrlCEndsItCleanly) {
  start();
  press(CTRL_C_EVENT);
  EXPECT_EQ(launcher->exitCode(), 0U);
  EXPECT_FALSE(listens());
}

}  // namespace
}  // namespace quillpress::harness

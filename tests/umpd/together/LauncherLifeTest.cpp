// Launchers that come late, go early or never answer.

#include <optional>

#include "tests/umpd/launcher/support/LauncherLog.h"
#include "tests/umpd/launcher/support/Peer.h"
#include "tests/umpd/together/TogetherTest.h"

namespace quillpress::harness {
namespace {

class LauncherLifeTest : public TogetherTest {
 protected:
  [[nodiscard]] std::wstring log() const { return folder.file(L"twsmsnd.log"); }

  void startLauncher() {
    launcher.emplace(L"\"" + folderOf(library.module()) +
                     L"twsmsnd.exe\" --no-convert --exit-after 50 --log \"" + log() + L"\"");
  }

  // What the launcher has written down so far ends with this line; it writes after it has let the job go.
  void expectLastLine(const std::vector<std::wstring>& expected) const {
    std::vector<std::vector<std::wstring>> lines;
    for (int tries = 0; tries < 1000; ++tries, Sleep(10)) {
      lines = readLauncherLog(log());
      if (!lines.empty() && lines.back() == expected) return;
    }
    ADD_FAILURE() << "the launcher has written down " << lines.size() << " lines, and another one last";
  }

  void waitUntilItListens() const {
    const auto listens = [this] {
      return static_cast<bool>(Handle(OpenMutexW(SYNCHRONIZE, FALSE, channel.mutex().c_str())));
    };
    for (int tries = 0; tries < 1000 && !listens(); ++tries) Sleep(10);
    EXPECT_TRUE(listens());
  }

  std::optional<Process> launcher;
};

TEST_F(LauncherLifeTest, KilledBetweenTheMessagesItIsNotMissed) {
  startLauncher();
  waitUntilItListens();
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("a"), 1);
  expectLastLine({L"startprint", printer.name()});
  launcher->kill();
  EXPECT_EQ(job.write("b"), 1);
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(readFile(fileOf(L"Document")), "ab");
  expectLastLine({L"startprint", printer.name()});
}

TEST_F(LauncherLifeTest, OneThatComesInBetweenIsToldTheEnd) {
  startLauncher();
  waitUntilItListens();
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("a"), 1);
  expectLastLine({L"startprint", printer.name()});
  launcher->kill();
  startLauncher();
  waitUntilItListens();
  EXPECT_EQ(job.end(), 1);
  expectLastLine({L"stopprint", printer.name(), fileOf(L"Document"), L"Document"});
}

TEST_F(LauncherLifeTest, OneThatComesLateIsWaitedFor) {
  // There is none in the driver's folder to be started: each try fails, and the pauses go on.
  const Thread late([this] {
    Sleep(1300);
    startLauncher();
  });
  const DWORD begin = GetTickCount();
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("a"), 1);
  EXPECT_GE(GetTickCount() - begin, 1300U);
  expectLastLine({L"startprint", printer.name()});
  EXPECT_EQ(job.end(), 1);
}

TEST_F(LauncherLifeTest, OneThatComesTooLateIsTooLate) {
  const DWORD begin = GetTickCount();
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("a"), 0);
  // Ten pauses of 540 ms.
  EXPECT_GE(GetTickCount() - begin, 5300U);
  EXPECT_LT(GetTickCount() - begin, 15000U);
  EXPECT_EQ(boxes.takeOne().caption, L"Error:twsmsnd.exe is not running - and attempt to start it failed.");
  startLauncher();
  waitUntilItListens();
  EXPECT_EQ(job.write("b"), 0);
  EXPECT_EQ(job.end(), 1);
  EXPECT_TRUE(readLauncherLog(log()).empty());
}

TEST_F(LauncherLifeTest, AMessageThatNobodyAnsweredIsTakenOverByTheNextOne) {
  Peer::Options silent;
  silent.acknowledges = false;
  std::optional<Peer> dead(std::in_place, channel, silent);
  Job job(library, printer, L"Document", 1);
  const Thread writing([&] { EXPECT_EQ(job.write("a"), 1); });
  ASSERT_TRUE(dead->receives());
  dead.reset();
  EXPECT_FALSE(writing.endsWithin(500));
  startLauncher();
  EXPECT_TRUE(writing.endsWithin(10000));
  expectLastLine({L"startprint", printer.name()});
  EXPECT_EQ(job.end(), 1);
  expectLastLine({L"stopprint", printer.name(), fileOf(L"Document"), L"Document"});
  EXPECT_EQ(readLauncherLog(log()).size(), 2U);
}

}  // namespace
}  // namespace quillpress::harness

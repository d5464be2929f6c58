// When messages go out and when they do not.

#include "tests/umpd/launcher/support/HandOverTest.h"
#include "tests/umpd/launcher/support/ObjectCalls.h"

namespace quillpress::harness {
namespace {

class MessageTest : public HandOverTest {
 protected:
  static std::vector<std::string> commandsOf(const Peer& peer) {
    std::vector<std::string> commands;
    for (const Record& record : peer.records()) commands.push_back(textOf(record, field::kCommand));
    return commands;
  }

  using Commands = std::vector<std::string>;
};

TEST_F(MessageTest, AJobTellsItsBeginAndItsEndOnce) {
  const Peer peer(channel);
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(commandsOf(peer), Commands{});
  EXPECT_EQ(job.write("a"), 1);
  EXPECT_EQ(commandsOf(peer), Commands{"startprint"});
  EXPECT_EQ(job.write("b"), 1);
  EXPECT_EQ(commandsOf(peer), Commands{"startprint"});
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(commandsOf(peer), (Commands{"startprint", "stopprint"}));
}

TEST_F(MessageTest, AJobWithoutAByteTellsNothing) {
  const Peer peer(channel);
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(commandsOf(peer), Commands{});
}

TEST_F(MessageTest, AnEmptyBlockBeginsTheJob) {
  const Peer peer(channel);
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write(""), 1);
  EXPECT_EQ(commandsOf(peer), Commands{"startprint"});
}

TEST_F(MessageTest, TheBeginIsToldBeforeThereIsAFile) {
  bool fileWasThere = true;
  Peer::Options options;
  options.onMessage = [&](const Record&) { fileWasThere = !folder.files().empty(); };
  const Peer peer(channel, options);
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("a"), 1);
  EXPECT_FALSE(fileWasThere);
}

TEST_F(MessageTest, TheEndIsToldWhenTheFileIsWholeAndClosed) {
  std::string bytes;
  bool exclusive = false;
  Peer::Options options;
  options.onMessage = [&](const Record& record) {
    if (textOf(record, field::kCommand) != "stopprint") return;
    const HANDLE file = CreateFileW(folder.file(L"Document.pdf").c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    exclusive = file != INVALID_HANDLE_VALUE;
    if (exclusive) CloseHandle(file);
    bytes = readFile(folder.file(L"Document.pdf"));
  };
  const Peer peer(channel, options);
  print(L"Document");
  EXPECT_TRUE(exclusive);
  EXPECT_EQ(bytes, "%!PS");
}

TEST_F(MessageTest, TheJobMutexIsHeldWhileAMessageIsOnItsWay) {
  std::vector<bool> taken;
  Peer::Options options;
  options.onMessage = [&](const Record&) { taken.push_back(jobMutexIsTaken()); };
  const Peer peer(channel, options);
  print(L"Document");
  EXPECT_EQ(taken, (std::vector<bool>{true, true}));
  EXPECT_FALSE(jobMutexIsTaken());
}

TEST_F(MessageTest, ThePassThroughModeTellsNothing) {
  settings.setNumber(L"passthru", 1);
  std::string passed;
  library.replace("WritePrinter", [&](HANDLE, LPVOID bytes, DWORD count, LPDWORD written) -> BOOL {
    passed.append(static_cast<const char*>(bytes), count);
    *written = count;
    return TRUE;
  });
  const Peer peer(channel);
  print(L"Document");
  EXPECT_EQ(passed, "%!PS");
  EXPECT_EQ(commandsOf(peer), Commands{});
}

TEST_F(MessageTest, WithoutAStatusWindowOnlyTheEndIsTold) {
  settings.setNumber(L"showPrintStatusWin", 0);
  const Peer peer(channel);
  print(L"Document");
  EXPECT_EQ(commandsOf(peer), Commands{"stopprint"});
}

TEST_F(MessageTest, AnyNumberButZeroWantsTheStatusWindow) {
  settings.setNumber(L"showPrintStatusWin", 7);
  const Peer peer(channel);
  print(L"Document");
  EXPECT_EQ(commandsOf(peer), (Commands{"startprint", "stopprint"}));
}

TEST_F(MessageTest, AJobThatWentWrongInTheQueueIsToldAllTheSame) {
  queue.add({.id = 1, .document = "Document", .status = JOB_STATUS_ERROR, .position = 1});
  const Peer peer(channel);
  print(L"Document");
  EXPECT_EQ(commandsOf(peer), (Commands{"startprint", "stopprint"}));
  EXPECT_FALSE(fileExists(folder.file(L"Document.pdf")));
}

TEST_F(MessageTest, AnEndThatNobodyListensToTouchesNoObject) {
  ObjectCalls calls(library);
  std::optional<Peer> peer(std::in_place, channel);
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("a"), 1);
  peer.reset();
  calls.forget();
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(calls.all(), (std::vector<ObjectCalls::Call>{{"OpenMutexW", channel.mutex()}}));
  EXPECT_EQ(readFile(folder.file(L"Document.pdf")), "a");
}

// A launcher that goes after it has been seen and before the message is handed over.
class GoneLauncherTest : public MessageTest {
 protected:
  // The library finds the mutex so many times more, and then no more.
  void goAfterLooks(int looks) {
    looks_ = looks;
    library.replace("OpenMutexW", [this](DWORD access, BOOL inherit, LPCWSTR name) -> HANDLE {
      if (name != channel.mutex() || looks_-- > 0) return ::OpenMutexW(access, inherit, name);
      SetLastError(ERROR_FILE_NOT_FOUND);
      return nullptr;
    });
  }

 private:
  int looks_ = 0;
};

TEST_F(GoneLauncherTest, OnlyTheRecordHasBeenWritten) {
  ObjectCalls calls(library);
  const Peer peer(channel);
  Job job(library, printer, L"Document", 1);
  goAfterLooks(1);
  EXPECT_EQ(job.write("a"), 1);
  EXPECT_EQ(calls.namesFor("CreateEventW"), std::vector<std::wstring>{});
  EXPECT_EQ(calls.namesFor("OpenEventW"), std::vector<std::wstring>{});
  EXPECT_EQ(commandsOf(peer), Commands{});
  EXPECT_EQ(textOf(peer.memory(), field::kCommand), "startprint");
  EXPECT_EQ(textOf(peer.memory(), field::kPrinterName), narrow(printer.name()));
  goAfterLooks(1);
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(calls.namesFor("CreateEventW"), std::vector<std::wstring>{});
  EXPECT_EQ(textOf(peer.memory(), field::kCommand), "stopprint");
  EXPECT_EQ(textOf(peer.memory(), field::kDocumentName), "Document");
  EXPECT_EQ(commandsOf(peer), Commands{});
}

}  // namespace
}  // namespace quillpress::harness

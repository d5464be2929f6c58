// What goes wrong between the library and a launcher that listens. No failure of a message fails the job: the
// file is there, only nobody has been told.

#include "tests/umpd/harness/HandleCount.h"
#include "tests/umpd/launcher/support/HandOverTest.h"
#include "tests/umpd/launcher/support/ObjectCalls.h"

namespace quillpress::harness {
namespace {

constexpr wchar_t kCreateFailed[] = L"IPC sendMsg create event failed";
constexpr wchar_t kSettingFailed[] = L"IPC sendMsg setting event failed";

class FailureTest : public HandOverTest {
 protected:
  // A job whose two messages both fail with this box, or without any.
  void printWithBoxes(const wchar_t* caption) {
    print(L"Document");
    const std::vector<Box> shown = boxes.take();
    EXPECT_EQ(shown.size(), caption == nullptr ? 0U : 2U);
    for (const Box& box : shown) {
      EXPECT_EQ(box.caption, caption);
      EXPECT_TRUE(box.wide);
      EXPECT_EQ(box.owner, nullptr);
      EXPECT_NE(box.style & MB_SERVICE_NOTIFICATION, 0U);
    }
    EXPECT_EQ(readFile(folder.file(L"Document.pdf")), "%!PS");
    EXPECT_FALSE(jobMutexIsTaken());
    DeleteFileW(folder.file(L"Document.pdf").c_str());
  }

  void failToCreateEvents(DWORD error) {
    library.replace("CreateEventW", [error](LPSECURITY_ATTRIBUTES, BOOL, BOOL, LPCWSTR) -> HANDLE {
      SetLastError(error);
      return nullptr;
    });
  }
};

std::wstring systemText(DWORD error) {
  std::array<wchar_t, 1024> text{};
  FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, error, 0, text.data(), static_cast<DWORD>(text.size()),
                 nullptr);
  return text.data();
}

TEST_F(FailureTest, TheAcknowledgeEventCannotBeMade) {
  const Peer peer(channel);
  failToCreateEvents(ERROR_NOT_ENOUGH_MEMORY);
  printWithBoxes(kCreateFailed);
  EXPECT_TRUE(peer.records().empty());
}

TEST_F(FailureTest, TheBoxExplainsWhyTheEventCannotBeMade) {
  const Peer peer(channel);
  failToCreateEvents(ERROR_NOT_ENOUGH_MEMORY);
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("a"), 1);
  EXPECT_EQ(boxes.takeOne().text, systemText(ERROR_NOT_ENOUGH_MEMORY));
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(boxes.takeOne().text, systemText(ERROR_NOT_ENOUGH_MEMORY));
}

TEST_F(FailureTest, ThereIsNoRequestEvent) {
  Peer::Options options;
  options.requestEvent = false;
  const Peer peer(channel, options);
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("a"), 1);
  const Box box = boxes.takeOne();
  EXPECT_EQ(box.caption, kSettingFailed);
  EXPECT_EQ(box.text, systemText(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(boxes.takeOne().caption, kSettingFailed);
}

TEST_F(FailureTest, TheRequestEventCannotBeSet) {
  const Peer peer(channel);
  FAIL_EVERY(library, SetEvent, FALSE, ERROR_ACCESS_DENIED);
  printWithBoxes(kSettingFailed);
  EXPECT_TRUE(peer.records().empty());
}

TEST_F(FailureTest, TheMemoryCannotBeMade) {
  Peer::Options options;
  options.memory = false;
  const Peer peer(channel, options);
  FAIL_EVERY(library, CreateFileMappingW, nullptr, ERROR_NOT_ENOUGH_MEMORY);
  printWithBoxes(nullptr);
  EXPECT_TRUE(peer.records().empty());
}

TEST_F(FailureTest, TheMemoryCannotBeMapped) {
  const Peer peer(channel);
  FAIL_EVERY(library, MapViewOfFile, nullptr, ERROR_NOT_ENOUGH_MEMORY);
  printWithBoxes(nullptr);
  EXPECT_TRUE(peer.records().empty());
}

TEST_F(FailureTest, AMessageWithoutMemoryTouchesNoEvent) {
  ObjectCalls calls(library);
  const Peer peer(channel);
  library.replace("MapViewOfFile", [](HANDLE, DWORD, DWORD, DWORD, SIZE_T) -> LPVOID { return nullptr; });
  printWithBoxes(nullptr);
  EXPECT_TRUE(calls.namesFor("CreateEventW").empty());
  EXPECT_TRUE(calls.namesFor("OpenEventW").empty());
}

TEST_F(FailureTest, AWaitThatFailsCountsAsTaken) {
  Peer::Options options;
  options.acknowledges = false;
  const Peer peer(channel, options);
  std::vector<DWORD> waits;
  Job job(library, printer, L"Document", 1);
  library.replace("WaitForSingleObject", [&](HANDLE handle, DWORD milliseconds) -> DWORD {
    // Another wait is the one for the job's mutex; that comes first.
    waits.push_back(milliseconds);
    return waits.size() == 1 ? ::WaitForSingleObject(handle, milliseconds) : WAIT_FAILED;
  });
  EXPECT_EQ(job.write("a"), 1);
  EXPECT_EQ(waits, (std::vector<DWORD>{INFINITE, INFINITE}));
  library.restore("WaitForSingleObject");
  EXPECT_EQ(readFile(folder.file(L"Document.pdf")), "a");
  EXPECT_TRUE(peer.receives());
  // The end is told as usual; this peer must be told to take it.
  const Thread end([&] { EXPECT_EQ(job.end(), 1); });
  EXPECT_TRUE(peer.receives());
  peer.acknowledge();
  EXPECT_TRUE(end.endsWithin(10000));
}

TEST_F(FailureTest, NoFailureLeaksAHandle) {
  Peer::Options options;
  options.requestEvent = false;
  const Peer peer(channel, options);
  unsigned long afterTen = 0;
  for (int round = 0; round < 200; ++round) {
    printWithBoxes(kSettingFailed);
    if (round == 10) afterTen = handleCount();
  }
  expectNoMoreHandlesThan(afterTen);
}

// Everybody may make an object under a name of the channel before the library or the launcher does.
class SquattedNameTest : public FailureTest {
 protected:
  static Handle eventNamed(const std::wstring& name) {
    return Handle(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
  }
  static Handle mutexNamed(const std::wstring& name) {
    return Handle(CreateMutexW(nullptr, FALSE, name.c_str()));
  }
};

TEST_F(SquattedNameTest, AnEventInPlaceOfTheMemory) {
  const Handle squatter = eventNamed(channel.memory());
  Peer::Options options;
  options.memory = false;
  const Peer peer(channel, options);
  printWithBoxes(nullptr);
  EXPECT_TRUE(peer.records().empty());
}

TEST_F(SquattedNameTest, AMutexInPlaceOfTheRequestEvent) {
  const Handle squatter = mutexNamed(channel.requestEvent());
  Peer::Options options;
  options.requestEvent = false;
  const Peer peer(channel, options);
  printWithBoxes(kSettingFailed);
}

TEST_F(SquattedNameTest, AMutexInPlaceOfTheAcknowledgeEvent) {
  const Handle squatter = mutexNamed(channel.acknowledgeEvent());
  const Peer peer(channel);
  printWithBoxes(kCreateFailed);
  EXPECT_TRUE(peer.records().empty());
}

TEST_F(SquattedNameTest, AnEventInPlaceOfTheMutexIsNoLauncher) {
  const Handle squatter = eventNamed(channel.mutex());
  library.replace("Sleep", [](DWORD) {});
  library.replace("CreateProcessW",
                  [](LPCWSTR, LPWSTR, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD, LPVOID,
                     LPCWSTR, LPSTARTUPINFOW, LPPROCESS_INFORMATION) -> BOOL { return FALSE; });
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("a"), 0);
  EXPECT_EQ(boxes.takeOne().caption, L"Error:twsmsnd.exe is not running - and attempt to start it failed.");
}

TEST_F(SquattedNameTest, MemoryThatIsOnlyReservedIsRefused) {
  // To write there would end the program that prints.
  const Handle squatter(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE | SEC_RESERVE, 0,
                                           sizeof(Record), channel.memory().c_str()));
  Peer::Options options;
  options.memory = false;
  const Peer peer(channel, options);
  printWithBoxes(nullptr);
  EXPECT_TRUE(peer.records().empty());
}

TEST_F(SquattedNameTest, MemoryThatIsLargerIsUsed) {
  const Handle squatter(
      CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 100000, channel.memory().c_str()));
  const Peer peer(channel);
  printWithBoxes(nullptr);
  ASSERT_EQ(peer.records().size(), 2U);
  EXPECT_EQ(textOf(peer.records()[1], field::kDocumentName), "Document");
}

}  // namespace
}  // namespace quillpress::harness

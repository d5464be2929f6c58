#include "tests/umpd/launcher/support/Thread.h"
#include "tests/unit/win32/support/ClassTest.h"
#include "umpd/channel/LauncherProxy.h"
#include "umpd/rules/LauncherStruct.h"
#include "umpd/win32/Resources.h"
#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {
namespace {

constexpr DWORD kShortTime = 200;

// The receiver's side is made piece by piece.
class MessageChannelTest : public classes::ClassTest {
 protected:
  void makeMutex() { mutex_.reset(CreateMutexW(nullptr, FALSE, names.mutex.c_str())); }
  void makeRequestEvent() { request_.reset(CreateEventW(nullptr, FALSE, FALSE, names.requestEvent.c_str())); }

  [[nodiscard]] bool isRequested() const { return WaitForSingleObject(request_.get(), 0) == WAIT_OBJECT_0; }

  // Takes one record: waits for the request and acknowledges it.
  void receive() const {
    if (WaitForSingleObject(request_.get(), 30'000) != WAIT_OBJECT_0) return;
    const KernelHandle acknowledge(OpenEventW(EVENT_MODIFY_STATE, FALSE, names.acknowledgeEvent.c_str()));
    EXPECT_TRUE(acknowledge);
    SetEvent(acknowledge.get());
  }

  [[nodiscard]] bool hasAcknowledgeEvent() const {
    return static_cast<bool>(KernelHandle(OpenEventW(SYNCHRONIZE, FALSE, names.acknowledgeEvent.c_str())));
  }

  static std::vector<std::wstring> box(const std::wstring& caption, DWORD error) {
    return {L"[" + caption + L"] " + systemMessage(error)};
  }

  const ChannelNames names = channelNames(L"Local\\", classes::newObjectName(), L"user");
  MessageChannel channel{names, sizeof(LauncherStruct), kShortTime};

 private:
  KernelHandle mutex_;
  KernelHandle request_;
};

TEST_F(MessageChannelTest, TheReceiverIsReadyWhenItsMutexExists) {
  EXPECT_FALSE(channel.isReceiverReady());
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
  makeMutex();
  EXPECT_TRUE(channel.isReceiverReady());
  EXPECT_TRUE(channel.isReceiverReady());
}

TEST_F(MessageChannelTest, ARecordThatIsNotOpenIsNotSent) {
  makeMutex();
  makeRequestEvent();
  EXPECT_FALSE(channel.sendRecord());
  EXPECT_FALSE(isRequested());
}

TEST_F(MessageChannelTest, WithoutAReceiverNoEventIsTouched) {
  makeRequestEvent();
  ASSERT_TRUE(channel.openRecord());
  imports.replace("CreateEventW", [](LPSECURITY_ATTRIBUTES, BOOL, BOOL, LPCWSTR) -> HANDLE {
    ADD_FAILURE();
    return nullptr;
  });
  EXPECT_FALSE(channel.sendRecord());
  EXPECT_FALSE(isRequested());
}

TEST_F(MessageChannelTest, AnAcknowledgedRecordHasBeenSent) {
  makeMutex();
  makeRequestEvent();
  MessageChannel patient(names, sizeof(LauncherStruct), INFINITE);
  ASSERT_TRUE(patient.openRecord());
  {
    const harness::Thread receiver([&] { receive(); });
    EXPECT_TRUE(patient.sendRecord());
  }
  EXPECT_FALSE(hasAcknowledgeEvent());
}

TEST_F(MessageChannelTest, WithoutAcknowledgementItFailsWhenTimeIsOver) {
  makeMutex();
  makeRequestEvent();
  ASSERT_TRUE(channel.openRecord());
  const DWORD start = GetTickCount();
  EXPECT_FALSE(channel.sendRecord());
  EXPECT_GE(GetTickCount() - start, kShortTime - 50);
  EXPECT_TRUE(isRequested());
  EXPECT_FALSE(hasAcknowledgeEvent());
}

// Kept: only time that runs out counts as a failure of the wait.
TEST_F(MessageChannelTest, AnyOtherEndOfTheWaitIsASuccess) {
  makeMutex();
  makeRequestEvent();
  ASSERT_TRUE(channel.openRecord());
  imports.replace("WaitForSingleObject", [](HANDLE, DWORD) -> DWORD { return WAIT_FAILED; });
  EXPECT_TRUE(channel.sendRecord());
}

TEST_F(MessageChannelTest, AMissingRequestEventIsShown) {
  makeMutex();
  ASSERT_TRUE(channel.openRecord());
  EXPECT_FALSE(channel.sendRecord());
  EXPECT_EQ(takeBoxes(), box(L"IPC sendMsg setting event failed", ERROR_FILE_NOT_FOUND));
}

TEST_F(MessageChannelTest, AnAcknowledgeEventThatCannotBeMadeIsShown) {
  makeMutex();
  makeRequestEvent();
  ASSERT_TRUE(channel.openRecord());
  const KernelHandle otherKind(CreateMutexW(nullptr, FALSE, names.acknowledgeEvent.c_str()));
  EXPECT_FALSE(channel.sendRecord());
  EXPECT_EQ(takeBoxes(), box(L"IPC sendMsg create event failed", ERROR_INVALID_HANDLE));
  EXPECT_FALSE(isRequested());
}

TEST_F(MessageChannelTest, ARecordThatCannotBeOpenedIsTold) {
  const KernelHandle otherKind(CreateMutexW(nullptr, FALSE, names.section.c_str()));
  EXPECT_FALSE(channel.openRecord());
}

TEST_F(MessageChannelTest, RecordsAreSharedWithTheReceiver) {
  InterProcessComms<LauncherStruct> sender(names, kShortTime);
  ASSERT_TRUE(sender.openRecord());
  SharedSection receiver(names.section, sizeof(LauncherStruct));
  ASSERT_TRUE(receiver.openOrCreate());
  sender.message().reserved.back() = 'z';
  EXPECT_EQ(receiver.bytes()[1302], std::byte{'z'});
}

}  // namespace
}  // namespace quillpress::driver

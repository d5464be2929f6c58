#include "tools/launcher/Receiver.h"

#include <array>
#include <cstring>

#include "umpd/win32/NamedObjects.h"

namespace quillpress::launcher {
namespace {

// Milliseconds; senders need microseconds.
constexpr DWORD kTimeToSetTheRequest = 200;

}  // namespace

Receiver::Receiver(const driver::ChannelNames& names)
    : names_(names), section_(names.section, sizeof(driver::LauncherStruct)) {}

Receiver::Opened Receiver::open() {
  if (!section_.openOrCreate() || !createRequestEvent()) return Opened::kFailed;
  return takeMutex();
}

bool Receiver::createRequestEvent() {
  driver::SecurityAttributes security;
  requestEvent_.reset(CreateEventW(security.get(), FALSE, FALSE, names_.requestEvent.c_str()));
  return static_cast<bool>(requestEvent_);
}

Receiver::Opened Receiver::takeMutex() {
  driver::SecurityAttributes security;
  mutex_.reset(CreateMutexW(security.get(), TRUE, names_.mutex.c_str()));
  if (!mutex_) return Opened::kFailed;
  if (GetLastError() != ERROR_ALREADY_EXISTS) return Opened::kListening;
  // Senders hold it open for moments. One that another launcher has died with counts as taken.
  const DWORD result = WaitForSingleObject(mutex_.get(), 0);
  if (result == WAIT_OBJECT_0 || result == WAIT_ABANDONED) return Opened::kListening;
  mutex_.reset();
  return result == WAIT_TIMEOUT ? Opened::kSomebodyElseListens : Opened::kFailed;
}

void Receiver::close() {
  if (!mutex_) return;
  ReleaseMutex(mutex_.get());
  mutex_.reset();
}

bool Receiver::takeOverRequest() {
  // The acknowledge event belongs to the sender and lasts for as long as it waits.
  if (!driver::NamedEvent(names_.acknowledgeEvent).open()) return false;
  // It may be just about to set the request, and that must not make one message two.
  if (isRequestedWithin(kTimeToSetTheRequest)) return true;
  return driver::NamedEvent(names_.acknowledgeEvent).open();
}

Receiver::Woken Receiver::wait(HANDLE stop, DWORD milliseconds) {
  const std::array<HANDLE, 2> events{requestEvent_.get(), stop};
  switch (WaitForMultipleObjects(static_cast<DWORD>(events.size()), events.data(), FALSE, milliseconds)) {
    case WAIT_OBJECT_0:
      return Woken::kByRequest;
    case WAIT_TIMEOUT:
      return Woken::kByTime;
    default:  // a failed wait, too, would only fail again
      return Woken::kByStop;
  }
}

bool Receiver::isRequestedWithin(DWORD milliseconds) {
  return WaitForSingleObject(requestEvent_.get(), milliseconds) == WAIT_OBJECT_0;
}

driver::LauncherStruct Receiver::record() const {
  driver::LauncherStruct record;
  std::memcpy(&record, section_.bytes().data(), sizeof record);
  return record;
}

void Receiver::acknowledge() {
  // A sender that does not wait any more has taken its event with it.
  static_cast<void>(driver::NamedEvent(names_.acknowledgeEvent).set());
}

}  // namespace quillpress::launcher

#include "umpd/channel/MessageChannel.h"

#include <utility>

#include "umpd/rules/Trace.h"
#include "umpd/win32/ErrorBox.h"
#include "umpd/win32/NamedEvent.h"
#include "umpd/win32/NamedMutex.h"

namespace quillpress::driver {

MessageChannel::MessageChannel(ChannelNames names, std::size_t recordSize, unsigned long waitMilliseconds)
    : names_(std::move(names)), section_(names_.section, recordSize), waitMilliseconds_(waitMilliseconds) {}

bool MessageChannel::isReceiverReady() const {
  // The receiver keeps the mutex for as long as it listens, and the system closes it for one that dies. Only
  // its existence is asked: waiting for it would be waiting for the receiver's end.
  return NamedMutex::exists(names_.mutex);
}

bool MessageChannel::openRecord() {
  if (section_.openOrCreate()) return true;
  // Kept: "Aquire", by which the field searches traces (TraceTest.AMissingSectionIsToldAsAquire).
  QUILLPRESS_TRACE(L"Aquire failed\n");
  return false;
}

bool MessageChannel::sendRecord() const {
  if (!section_.isOpen()) return false;
  // Asked again here, since the receiver may have gone while the record was filled; without one the wait
  // below would never end.
  if (!isReceiverReady()) {
    QUILLPRESS_TRACE(L"IPC sendMsg isReceiverReady failed\n");
    return false;
  }
  // It must exist before the receiver can want to set it.
  NamedEvent acknowledged(names_.acknowledgeEvent);
  if (!acknowledged.create()) {
    showSystemErrorBox(L"IPC sendMsg create event failed");
    return false;
  }
  // The request is the receiver's own event and is only opened: one made here would be set with nobody
  // waiting.
  NamedEvent requested(names_.requestEvent);
  if (!requested.set()) {
    showSystemErrorBox(L"IPC sendMsg setting event failed");
    return false;
  }
  // Kept: only running out of time counts as a failure. The request is out by now, so a wait that fails
  // otherwise says nothing about the message (MessageChannelTest.AnyOtherEndOfTheWaitIsASuccess).
  if (acknowledged.wait(waitMilliseconds_) == WAIT_TIMEOUT) {
    QUILLPRESS_TRACE(L"IPC sendMsg listen.block failed\n");
    return false;
  }
  return true;
}

}  // namespace quillpress::driver

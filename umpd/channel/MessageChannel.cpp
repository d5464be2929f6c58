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
  return NamedMutex::exists(names_.mutex);
}

bool MessageChannel::openRecord() {
  if (section_.openOrCreate()) return true;
  // Kept: "Aquire". Traces are searched for by the texts that they have always had.
  QUILLPRESS_TRACE(L"Aquire failed\n");
  return false;
}

bool MessageChannel::sendRecord() const {
  if (!section_.isOpen()) return false;
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
  NamedEvent requested(names_.requestEvent);
  if (!requested.set()) {
    showSystemErrorBox(L"IPC sendMsg setting event failed");
    return false;
  }
  if (acknowledged.wait(waitMilliseconds_) == WAIT_TIMEOUT) {
    QUILLPRESS_TRACE(L"IPC sendMsg listen.block failed\n");
    return false;
  }
  return true;
}

}  // namespace quillpress::driver

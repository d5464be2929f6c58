#pragma once

#include <optional>

#include "umpd/rules/LauncherStruct.h"
#include "umpd/win32/NamedObjects.h"
#include "umpd/win32/Resources.h"

namespace quillpress::launcher {

// The receiving end of the channel. Senders take the existence of its mutex for "somebody listens": it is the
// last object to be made and the first to go.
class Receiver {
 public:
  enum class Opened { kListening, kSomebodyElseListens, kFailed };
  enum class Woken { kByRequest, kByStop, kByTime };

  explicit Receiver(const driver::ChannelNames& names);
  Receiver(const Receiver&) = delete;
  Receiver& operator=(const Receiver&) = delete;
  // A thread that owns the mutex cannot just forget it.
  ~Receiver() { close(); }

  // REQUIRES: the thread that opens also waits and closes.
  [[nodiscard]] Opened open();

  // Stops being found by senders. One that has found the receiver before can still be waited for.
  void close();

  // Whether a sender waits from before this receiver's time: the former one was ended with its request in
  // hand. The record is still there to be read, and the sender to be answered. REQUIRES: open
  [[nodiscard]] bool takeOverRequest();

  // Waits for a request, until the event `stop` is signalled, or for so many milliseconds.
  [[nodiscard]] Woken wait(HANDLE stop, DWORD milliseconds);

  // Whether a request comes within so many milliseconds.
  [[nodiscard]] bool isRequestedWithin(DWORD milliseconds);

  // A copy of the record. REQUIRES: open
  [[nodiscard]] driver::LauncherStruct record() const;

  // Lets the sender go on. It waits without limit, so this must follow every request.
  void acknowledge();

 private:
  [[nodiscard]] bool createRequestEvent();
  [[nodiscard]] Opened takeMutex();

  driver::ChannelNames names_;
  driver::SharedSection section_;
  driver::KernelHandle requestEvent_;
  driver::KernelHandle mutex_;
};

}  // namespace quillpress::launcher

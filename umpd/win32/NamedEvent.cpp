#include "umpd/win32/NamedEvent.h"

#include <utility>

#include "umpd/rules/Trace.h"
#include "umpd/win32/SecurityAttributes.h"

namespace quillpress::driver {

NamedEvent::NamedEvent(std::wstring name, Reset reset) : name_(std::move(name)), reset_(reset) {}

bool NamedEvent::create() {
  SecurityAttributes security;
  const BOOL manual = reset_ == Reset::kManual ? TRUE : FALSE;
  handle_.reset(CreateEventW(security.get(), manual, FALSE, name_.c_str()));
  return static_cast<bool>(handle_);
}

bool NamedEvent::open() {
  handle_.reset(OpenEventW(EVENT_ALL_ACCESS, FALSE, name_.c_str()));
  if (!handle_) QUILLPRESS_TRACE(L"Open TwsEvent [%s] failed.\n", name_);
  return static_cast<bool>(handle_);
}

bool NamedEvent::set() {
  if (!openIfNeeded()) return false;
  const bool signalled = SetEvent(handle_.get()) != 0;
  // All who wait now are let go, and nobody who comes later.
  if (reset_ == Reset::kManual) ResetEvent(handle_.get());
  return signalled;
}

DWORD NamedEvent::wait(DWORD milliseconds) {
  if (!openIfNeeded()) return kNotOpen;
  return WaitForSingleObject(handle_.get(), milliseconds);
}

}  // namespace quillpress::driver

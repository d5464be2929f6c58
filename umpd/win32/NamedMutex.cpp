#include "umpd/win32/NamedMutex.h"

#include <utility>

#include "umpd/win32/DriverDebugOutput.h"
#include "umpd/win32/SecurityAttributes.h"
#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {

NamedMutex::NamedMutex(std::wstring name) : name_(std::move(name)) {}

bool NamedMutex::create(InitialOwner owner) {
  SecurityAttributes security;
  handle_.reset(CreateMutexW(security.get(), owner == InitialOwner::kCaller ? TRUE : FALSE, name_.c_str()));
  // No box: a mutex that cannot be made may still be opened, as the one of a user with more rights.
  if (!handle_) writeDriverDebugOutput(L"CreateMutex failed " + systemMessage(GetLastError()));
  return static_cast<bool>(handle_);
}

bool NamedMutex::open() {
  handle_.reset(OpenMutexW(MUTEX_ALL_ACCESS, FALSE, name_.c_str()));
  return static_cast<bool>(handle_);
}

bool NamedMutex::acquire() {
  // A handle that was lost, or never had, is looked for by name.
  if (!handle_ && !open()) return false;
  // Abandoned is owned: its process died within a job. What the mutex guards is found by name each time, so
  // nothing of that job's is left half done in memory.
  const DWORD result = WaitForSingleObject(handle_.get(), INFINITE);
  return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

void NamedMutex::release() {
  ReleaseMutex(handle_.get());
}

}  // namespace quillpress::driver

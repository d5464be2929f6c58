#include "umpd/win32/NamedObjects.h"

#include "umpd/win32/Windows.h"
// Needs the header above.
#include <sddl.h>

#include <utility>

#include "umpd/rules/Trace.h"
#include "umpd/win32/Diagnostics.h"
#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {
namespace {
// Mandatory label, low level, no write-up.
// A browser in protected mode prints at the low level and may not open what has no label, which counts as
// medium.
constexpr char kLowIntegrity[] = "S:(ML;;NW;;;LW)";
}  // namespace

SecurityAttributes::SecurityAttributes() {
  const WindowsVersion version = windowsVersion();
  // The 9x family has no security, and its functions for descriptors only fail.
  if (version.is9x()) return;
  usable_ = openToEverybody();
  if (!usable_) return;
  if (version.hasIntegrityLabels()) allowLowIntegrity();
  // Not inheritable: a program that is started gets no handles of this process.
  attributes_ = {sizeof attributes_, &descriptor_, FALSE};
}

bool SecurityAttributes::openToEverybody() {
  if (InitializeSecurityDescriptor(&descriptor_, SECURITY_DESCRIPTOR_REVISION) == 0) {
    showSystemErrorBox(L"InitializeSecurityDescriptor failed");
    return false;
  }
  // A list that is present and null lets everybody in; an absent one would be the creator's default.
  if (SetSecurityDescriptorDacl(&descriptor_, TRUE, nullptr, FALSE) == 0) {
    showSystemErrorBox(L"SetSecurityDescriptorDacl failed");
    return false;
  }
  return true;
}

void SecurityAttributes::allowLowIntegrity() {
  // Parsed by the system: the functions that make a label are missing before Vista, where the library must
  // still load.
  if (ConvertStringSecurityDescriptorToSecurityDescriptorA(kLowIntegrity, SDDL_REVISION_1, label_.receive(),
                                                           nullptr) == 0) {
    writeDriverDebugOutput("ConvertStringSecurityDescriptorToSecurityDescriptor failed\n");
    return;
  }
  BOOL present = FALSE;
  BOOL defaulted = FALSE;
  ACL* list = nullptr;
  if (GetSecurityDescriptorSacl(label_.get(), &present, &list, &defaulted) == 0) {
    writeDriverDebugOutput("GetSecurityDescriptorSacl failed\n");
    return;
  }
  if (SetSecurityDescriptorSacl(&descriptor_, present, list, defaulted) == 0) {
    writeDriverDebugOutput("SetSecurityDescriptorSacl failed\n");
  }
}

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

SharedSection::SharedSection(std::wstring name, std::size_t size) : name_(std::move(name)), size_(size) {}

bool SharedSection::openOrCreate() {
  if (isOpen()) return true;
  section_.reset(OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, name_.c_str()));
  if (!section_) {
    SecurityAttributes security;
    section_.reset(CreateFileMappingW(INVALID_HANDLE_VALUE, security.get(), PAGE_READWRITE, 0,
                                      static_cast<DWORD>(size_), name_.c_str()));
  }
  if (section_ && map()) return true;
  section_.reset();
  return false;
}

bool SharedSection::map() {
  // All of it, whatever its size: what has come is looked at below.
  view_.reset(MapViewOfFile(section_.get(), FILE_MAP_ALL_ACCESS, 0, 0, 0));
  if (!view_) return false;
  if (isWritable()) return true;
  view_.reset();
  return false;
}

// Somebody else may have made the section: smaller, without memory behind it, or from a program's image,
// which can be mapped for writing and still not be written to.
bool SharedSection::isWritable() const {
  MEMORY_BASIC_INFORMATION information{};
  return VirtualQuery(view_.get(), &information, sizeof information) != 0 &&
         information.State == MEM_COMMIT && information.Type == MEM_MAPPED &&
         information.Protect == PAGE_READWRITE && information.RegionSize >= size_;
}
}  // namespace quillpress::driver

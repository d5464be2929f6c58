#include "tests/umpd/kernel/KernelCalls.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <ostream>

namespace quillpress::harness {
namespace {

constexpr BYTE kMandatoryLabel = 0x11;  // the kind of an entry

// An entry of a list, up to its identifier.
struct Entry {
  ACE_HEADER header;
  ACCESS_MASK mask;
  DWORD sid;
};

void readLabel(PSECURITY_DESCRIPTOR descriptor, Attributes& attributes) {
  BOOL present = FALSE;
  BOOL defaulted = FALSE;
  ACL* list = nullptr;
  if (!GetSecurityDescriptorSacl(descriptor, &present, &list, &defaulted) || !present) return;
  attributes.hasSystemList = true;
  void* found = nullptr;
  if (list == nullptr || !GetAce(list, 0, &found)) return;
  auto* entry = static_cast<Entry*>(found);
  if (entry->header.AceType != kMandatoryLabel) return;
  attributes.label = *GetSidSubAuthority(&entry->sid, 0);
  attributes.labelPolicy = entry->mask;
}

std::optional<Attributes> read(const SECURITY_ATTRIBUTES* given) {
  if (given == nullptr) return std::nullopt;
  Attributes attributes;
  attributes.length = given->nLength;
  attributes.isInherited = given->bInheritHandle;
  BOOL present = FALSE;
  BOOL defaulted = FALSE;
  ACL* list = nullptr;
  if (GetSecurityDescriptorDacl(given->lpSecurityDescriptor, &present, &list, &defaulted)) {
    attributes.hasList = present != FALSE;
    attributes.isListNull = present && list == nullptr;
  }
  readLabel(given->lpSecurityDescriptor, attributes);
  return attributes;
}

std::wstring textOf(const wchar_t* name) {
  return name == nullptr ? L"" : name;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, ObjectKind kind) {
  constexpr const char* kNames[] = {"mutex", "event", "section"};
  return out << kNames[static_cast<int>(kind)];
}

std::ostream& operator<<(std::ostream& out, const Attributes& attributes) {
  out << "length " << attributes.length << (attributes.isInherited ? ", inherited" : "")
      << (attributes.hasList ? ", list" : ", no list") << (attributes.isListNull ? " for everybody" : "")
      << (attributes.hasSystemList ? ", system list" : "");
  if (attributes.label) out << ", label " << *attributes.label << " policy " << attributes.labelPolicy;
  return out;
}

KernelCalls::KernelCalls(Library& library) {
  library.replace("CreateMutexW", [this](LPSECURITY_ATTRIBUTES security, BOOL owned, LPCWSTR name) -> HANDLE {
    Creation creation{.kind = ObjectKind::kMutex, .name = textOf(name), .attributes = read(security)};
    creation.isOwned = owned != FALSE;
    return noteCreation(creation) ? ::CreateMutexW(security, owned, name) : nullptr;
  });
  library.replace(
      "CreateEventW",
      [this](LPSECURITY_ATTRIBUTES security, BOOL manual, BOOL signalled, LPCWSTR name) -> HANDLE {
        Creation creation{.kind = ObjectKind::kEvent, .name = textOf(name), .attributes = read(security)};
        creation.isManual = manual != FALSE;
        creation.isSignalled = signalled != FALSE;
        if (!noteCreation(creation)) return nullptr;
        return ::CreateEventW(security, manual, signalled, name);
      });
  library.replace("CreateFileMappingW",
                  [this](HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protection, DWORD high, DWORD low,
                         LPCWSTR name) -> HANDLE {
                    Creation creation{
                        .kind = ObjectKind::kSection, .name = textOf(name), .attributes = read(security)};
                    creation.file = file;
                    creation.protection = protection;
                    creation.size = (ULONGLONG{high} << 32) | low;
                    if (!noteCreation(creation)) return nullptr;
                    return ::CreateFileMappingW(file, security, protection, high, low, name);
                  });
  library.replace("OpenMutexW", [this](DWORD access, BOOL inherit, LPCWSTR name) -> HANDLE {
    if (!noteOpening({ObjectKind::kMutex, textOf(name), access, inherit})) return nullptr;
    return ::OpenMutexW(access, inherit, name);
  });
  library.replace("OpenEventW", [this](DWORD access, BOOL inherit, LPCWSTR name) -> HANDLE {
    if (!noteOpening({ObjectKind::kEvent, textOf(name), access, inherit})) return nullptr;
    return ::OpenEventW(access, inherit, name);
  });
  library.replace("OpenFileMappingW", [this](DWORD access, BOOL inherit, LPCWSTR name) -> HANDLE {
    if (!noteOpening({ObjectKind::kSection, textOf(name), access, inherit})) return nullptr;
    return ::OpenFileMappingW(access, inherit, name);
  });
}

std::vector<KernelCalls::Creation> KernelCalls::creationsOf(const std::wstring& name) const {
  std::vector<Creation> found;
  std::copy_if(creations_.begin(), creations_.end(), std::back_inserter(found),
               [&](const Creation& each) { return each.name == name; });
  return found;
}

std::vector<KernelCalls::Opening> KernelCalls::openingsOf(const std::wstring& name) const {
  std::vector<Opening> found;
  std::copy_if(openings_.begin(), openings_.end(), std::back_inserter(found),
               [&](const Opening& each) { return each.name == name; });
  return found;
}

bool KernelCalls::noteCreation(const Creation& creation) {
  creations_.push_back(creation);
  if (!refuseCreation || !refuseCreation(creation.name)) return true;
  SetLastError(ERROR_ACCESS_DENIED);
  return false;
}

bool KernelCalls::noteOpening(const Opening& opening) {
  openings_.push_back(opening);
  if (!refuseOpening || !refuseOpening(opening.name)) return true;
  SetLastError(ERROR_ACCESS_DENIED);
  return false;
}

}  // namespace quillpress::harness

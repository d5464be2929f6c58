#include "umpd/settings/UserRoot.h"

#include "umpd/rules/Trace.h"
#include "umpd/settings/RegistryKeys.h"
#include "umpd/settings/RegistryValues.h"
#include "umpd/win32/SystemLibrary.h"
#include "umpd/win32/WindowsVersion.h"

namespace quillpress::driver {
namespace {

// Whether the administrator spares this machine the question for the domain controller.
bool isLookupDisabled() {
  const RegistryKey key = openKey(HKEY_LOCAL_MACHINE, kProductKey, KEY_READ);
  return key && hasValue(key.get(), L"DisableDomainControllerLookup");
}

}  // namespace

UserRoot::UserRoot(REGSAM access, UserSid& user) {
  // One user at a time, and no service that prints for others.
  if (windowsVersion().is9x()) {
    key_ = HKEY_CURRENT_USER;
    return;
  }
  if (openCurrentUser(access)) return;
  // Of NT 4.0 only: a machine far from its domain would wait for the network with every job.
  if (isLookupDisabled()) {
    key_ = HKEY_CURRENT_USER;
    return;
  }
  openBySid(access, user);
}

// False when the system has no such function; one that fails leaves no root.
bool UserRoot::openCurrentUser(REGSAM access) {
  const SystemLibrary advapi(kRegOpenCurrentUser.library);
  auto* const open = advapi.find(kRegOpenCurrentUser);
  if (open == nullptr) return false;
  HKEY key = nullptr;
  // A printer's key may have to be made. Users who may only read their registry still get their settings.
  if (open(access | KEY_CREATE_SUB_KEY, &key) == ERROR_SUCCESS || open(access, &key) == ERROR_SUCCESS) {
    owned_.reset(key);
  } else {
    QUILLPRESS_TRACE(L"getHKCU - 2 regOpenHKCU failed \n");
  }
  key_ = owned_.get();
  return true;
}

void UserRoot::openBySid(REGSAM access, UserSid& user) {
  // HKEY_CURRENT_USER is cached for the process and would be the spooler's own, whoever the thread acts for.
  const std::wstring& sid = user.text();
  if (!sid.empty()) owned_ = openKey(HKEY_USERS, sid, access);
  if (!owned_) QUILLPRESS_TRACE(L"getHKCU - 1 RegOpenKeyEx failed \n");
  key_ = owned_.get();
}

}  // namespace quillpress::driver

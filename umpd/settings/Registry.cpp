#include "umpd/settings/Registry.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "umpd/rules/SettingText.h"
#include "umpd/rules/Trace.h"
#include "umpd/win32/SystemInformation.h"
#include "umpd/win32/SystemLibrary.h"

namespace quillpress::driver {
namespace {
constexpr std::size_t kLeastRoom = 10 * sizeof(wchar_t);
constexpr std::size_t kOrdinaryRoom = 65'536;

static_assert(kRegistryText == REG_SZ && kRegistryNumber == REG_DWORD);

// Returns the kind of the value; REG_NONE when it cannot be read.
DWORD readBytes(HKEY key, const wchar_t* name, std::vector<BYTE>& bytes) {
  DWORD type = REG_NONE;
  DWORD size = 0;
  // The value may change between the two calls. One that has grown fails the second, and counts as
  // unreadable; of one that has shrunk only the new bytes are kept.
  if (RegQueryValueExW(key, name, nullptr, &type, nullptr, &size) != ERROR_SUCCESS ||
      !tryResize(bytes, size) ||
      RegQueryValueExW(key, name, nullptr, &type, bytes.data(), &size) != ERROR_SUCCESS) {
    return REG_NONE;
  }
  bytes.resize(std::min<std::size_t>(size, bytes.size()));
  return type;
}

// Whether the administrator spares this machine the question for the domain controller.
bool isLookupDisabled() {
  const RegistryKey key = openKey(HKEY_LOCAL_MACHINE, kProductKey, KEY_READ);
  return key && hasValue(key.get(), L"DisableDomainControllerLookup");
}
}  // namespace

// What a failed call stores is no handle.

RegistryKey openKey(HKEY root, const std::wstring& path, REGSAM access) {
  HKEY key = nullptr;
  return RegistryKey(RegOpenKeyExW(root, path.c_str(), 0, access, &key) == ERROR_SUCCESS ? key : nullptr);
}

RegistryKey openOrCreateKey(HKEY root, const std::wstring& path, REGSAM access, bool* isNew) {
  HKEY key = nullptr;
  DWORD disposition = 0;
  // All missing keys of the path are made, so the product's own need not be made before a printer's.
  if (RegCreateKeyExW(root, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr, &key,
                      &disposition) != ERROR_SUCCESS) {
    return RegistryKey();
  }
  // Set on success alone; the system's word is the only one that holds when two jobs make the key at once.
  if (isNew != nullptr) *isNew = disposition == REG_CREATED_NEW_KEY;
  return RegistryKey(key);
}

bool hasValue(HKEY key, const wchar_t* name) {
  return RegQueryValueExW(key, name, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

ReadResult readNumber(HKEY key, const wchar_t* name, int& number) {
  DWORD type = 0;
  BYTE bytes[sizeof number];
  DWORD size = sizeof bytes;
  const LONG result = RegQueryValueExW(key, name, nullptr, &type, bytes, &size);
  // Every other error means that the key could not be asked, which tells nothing about the value.
  if (result == ERROR_FILE_NOT_FOUND) return ReadResult::kAbsent;
  if (result != ERROR_SUCCESS || type != REG_DWORD) return ReadResult::kFailed;
  const std::optional<int> value = numberOfRegistryBytes({bytes, size});
  if (!value) return ReadResult::kFailed;
  number = *value;
  return ReadResult::kFound;
}

std::optional<std::wstring> readText(HKEY key, const wchar_t* name) {
  std::vector<BYTE> bytes;
  if (readBytes(key, name, bytes) != REG_SZ) return std::nullopt;
  return textOfRegistryBytes(bytes);
}

std::optional<std::wstring> readCommandLine(HKEY key, const wchar_t* name) {
  std::vector<BYTE> bytes;
  const DWORD type = readBytes(key, name, bytes);
  // Set-up programs store paths with variables in them; these are compared as they stand.
  if (type != REG_SZ && type != REG_EXPAND_SZ) return std::nullopt;
  return textOfRegistryBytes(bytes);
}

bool writeNumber(HKEY key, const std::wstring& name, int value) {
  BYTE bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  return RegSetValueExW(key, name.c_str(), 0, REG_DWORD, bytes, sizeof bytes) == ERROR_SUCCESS;
}

bool writeText(HKEY key, const std::wstring& name, const std::wstring& value) {
  // The final zero is part of the value: many readers take what the registry gives them for a text as it is.
  const DWORD size = static_cast<DWORD>(value.size() + 1) * sizeof(wchar_t);
  return RegSetValueExW(key, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()), size) ==
         ERROR_SUCCESS;
}

bool readAllValues(HKEY key, StringMap& map, unsigned& refused) {
  DWORD count = 0;
  DWORD longestName = 0;
  DWORD longestData = 0;
  if (RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count, &longestName,
                       &longestData, nullptr, nullptr) != ERROR_SUCCESS) {
    return false;
  }
  // The longest name is told without its final zero, which the system writes all the same.
  std::vector<wchar_t> name(longestName + 1);
  std::vector<BYTE> data;
  // A value that memory cannot hold is no setting; those of ordinary size are read all the same.
  if (!tryResize(data, std::max<std::size_t>(longestData, kLeastRoom)) && !tryResize(data, kOrdinaryRoom))
    return false;
  map.clear();
  for (DWORD i = 0; i < count; ++i) {
    // Both are in and out: each call stores the size of what it found.
    auto nameLength = static_cast<DWORD>(name.size());
    auto size = static_cast<DWORD>(data.size());
    DWORD type = 0;
    const LONG result = RegEnumValueW(key, i, name.data(), &nameLength, nullptr, &type, data.data(), &size);
    if (result == ERROR_NO_MORE_ITEMS) break;
    // A value that has been added or has grown since the question fails alone. The one without a name is the
    // key's default, which is no setting.
    if (result != ERROR_SUCCESS || nameLength == 0) continue;
    const std::optional<std::wstring> value = settingOfRegistryValue(type, {data.data(), size});
    if (value && !map.set({name.data(), nameLength}, *value)) ++refused;
  }
  return true;
}

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

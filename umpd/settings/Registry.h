#pragma once

#include <optional>
#include <string>

#include "umpd/rules/StringMap.h"
#include "umpd/spooler/Identity.h"
#include "umpd/win32/Resources.h"

namespace quillpress::driver {
// The key of the front end in the registry of a user or of the machine. Below a user's, each printer has one
// of its own.
inline constexpr wchar_t kProductKey[] = L"Software\\Quillpress\\";

// Opens a key below a root; none when there is no such key or the access is refused.
RegistryKey openKey(HKEY root, const std::wstring& path, REGSAM access);

// The same, but makes the key when there is none, and tells whether it did.
RegistryKey openOrCreateKey(HKEY root, const std::wstring& path, REGSAM access, bool* isNew = nullptr);

// Typed values of an open registry key: numbers of 32 bits and texts.

bool hasValue(HKEY key, const wchar_t* name);

enum class ReadResult { kFound, kAbsent, kFailed };

// kAbsent leaves the number alone; a value of another kind counts as kFailed.
ReadResult readNumber(HKEY key, const wchar_t* name, int& number);

// A text of any length; nothing when it is absent or of another kind.
std::optional<std::wstring> readText(HKEY key, const wchar_t* name);

// The same of the commands that other programs leave in the registry, whose kinds of text vary.
std::optional<std::wstring> readCommandLine(HKEY key, const wchar_t* name);

bool writeNumber(HKEY key, const std::wstring& name, int value);
bool writeText(HKEY key, const std::wstring& name, const std::wstring& value);

// Replaces the map by all values of the key that have a name and are numbers or texts. Returns false, and
// leaves the map as it was, when the key does not tell what it has. Counts in `refused` those that found no
// room.
bool readAllValues(HKEY key, StringMap& map, unsigned& refused);

// The registry of the user for whom the thread prints. Inside the spooler this is not the process's own user.
class UserRoot {
 public:
  // `access`: registry rights, KEY_QUERY_VALUE, KEY_SET_VALUE or both. `user` is asked where the system does
  // not find the root by itself.
  UserRoot(REGSAM access, UserSid& user);

  explicit operator bool() const { return key_ != nullptr; }

  // REQUIRES: true as a condition. Borrowed.
  [[nodiscard]] HKEY key() const { return key_; }

 private:
  bool openCurrentUser(REGSAM access);
  void openBySid(REGSAM access, UserSid& user);

  RegistryKey owned_;  // none for a root that the system keeps open anyway
  HKEY key_ = nullptr;
};
}  // namespace quillpress::driver

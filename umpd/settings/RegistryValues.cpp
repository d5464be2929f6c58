#include "umpd/settings/RegistryValues.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "umpd/rules/Text.h"
#include "umpd/rules/TryResize.h"

namespace quillpress::driver {
namespace {

constexpr std::size_t kLeastRoom = 10 * sizeof(wchar_t);
constexpr std::size_t kOrdinaryRoom = 65'536;

// Programs may store a text without its final zero, with several, or with half a character.
std::wstring textOfBytes(const BYTE* bytes, std::size_t size) {
  std::wstring text(size / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), bytes, text.size() * sizeof(wchar_t));
  return std::wstring(textOfField(text.data(), text.size()));
}

int numberOfBytes(const BYTE* bytes) {
  int number = 0;
  std::memcpy(&number, bytes, sizeof number);
  return number;
}

// What a value reads as in the map; nothing for kinds that settings do not have.
std::optional<std::wstring> settingOf(DWORD type, const BYTE* bytes, std::size_t size) {
  if (type == REG_DWORD && size == sizeof(int)) return std::to_wstring(numberOfBytes(bytes));
  if (type == REG_SZ) return textOfBytes(bytes, size);
  return std::nullopt;
}

// Returns the kind of the value; REG_NONE when it cannot be read.
DWORD readBytes(HKEY key, const wchar_t* name, std::vector<BYTE>& bytes) {
  DWORD type = REG_NONE;
  DWORD size = 0;
  if (RegQueryValueExW(key, name, nullptr, &type, nullptr, &size) != ERROR_SUCCESS ||
      !tryResize(bytes, size) ||
      RegQueryValueExW(key, name, nullptr, &type, bytes.data(), &size) != ERROR_SUCCESS) {
    return REG_NONE;
  }
  bytes.resize(std::min<std::size_t>(size, bytes.size()));
  return type;
}

}  // namespace

bool hasValue(HKEY key, const wchar_t* name) {
  return RegQueryValueExW(key, name, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

ReadResult readNumber(HKEY key, const wchar_t* name, int& number) {
  DWORD type = 0;
  BYTE bytes[sizeof number];
  DWORD size = sizeof bytes;
  const LONG result = RegQueryValueExW(key, name, nullptr, &type, bytes, &size);
  if (result == ERROR_FILE_NOT_FOUND) return ReadResult::kAbsent;
  if (result != ERROR_SUCCESS || type != REG_DWORD || size != sizeof bytes) return ReadResult::kFailed;
  number = numberOfBytes(bytes);
  return ReadResult::kFound;
}

std::optional<std::wstring> readText(HKEY key, const wchar_t* name) {
  std::vector<BYTE> bytes;
  if (readBytes(key, name, bytes) != REG_SZ) return std::nullopt;
  return textOfBytes(bytes.data(), bytes.size());
}

std::optional<std::wstring> readCommandLine(HKEY key, const wchar_t* name) {
  std::vector<BYTE> bytes;
  const DWORD type = readBytes(key, name, bytes);
  if (type != REG_SZ && type != REG_EXPAND_SZ) return std::nullopt;
  return textOfBytes(bytes.data(), bytes.size());
}

bool writeNumber(HKEY key, const std::wstring& name, int value) {
  BYTE bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  return RegSetValueExW(key, name.c_str(), 0, REG_DWORD, bytes, sizeof bytes) == ERROR_SUCCESS;
}

bool writeText(HKEY key, const std::wstring& name, const std::wstring& value) {
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
  std::vector<wchar_t> name(longestName + 1);
  std::vector<BYTE> data;
  // A value that memory cannot hold is no setting; those of ordinary size are read all the same.
  if (!tryResize(data, std::max<std::size_t>(longestData, kLeastRoom)) && !tryResize(data, kOrdinaryRoom))
    return false;
  map.clear();
  for (DWORD i = 0; i < count; ++i) {
    auto nameLength = static_cast<DWORD>(name.size());
    auto size = static_cast<DWORD>(data.size());
    DWORD type = 0;
    const LONG result = RegEnumValueW(key, i, name.data(), &nameLength, nullptr, &type, data.data(), &size);
    if (result == ERROR_NO_MORE_ITEMS) break;
    if (result != ERROR_SUCCESS || nameLength == 0) continue;
    const std::optional<std::wstring> value = settingOf(type, data.data(), size);
    if (value && !map.set({name.data(), nameLength}, *value)) ++refused;
  }
  return true;
}

}  // namespace quillpress::driver

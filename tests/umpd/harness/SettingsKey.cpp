#include "tests/umpd/harness/SettingsKey.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include "tests/umpd/harness/Text.h"

namespace quillpress::harness {
namespace {

constexpr wchar_t kSettings[] = L"Software\\Quillpress";

// A key that is open as long as this object lives, or null.
class OpenKey {
 public:
  OpenKey(HKEY root, const std::wstring& path, REGSAM access) {
    if (RegOpenKeyExW(root, path.c_str(), 0, access, &key_) != ERROR_SUCCESS) key_ = nullptr;
  }
  ~OpenKey() {
    if (key_ != nullptr) RegCloseKey(key_);
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;

  [[nodiscard]] HKEY get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

constexpr DWORD kLongestName = 16384;

// What RegEnumValueW or RegEnumKeyExW lists.
template <typename Enumerate>
std::vector<std::wstring> listNames(const OpenKey& key, Enumerate enumerate) {
  std::vector<std::wstring> names;
  std::wstring name(kLongestName, L'\0');
  DWORD length = kLongestName;
  for (DWORD i = 0; key.get() != nullptr && enumerate(key.get(), i, name.data(), &length, nullptr, nullptr,
                                                      nullptr, nullptr) == ERROR_SUCCESS;
       ++i, length = kLongestName) {
    names.push_back(name.substr(0, length));
  }
  return names;
}

void removeTreeBelow(HKEY root, const std::wstring& path) {
  for (const std::wstring& name : SettingsKey(root, path).subkeys()) {
    std::wstring below = path;
    removeTreeBelow(root, below.append(L"\\").append(name));
  }
  RegDeleteKeyW(root, path.c_str());
}

}  // namespace

SettingsKey::SettingsKey(HKEY root, std::wstring path) : root_(root), path_(std::move(path)) {}

SettingsKey SettingsKey::ofPrinter(const std::wstring& printerName) {
  return {HKEY_CURRENT_USER, std::wstring(kSettings) + L"\\" + withReplaced(printerName, L'\\', L',')};
}

SettingsKey SettingsKey::global() {
  return {HKEY_CURRENT_USER, kSettings};
}

bool SettingsKey::exists() const {
  return OpenKey(root_, path_, KEY_READ).get() != nullptr;
}

std::vector<std::wstring> SettingsKey::names() const {
  return listNames(OpenKey(root_, path_, KEY_READ), RegEnumValueW);
}

std::vector<std::wstring> SettingsKey::subkeys() const {
  return listNames(OpenKey(root_, path_, KEY_READ), RegEnumKeyExW);
}

std::optional<DWORD> SettingsKey::number(const std::wstring& name) const {
  const auto stored = bytes(name);
  if (!stored || type(name) != DWORD{REG_DWORD} || stored->size() != sizeof(DWORD)) return std::nullopt;
  DWORD value = 0;
  std::memcpy(&value, stored->data(), sizeof value);
  return value;
}

std::optional<std::wstring> SettingsKey::text(const std::wstring& name) const {
  const auto stored = bytes(name);
  if (!stored || type(name) != DWORD{REG_SZ}) return std::nullopt;
  std::wstring value(stored->size() / sizeof(wchar_t), L'\0');
  if (!value.empty()) std::memcpy(value.data(), stored->data(), value.size() * sizeof(wchar_t));
  if (!value.empty() && value.back() == L'\0') value.pop_back();
  return value;
}

std::optional<DWORD> SettingsKey::type(const std::wstring& name) const {
  const OpenKey key(root_, path_, KEY_READ);
  DWORD type = 0;
  if (key.get() == nullptr) return std::nullopt;
  if (RegQueryValueExW(key.get(), name.c_str(), nullptr, &type, nullptr, nullptr) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  return type;
}

std::optional<std::vector<BYTE>> SettingsKey::bytes(const std::wstring& name) const {
  const OpenKey key(root_, path_, KEY_READ);
  DWORD size = 0;
  if (key.get() == nullptr) return std::nullopt;
  if (RegQueryValueExW(key.get(), name.c_str(), nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::vector<BYTE> value(size);
  RegQueryValueExW(key.get(), name.c_str(), nullptr, nullptr, value.data(), &size);
  return value;
}

void SettingsKey::setNumber(const std::wstring& name, DWORD value) const {
  const auto* first = reinterpret_cast<const BYTE*>(&value);
  setBytes(name, REG_DWORD, {first, first + sizeof value});
}

void SettingsKey::setText(const std::wstring& name, const std::wstring& value) const {
  const auto* first = reinterpret_cast<const BYTE*>(value.c_str());
  setBytes(name, REG_SZ, {first, first + (value.size() + 1) * sizeof(wchar_t)});
}

void SettingsKey::setBytes(const std::wstring& name, DWORD type, const std::vector<BYTE>& value) const {
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExW(root_, path_.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr),
            ERROR_SUCCESS);
  EXPECT_EQ(RegSetValueExW(key, name.c_str(), 0, type, value.data(), static_cast<DWORD>(value.size())),
            ERROR_SUCCESS);
  RegCloseKey(key);
}

void SettingsKey::remove(const std::wstring& name) const {
  const OpenKey key(root_, path_, KEY_WRITE);
  if (key.get() != nullptr) RegDeleteValueW(key.get(), name.c_str());
}

void SettingsKey::removeTree() const {
  removeTreeBelow(root_, path_);
}

}  // namespace quillpress::harness

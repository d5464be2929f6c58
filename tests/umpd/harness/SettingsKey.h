#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace quillpress::harness {

// A key of the registry, looked at with Windows' own functions: what the library keeps there. The key need
// not exist; writing makes it.
class SettingsKey {
 public:
  SettingsKey(HKEY root, std::wstring path);

  // The current user's settings of one printer, and those of all printers.
  static SettingsKey ofPrinter(const std::wstring& printerName);
  static SettingsKey global();

  [[nodiscard]] bool exists() const;
  [[nodiscard]] std::vector<std::wstring> names() const;
  [[nodiscard]] std::vector<std::wstring> subkeys() const;

  // What the value holds; nothing when it is absent or of another kind.
  [[nodiscard]] std::optional<DWORD> number(const std::wstring& name) const;
  [[nodiscard]] std::optional<std::wstring> text(const std::wstring& name) const;

  // As stored: the bytes of a text include its final zero when that was written.
  [[nodiscard]] std::optional<DWORD> type(const std::wstring& name) const;
  [[nodiscard]] std::optional<std::vector<BYTE>> bytes(const std::wstring& name) const;

  void setNumber(const std::wstring& name, DWORD value) const;
  void setText(const std::wstring& name, const std::wstring& value) const;
  void setBytes(const std::wstring& name, DWORD type, const std::vector<BYTE>& value) const;
  void remove(const std::wstring& name) const;
  void removeTree() const;

 private:
  HKEY root_;
  std::wstring path_;
};

}  // namespace quillpress::harness

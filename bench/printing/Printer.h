#pragma once

#include <windows.h>
// After windows.h.
#include <winspool.h>

#include <string>

// A printer of this program alone, with its settings in the user's registry. Jobs write into the temporary
// folder and end without the launcher: whoever prints waits for the event.
class Printer {
 public:
  Printer();
  Printer(const Printer&) = delete;
  Printer& operator=(const Printer&) = delete;
  ~Printer();

  [[nodiscard]] HANDLE handle() const { return handle_; }
  [[nodiscard]] std::wstring& name() { return name_; }

  // The registry key that holds its settings; open as long as the printer.
  [[nodiscard]] HKEY settings() const { return settings_; }
  void set(const wchar_t* name, DWORD value) const;
  void set(const wchar_t* name, const std::wstring& value) const;
  [[nodiscard]] std::wstring text(const wchar_t* name) const;

 private:
  std::wstring name_;
  HANDLE handle_ = nullptr;
  HKEY settings_ = nullptr;
};

#pragma once

#include <windows.h>
// After windows.h.
#include <winspool.h>

#include <string>

namespace quillpress::harness {

inline constexpr wchar_t kDriverName[] = L"Tarnwick Quillpress";

// A printer of Wine's spooler with a name of its own, opened. It goes at the end, its settings with it.
class Printer {
 public:
  struct Options {
    std::wstring name = L"";  // a new one when empty
    std::wstring port = L"FILE:";
    std::wstring driver = kDriverName;
  };

  Printer() : Printer(Options()) {}
  explicit Printer(const Options& options);
  ~Printer();
  Printer(const Printer&) = delete;
  Printer& operator=(const Printer&) = delete;

  [[nodiscard]] HANDLE handle() const { return handle_; }
  [[nodiscard]] const std::wstring& name() const { return name_; }

  // Has the spooler receive a document; returns its job.
  [[nodiscard]] DWORD beginDocument(std::wstring documentName) const;

  // A name that no printer has yet.
  static std::wstring newName();

 private:
  std::wstring name_;
  HANDLE handle_ = nullptr;
};

}  // namespace quillpress::harness

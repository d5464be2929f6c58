#include "bench/printing/Printer.h"

#include <array>

#include "bench/printing/Check.h"
#include "bench/printing/DriverLibrary.h"
#include "tests/windows/printer/AddPrinter.h"

namespace {

constexpr wchar_t kSettings[] = L"Software\\Quillpress\\";

std::wstring temporaryFolder() {
  std::array<wchar_t, MAX_PATH> path{};
  check(GetTempPathW(static_cast<DWORD>(path.size()), path.data()) != 0, "GetTempPath");
  return path.data();
}

}  // namespace

Printer::Printer()
    : name_(L"Quill bench " + std::to_wstring(GetCurrentProcessId())),
      handle_(quillpress::testing::addPrinter(name_, L"Tarnwick Quillpress", L"FILE:")) {
  check(handle_ != nullptr, "AddPrinter");

  // The first job of a printer makes its settings.
  const DriverLibrary library;
  const unsigned long job = library.docStart2K(handle_, 0, name_.data(), name_.data());
  check(job != 0 && library.docEnd(job) == 1, "the first job");
  const std::wstring key = kSettings + name_;
  check(RegOpenKeyExW(HKEY_CURRENT_USER, key.c_str(), 0, KEY_ALL_ACCESS, &settings_) == ERROR_SUCCESS,
        "RegOpenKeyEx");
  set(L"FinishPrintEv", 1);
  set(L"DefaultSaveDir", temporaryFolder());
}

Printer::~Printer() {
  RegCloseKey(settings_);
  RegDeleteKeyW(HKEY_CURRENT_USER, (kSettings + name_).c_str());
  DeletePrinter(handle_);
  ClosePrinter(handle_);
}

void Printer::set(const wchar_t* name, DWORD value) const {
  const auto* const bytes = reinterpret_cast<const BYTE*>(&value);
  check(RegSetValueExW(settings_, name, 0, REG_DWORD, bytes, sizeof value) == ERROR_SUCCESS, "RegSetValueEx");
}

void Printer::set(const wchar_t* name, const std::wstring& value) const {
  const auto* const bytes = reinterpret_cast<const BYTE*>(value.c_str());
  const DWORD size = static_cast<DWORD>(value.size() + 1) * sizeof(wchar_t);
  check(RegSetValueExW(settings_, name, 0, REG_SZ, bytes, size) == ERROR_SUCCESS, "RegSetValueEx");
}

std::wstring Printer::text(const wchar_t* name) const {
  std::array<wchar_t, 1024> value{};
  DWORD size = sizeof value - sizeof(wchar_t);
  check(RegQueryValueExW(settings_, name, nullptr, nullptr, reinterpret_cast<BYTE*>(value.data()), &size) ==
            ERROR_SUCCESS,
        "RegQueryValueEx");
  return value.data();
}

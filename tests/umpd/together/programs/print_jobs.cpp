// Prints jobs one after another, each of some blocks, with quillpress.dll and Windows as they are.
//
//   print_jobs PRINTER PREFIX JOBS BLOCKS [EVENT]
//
// Documents are named PREFIX-0, PREFIX-1 and so on. Waits for the named event first, so that several such
// programs can begin at once. Ends with the number of calls that failed.

#include <windows.h>
// After windows.h.
#include <quillpress/driver.h>
#include <shellapi.h>
#include <winspool.h>

#include <string>

#include "tests/umpd/together/JobBytes.h"

namespace {

using quillpress::harness::blockOf;

template <class Function>
Function* find(HMODULE library, const char* name) {
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

// The number of calls that failed.
int print(HMODULE library, HANDLE printer, std::wstring printerName, std::wstring documentName, int blocks) {
  auto* write = find<decltype(DocWrite)>(library, "DocWrite");
  const unsigned long job =
      find<decltype(DocStart2K)>(library, "DocStart2K")(printer, 1, printerName.data(), documentName.data());
  if (job == 0) return 1;
  int failures = 0;
  for (int block = 0; block < blocks; ++block) {
    const std::string bytes = blockOf(documentName, static_cast<std::size_t>(block));
    if (write(job, bytes.data(), static_cast<unsigned long>(bytes.size())) != 1) ++failures;
  }
  if (find<decltype(DocEnd)>(library, "DocEnd")(job) != 1) ++failures;
  return failures;
}

}  // namespace

int main() {
  int count = 0;
  LPWSTR* arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  if (count < 5) return 100;
  const std::wstring prefix = arguments[2];
  const int jobs = std::stoi(std::wstring(arguments[3]));
  const int blocks = std::stoi(std::wstring(arguments[4]));

  const HMODULE library = LoadLibraryW(L"quillpress.dll");
  HANDLE printer = nullptr;
  if (library == nullptr || OpenPrinterW(arguments[1], &printer, nullptr) == 0) return 101;
  if (count > 5) WaitForSingleObject(OpenEventW(SYNCHRONIZE, FALSE, arguments[5]), INFINITE);

  int failures = 0;
  for (int job = 0; job < jobs; ++job) {
    failures += print(library, printer, arguments[1], prefix + L"-" + std::to_wstring(job), blocks);
  }
  ClosePrinter(printer);
  return failures;
}

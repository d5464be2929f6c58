#pragma once

#include <string>
#include <string_view>

#include "harness/Library.h"
#include "harness/Printer.h"

namespace quillpress::harness {

using JobHandle = unsigned long;

// The functions that the library exports for the printer driver.
struct Driver {
  explicit Driver(const Library& library);

  JobHandle (*docStart)(wchar_t* printerName);
  JobHandle (*docStart2K)(void* printer, unsigned long jobId, wchar_t* printerName, wchar_t* documentName);
  int (*docWrite)(JobHandle job, const void* bytes, unsigned long count);
  int (*docEnd)(JobHandle job);
  int (*getIntVal)(JobHandle job, const wchar_t* name, int defaultValue);
  unsigned (*getStringVal)(JobHandle job, const wchar_t* name, wchar_t* buffer, unsigned length,
                           const wchar_t* defaultValue);
  unsigned (*getStringMultibyte)(JobHandle job, const char* name, char* buffer, unsigned length);
};

// A job, ended with this object at the latest.
class Job {
 public:
  // By printer name, as the oldest drivers begin a job.
  Job(const Library& library, std::wstring printerName);

  // By an open printer, as newer drivers do. The id 0 is no job of the spooler.
  Job(const Library& library, const Printer& printer, std::wstring documentName = L"Document",
      unsigned long id = 0);

  ~Job();
  Job(const Job&) = delete;
  Job& operator=(const Job&) = delete;

  // 0 when the job could not begin, or has ended.
  [[nodiscard]] JobHandle handle() const { return handle_; }

  int write(std::string_view bytes) const;
  int end();

  [[nodiscard]] int number(const std::wstring& name, int defaultValue = -1) const;

  // Into a buffer that holds any ordinary value.
  [[nodiscard]] std::wstring text(const std::wstring& name, const std::wstring& defaultValue = L"") const;

 private:
  Driver driver_;
  JobHandle handle_;
};

}  // namespace quillpress::harness

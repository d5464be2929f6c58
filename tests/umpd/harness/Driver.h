#pragma once

#include <quillpress/driver.h>

#include <string>
#include <string_view>

#include "tests/umpd/harness/Library.h"
#include "tests/umpd/harness/Printer.h"

namespace quillpress::harness {

using JobHandle = unsigned long;

// The functions that the library exports for the printer driver.
struct Driver {
  explicit Driver(const Library& library);

  decltype(DocStart)* docStart;
  decltype(DocStart2K)* docStart2K;
  decltype(DocWrite)* docWrite;
  decltype(DocEnd)* docEnd;
  decltype(::getIntVal)* getIntVal;
  decltype(::getStringVal)* getStringVal;
  decltype(::getStringMultibyte)* getStringMultibyte;
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

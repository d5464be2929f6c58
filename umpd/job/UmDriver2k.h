#pragma once

#include "umpd/job/UmDriver.h"

namespace quillpress::driver {

// A job of the newer spooler interface, which tells the document's name.
class UmDriver2k final : public UmDriver {
 public:
  // Begins the job. False, after an error box, when the spooler does not know the printer.
  bool init(HANDLE printer, DWORD jobId, const wchar_t* documentName);
};

}  // namespace quillpress::driver

#pragma once

#include "umpd/win32/SystemLibrary.h"

namespace quillpress::driver {

// For as long as this object lives, the thread acts with the spooler's own identity instead of that of the
// client whose job it prints. Does nothing on the 9x family, which has no identities.
class SpoolerIdentity {
 public:
  SpoolerIdentity();
  SpoolerIdentity(const SpoolerIdentity&) = delete;
  SpoolerIdentity& operator=(const SpoolerIdentity&) = delete;
  ~SpoolerIdentity();

 private:
  SystemLibrary spooler_;
  HANDLE clientToken_ = nullptr;
};

}  // namespace quillpress::driver

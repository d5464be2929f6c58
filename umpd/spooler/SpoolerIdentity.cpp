#include "umpd/spooler/SpoolerIdentity.h"

#include "umpd/win32/ErrorBox.h"
#include "umpd/win32/SystemLibrary.h"
#include "umpd/win32/WindowsVersion.h"

namespace quillpress::driver {

SpoolerIdentity::SpoolerIdentity() {
  if (windowsVersion().is9x()) return;
  spooler_ = SystemLibrary(kRevertToPrinterSelf.library);
  if (!spooler_) {
    // Without the spooler's rights the work is tried all the same; it tells by itself when it fails.
    showSystemErrorBox(L"LoadLibrary spoolss.dll");
    return;
  }
  auto* const revert = spooler_.find(kRevertToPrinterSelf);
  if (revert == nullptr) {
    showSystemErrorBox(L"GetProcAddress RevertToPrinterSelf");
    spooler_ = {};
    return;
  }
  // Null when the thread does not act for a client; then there is nothing to go back to.
  clientToken_ = revert();
}

SpoolerIdentity::~SpoolerIdentity() {
  // Before the library is let go, which holds the function.
  auto* const impersonate = spooler_.find(kImpersonatePrinterClient);
  if (impersonate != nullptr && clientToken_ != nullptr) impersonate(clientToken_);
}

}  // namespace quillpress::driver

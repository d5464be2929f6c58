#include "umpd/job/ProtectedMode.h"

#include "umpd/win32/SystemLibrary.h"

namespace quillpress::driver {

bool isProtectedModeProcess() {
  const SystemLibrary browser(kIEIsProtectedModeProcess.library);
  auto* const ask = browser.find(kIEIsProtectedModeProcess);
  BOOL isProtected = FALSE;
  return ask != nullptr && SUCCEEDED(ask(&isProtected)) && isProtected == TRUE;
}
}  // namespace quillpress::driver

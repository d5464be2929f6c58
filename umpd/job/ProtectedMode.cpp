#include "job/ProtectedMode.h"

#include "win32/FunctionsByName.h"
#include "win32/ShellFolders.h"

namespace quillpress {

bool isProtectedModeProcess() {
  const SystemLibrary browser(kIEIsProtectedModeProcess.library);
  auto* const ask = browser.find(kIEIsProtectedModeProcess);
  BOOL isProtected = FALSE;
  return ask != nullptr && SUCCEEDED(ask(&isProtected)) && isProtected == TRUE;
}

std::wstring virtualizedPath(std::wstring_view path) {
  return virtualizedPath(path, applicationDataFolder());
}

}  // namespace quillpress

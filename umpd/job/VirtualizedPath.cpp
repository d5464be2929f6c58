#include "umpd/job/VirtualizedPath.h"

#include "umpd/win32/Text.h"

namespace quillpress {

std::wstring virtualizedPath(std::wstring_view path, std::wstring_view applicationData) {
  if (applicationData.empty()) return {};
  std::wstring folder(applicationData);
  if (folder.size() >= 2 && folder[1] == L':') folder.erase(1, 1);
  std::wstring result(applicationData);
  result.append(L"\\Microsoft\\Windows\\Temporary Internet Files\\Virtualized\\").append(folder);
  if (!result.ends_with(L'\\')) result += L'\\';
  return result.append(lastComponent(path, L"\\"));
}

}  // namespace quillpress

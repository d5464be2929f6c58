#include "umpd/settings/DriverConfigFile.h"

#include "umpd/settings/DriverConfigText.h"
#include "umpd/win32/Handles.h"
#include "umpd/win32/SystemFolder.h"

namespace quillpress {

bool writeDriverConfigFile(const StringMap& settings) {
  const std::wstring folder = systemFolder();
  if (folder.empty()) return false;
  const std::wstring path = folder + L"\\twscfg.1";
  const FileHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return false;
  const std::wstring text = driverConfigText(settings);
  const DWORD size = static_cast<DWORD>(text.size()) * sizeof(wchar_t);
  DWORD written = 0;
  return WriteFile(file.get(), text.data(), size, &written, nullptr) != 0 && written == size;
}

}  // namespace quillpress

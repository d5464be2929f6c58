#include "umpd/output/FirstLine.h"

#include "umpd/win32/AnsiText.h"
#include "umpd/win32/Handles.h"

namespace quillpress {

std::optional<std::wstring> readFirstLine(const std::wstring& path, std::size_t bufferSize) {
  const FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return std::nullopt;
  std::string text(bufferSize - 1, '\0');
  DWORD size = 0;
  if (ReadFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &size, nullptr) == 0) size = 0;
  text.resize(size);
  return fromAnsi(firstLine(text));
}

}  // namespace quillpress

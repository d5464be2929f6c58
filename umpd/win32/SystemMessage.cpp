#include "umpd/win32/SystemMessage.h"

#include "umpd/win32/Handles.h"
#include "umpd/win32/Windows.h"

namespace quillpress {

std::wstring systemMessage(unsigned long errorCode) {
  wchar_t* text = nullptr;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
      errorCode, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  const LocalMemory owner(text);
  if (length == 0 || text == nullptr) return L"Error string not found";
  return {text, length};
}

}  // namespace quillpress

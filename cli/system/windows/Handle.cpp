#include "cli/system/windows/Handle.h"

#include <fcntl.h>
#include <io.h>

#include <cstdint>

#include "cli/system/windows/SystemError.h"

namespace quillpress::cli {

namespace {

int flagsOf(Access access) {
  constexpr int kUsual = _O_BINARY | _O_NOINHERIT;
  switch (access) {
    case Access::kReading:
      return kUsual | _O_RDONLY;
    case Access::kWriting:
      return kUsual | _O_RDWR;
    case Access::kAppending:
      return kUsual | _O_WRONLY | _O_APPEND;
  }
  return kUsual;
}

}  // namespace

HANDLE handleOf(const Descriptor& file) {
  return reinterpret_cast<HANDLE>(_get_osfhandle(file.get()));
}

Descriptor descriptorOf(Handle handle, Access access) {
  if (!handle) {
    takeSystemError();
    return {};
  }
  Descriptor file(_open_osfhandle(reinterpret_cast<std::intptr_t>(handle.get()), flagsOf(access)));
  if (file) static_cast<void>(handle.release());
  return file;
}

}  // namespace quillpress::cli

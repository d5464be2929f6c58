#include "umpd/job/OutFile.h"

namespace quillpress::driver {

bool OutFile::create(const std::wstring& path) {
  file_.reset(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                          FILE_ATTRIBUTE_NORMAL, nullptr));
  // A system that hands out no handle at all has not even tried.
  begun_ = file_.get() != nullptr;
  if (!begun_) static_cast<void>(file_.release());
  return isCreated();
}

bool OutFile::write(std::span<const std::byte> bytes) {
  const bool isReadable = bytes.data() != nullptr || bytes.empty();
  if (!file_ || !isReadable) return false;
  const auto size = static_cast<DWORD>(bytes.size());
  DWORD written = 0;
  return WriteFile(file_.get(), bytes.data(), size, &written, nullptr) != 0 && written == size;
}

void OutFile::close() {
  file_.reset();
  begun_ = false;
}

}  // namespace quillpress::driver

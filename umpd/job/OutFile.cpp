#include "umpd/job/OutFile.h"

namespace quillpress::driver {

bool OutFile::create(const std::wstring& path) {
  // Readers are let in, so that a viewer can follow a long job; a second writer would mix two documents.
  file_.reset(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                          FILE_ATTRIBUTE_NORMAL, nullptr));
  // A system that hands out no handle at all has not even tried.
  begun_ = file_.get() != nullptr;
  if (!begun_) static_cast<void>(file_.release());
  return isCreated();
}

bool OutFile::write(std::span<const std::byte> bytes) {
  // Whether Windows fails or faults on bytes that are not there differs between its versions, so it is not
  // asked.
  const bool isReadable = bytes.data() != nullptr || bytes.empty();
  if (!file_ || !isReadable) return false;
  const auto size = static_cast<DWORD>(bytes.size());
  DWORD written = 0;
  // A full disk or a quota writes a part and may still report success, so the count is held against the
  // block.
  return WriteFile(file_.get(), bytes.data(), size, &written, nullptr) != 0 && written == size;
}

void OutFile::close() {
  file_.reset();
  begun_ = false;
}

}  // namespace quillpress::driver

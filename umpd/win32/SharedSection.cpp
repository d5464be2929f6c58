#include "umpd/win32/SharedSection.h"

#include <utility>

#include "umpd/win32/SecurityAttributes.h"

namespace quillpress::driver {

SharedSection::SharedSection(std::wstring name, std::size_t size) : name_(std::move(name)), size_(size) {}

bool SharedSection::openOrCreate() {
  if (isOpen()) return true;
  section_.reset(OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, name_.c_str()));
  if (!section_) {
    SecurityAttributes security;
    section_.reset(CreateFileMappingW(INVALID_HANDLE_VALUE, security.get(), PAGE_READWRITE, 0,
                                      static_cast<DWORD>(size_), name_.c_str()));
  }
  if (section_ && map()) return true;
  section_.reset();
  return false;
}

bool SharedSection::map() {
  // All of it, whatever its size: what has come is looked at below.
  view_.reset(MapViewOfFile(section_.get(), FILE_MAP_ALL_ACCESS, 0, 0, 0));
  if (!view_) return false;
  if (isWritable()) return true;
  view_.reset();
  return false;
}

// Somebody else may have made the section: smaller, without memory behind it, or from a program's image,
// which can be mapped for writing and still not be written to.
bool SharedSection::isWritable() const {
  MEMORY_BASIC_INFORMATION information{};
  return VirtualQuery(view_.get(), &information, sizeof information) != 0 &&
         information.State == MEM_COMMIT && information.Type == MEM_MAPPED &&
         information.Protect == PAGE_READWRITE && information.RegionSize >= size_;
}

}  // namespace quillpress::driver

#include "tests/umpd/spooler/ControllerCache.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace quillpress::harness {

ControllerCache::ControllerCache(const std::wstring& name)
    : section_(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, kSize, name.c_str())),
      view_(MapViewOfFile(section_.get(), FILE_MAP_ALL_ACCESS, 0, 0, kSize)) {
  EXPECT_NE(view_, nullptr) << "error " << GetLastError();
}

ControllerCache::~ControllerCache() {
  UnmapViewOfFile(view_);
}

std::array<wchar_t, 260> ControllerCache::nameField() const {
  std::array<wchar_t, 260> field{};
  std::memcpy(field.data(), static_cast<const char*>(view_) + 2, sizeof field);
  return field;
}

std::wstring ControllerCache::name() const {
  const std::array<wchar_t, 260> field = nameField();
  return {field.begin(), std::find(field.begin(), field.end(), L'\0')};
}

void ControllerCache::setName(const std::wstring& name) {
  std::array<wchar_t, 260> field{};
  std::copy_n(name.begin(), std::min(name.size(), field.size()), field.begin());
  std::memcpy(static_cast<char*>(view_) + 2, field.data(), sizeof field);
}

bool ControllerCache::exists(const std::wstring& name) {
  return static_cast<bool>(Handle(OpenFileMappingW(FILE_MAP_READ, FALSE, name.c_str())));
}

}  // namespace quillpress::harness

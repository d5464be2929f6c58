#include "umpd/rules/StringMap.h"

#include <algorithm>

#include "umpd/rules/SettingText.h"
#include "umpd/rules/Text.h"

namespace quillpress::driver {
std::size_t StringMap::indexOf(std::wstring_view key) const {
  const Entry* entry =
      std::find_if(begin(), end(), [&](const Entry& each) { return equalsIgnoringCase(each.key, key); });
  return static_cast<std::size_t>(entry - begin());
}

const std::wstring* StringMap::find(std::wstring_view key) const {
  const std::size_t index = indexOf(key);
  return index == size_ ? nullptr : &entries_[index].value;
}

std::optional<int> StringMap::findInteger(std::wstring_view key) const {
  const std::wstring* value = find(key);
  if (value == nullptr) return std::nullopt;
  return toInteger(*value);
}

bool StringMap::set(std::wstring_view key, std::wstring_view value) {
  const std::size_t index = indexOf(key);
  // Only a new name needs room: of a full map the entries can still be changed.
  if (index == kCapacity) return false;
  if (index == size_) {
    entries_[index].key = key;
    ++size_;
  }
  entries_[index].value = value;
  return true;
}

bool StringMap::setInteger(std::wstring_view key, int value) {
  return set(key, std::to_wstring(value));
}

void StringMap::clear() {
  for (std::size_t i = 0; i < size_; ++i) entries_[i] = {};
  size_ = 0;
}
}  // namespace quillpress::driver

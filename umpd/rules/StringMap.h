#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillpress::driver {
// The settings of a printer by name, in the order in which they came. Names are compared without regard to
// the case of A-Z. There is room for kCapacity names and no more.
class StringMap {
 public:
  static constexpr std::size_t kCapacity = 190;

  struct Entry {
    std::wstring key;
    std::wstring value;
  };

  // Null when there is no such name. Valid until the map changes.
  [[nodiscard]] const std::wstring* find(std::wstring_view key) const;

  // The value as an integer (see toInteger); nothing when there is no such name.
  [[nodiscard]] std::optional<int> findInteger(std::wstring_view key) const;

  // Changes an entry or adds one. False when a new name finds the map full.
  [[nodiscard]] bool set(std::wstring_view key, std::wstring_view value);
  [[nodiscard]] bool setInteger(std::wstring_view key, int value);

  void clear();

  [[nodiscard]] std::size_t size() const { return size_; }
  [[nodiscard]] const Entry* begin() const { return entries_.data(); }
  [[nodiscard]] const Entry* end() const { return entries_.data() + size_; }

 private:
  // size() when there is no such name.
  [[nodiscard]] std::size_t indexOf(std::wstring_view key) const;

  std::array<Entry, kCapacity> entries_;
  std::size_t size_ = 0;
};
}  // namespace quillpress::driver

#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "tests/fuzz/support/Choices.h"

namespace quillpress::fuzz {

// Cuts a text into chunks in a way that follows from a number: single bytes, small chunks, large ones; now
// and then an empty one.
inline std::vector<std::string_view> cutInto(std::string_view text, std::uint8_t way) {
  constexpr std::size_t kBounds[] = {1, 3, 9, 64};
  const std::size_t bound = kBounds[way % 4];
  Dice dice(way);
  std::vector<std::string_view> chunks;
  while (!text.empty()) {
    if (dice.below(16) == 0) chunks.push_back(text.substr(0, 0));
    const std::size_t length = std::min(text.size(), 1 + dice.below(bound));
    chunks.push_back(text.substr(0, length));
    text.remove_prefix(length);
  }
  return chunks;
}

}  // namespace quillpress::fuzz

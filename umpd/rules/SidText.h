#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace quillpress::driver {

// A security identifier taken apart.
struct SecurityIdentifier {
  std::array<std::uint8_t, 6> authority{};  // most significant byte first
  std::span<const std::uint32_t> subAuthorities;
};

// The number of characters that is certainly enough for the text, its final zero included.
std::size_t sidTextSize(const SecurityIdentifier& sid);

// The identifier's text, "S-1-5-21-..."; nothing when `size` is less than sidTextSize.
std::optional<std::wstring> sidText(const SecurityIdentifier& sid, std::size_t size);

}  // namespace quillpress::driver

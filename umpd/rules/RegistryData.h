#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace quillpress::driver {

// What the bytes of a registry value mean. Any program may have written them.

// The kinds of values that settings have, as the system numbers them.
inline constexpr std::uint32_t kRegistryText = 1;
inline constexpr std::uint32_t kRegistryNumber = 4;

// The text up to its first zero, or to the end: programs store texts without a final zero, with several, or
// with half a character, which is left out.
std::wstring textOfRegistryBytes(std::span<const std::uint8_t> bytes);

// A number has exactly four bytes.
std::optional<int> numberOfRegistryBytes(std::span<const std::uint8_t> bytes);

// What a value reads as among the settings; nothing for kinds that settings do not have.
std::optional<std::wstring> settingOfRegistryValue(std::uint32_t kind, std::span<const std::uint8_t> bytes);

}  // namespace quillpress::driver

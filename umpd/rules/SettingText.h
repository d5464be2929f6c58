#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "umpd/rules/StringMap.h"

namespace quillpress::driver {
// The integer that a text begins with: an optional minus sign and digits. Without digits it is 0; beyond
// 32 bits it is the nearest integer there is.
int toInteger(std::wstring_view text);

// Whether the text consists of decimal digits, at least one.
bool isDecimalNumber(std::wstring_view text);

// A line NAME=VALUE of an ini file.
struct IniLine {
  std::wstring_view name;
  std::wstring_view value;
};

// The lines of a section as the system hands them over: texts that each end with a zero. Lines without
// "=", name or value are left out. The result refers into the texts.
std::vector<IniLine> parseIniSection(std::wstring_view texts);

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

// What the driver configuration file of NT 4.0 tells the rendering side: NAME=VALUE& for each setting that it
// wants, in the order of the map.
std::wstring driverConfigText(const StringMap& settings);
}  // namespace quillpress::driver

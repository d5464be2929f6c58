#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace quillpress::level3 {

// The strings that every CFF knows by number.
inline constexpr std::size_t kCffStandardStrings = 391;

// REQUIRES: number < kCffStandardStrings
std::string_view cffStandardString(std::size_t number);
std::optional<std::uint16_t> cffStandardStringNumber(std::string_view string);

// The charsets 0 to 2: ISOAdobe, Expert, ExpertSubset. A string number for each glyph.
std::vector<std::uint16_t> cffPredefinedCharset(unsigned number);

}  // namespace quillpress::level3

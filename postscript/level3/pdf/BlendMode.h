#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillpress::level3 {

// How colours meet those below them (ISO 32000-1, 11.3.5). The language itself has no other way than kNormal.
enum class BlendMode : std::uint8_t {
  kNormal,
  kMultiply,
  kScreen,
  kOverlay,
  kDarken,
  kLighten,
  kColorDodge,
  kColorBurn,
  kHardLight,
  kSoftLight,
  kDifference,
  kExclusion,
  kHue,
  kSaturation,
  kColor,
  kLuminosity,
};

// By the name that PDF has for it, with Compatible for kNormal.
std::optional<BlendMode> blendModeOf(std::string_view name);
std::string_view nameOf(BlendMode mode);

}  // namespace quillpress::level3

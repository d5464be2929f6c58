#include "postscript/level3/pdf/BlendMode.h"

#include <algorithm>
#include <array>

namespace quillpress::level3 {

namespace {

// In the order of the modes.
constexpr std::array<std::string_view, 16> kNames{
    "Normal",    "Multiply",  "Screen",     "Overlay",   "Darken", "Lighten",    "ColorDodge", "ColorBurn",
    "HardLight", "SoftLight", "Difference", "Exclusion", "Hue",    "Saturation", "Color",      "Luminosity"};

}  // namespace

std::optional<BlendMode> blendModeOf(std::string_view name) {
  if (name == "Compatible") return BlendMode::kNormal;
  const auto found = std::ranges::find(kNames, name);
  if (found == kNames.end()) return std::nullopt;
  return static_cast<BlendMode>(found - kNames.begin());
}

std::string_view nameOf(BlendMode mode) {
  return kNames[static_cast<std::size_t>(mode)];
}

}  // namespace quillpress::level3

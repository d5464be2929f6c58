#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace quillpress::level3 {

using Xyz = std::array<double, 3>;

// Profiles of version 2 in memory, always the same for the same arguments.

// One channel: `luminance` from black to white at even steps, 0 to 1.
std::string grayProfile(std::span<const double> luminance);

// Three channels: each has a curve (even steps, 0 to 1), and adds its colour to the others' light. `white` is
// what the colours are relative to.
std::string matrixProfile(const std::array<std::vector<double>, 3>& curves, const std::array<Xyz, 3>& colours,
                          const Xyz& white);

// Any number of channels up to four, sampled on a grid; `colourOf` gets channels from 0 to 1.
std::string sampledProfile(std::size_t channels, const Xyz& white,
                           const std::function<Xyz(std::span<const double>)>& colourOf);

}  // namespace quillpress::level3

#pragma once

#include <array>

#include "postscript/level3/colour/Colour.h"

namespace quillpress::level3 {

// Colours of one device space in terms of another, by the manual's rules. Other spaces give black, as they do
// for the operators that ask.
double grayOf(const Colour& colour);
std::array<double, 3> rgbOf(const Colour& colour);
std::array<double, 4> cmykOf(const Colour& colour);

// Hue, saturation and brightness, each from 0 to 1. Values out of range are taken as the nearest in range.
std::array<double, 3> rgbOfHsb(const std::array<double, 3>& hsb);
std::array<double, 3> hsbOfRgb(const std::array<double, 3>& rgb);

}  // namespace quillpress::level3

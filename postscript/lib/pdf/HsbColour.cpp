#include "postscript/lib/pdf/HsbColour.h"

#include <cmath>

namespace quillpress {

Rgb rgbOfHsb(double hue, double saturation, double brightness) {
  // Gray has no hue, and the one given may be anything.
  if (saturation == 0) return {brightness, brightness, brightness};
  // A full turn of the colour circle is where it began, in either direction.
  hue -= std::floor(hue);
  const double position = hue * 6;
  // An infinite hue has no sector; the conversion to an integer would be undefined.
  const int sector = std::isfinite(position) ? static_cast<int>(position) : 0;
  const double fraction = position - sector;
  const double low = brightness * (1 - saturation);
  const double falling = brightness * (1 - saturation * fraction);
  const double rising = brightness * (1 - saturation * (1 - fraction));
  switch (sector) {
    case 1:
      return {falling, brightness, low};
    case 2:
      return {low, brightness, rising};
    case 3:
      return {low, falling, brightness};
    case 4:
      return {rising, low, brightness};
    case 5:
      return {brightness, low, falling};
    default:
      return {brightness, rising, low};
  }
}

}  // namespace quillpress

#include "postscript/level3/colour/ColourConversion.h"

#include <algorithm>
#include <cmath>

namespace quillpress::level3 {

namespace {

using Kind = ColourSpace::Kind;

double value(const Colour& colour, std::size_t index) {
  return static_cast<double>(colour.components()[index]);
}

double lightness(double red, double green, double blue) {
  return 0.3 * red + 0.59 * green + 0.11 * blue;
}

}  // namespace

double grayOf(const Colour& colour) {
  switch (colour.space()->kind()) {
    case Kind::kDeviceGray:
      return value(colour, 0);
    case Kind::kDeviceRgb:
      return lightness(value(colour, 0), value(colour, 1), value(colour, 2));
    case Kind::kDeviceCmyk:
      return 1 - std::min(1.0,
                          lightness(value(colour, 0), value(colour, 1), value(colour, 2)) + value(colour, 3));
    default:
      return 0;
  }
}

std::array<double, 3> rgbOf(const Colour& colour) {
  switch (colour.space()->kind()) {
    case Kind::kDeviceGray:
      return {value(colour, 0), value(colour, 0), value(colour, 0)};
    case Kind::kDeviceRgb:
      return {value(colour, 0), value(colour, 1), value(colour, 2)};
    case Kind::kDeviceCmyk: {
      const double black = value(colour, 3);
      return {1 - std::min(1.0, value(colour, 0) + black), 1 - std::min(1.0, value(colour, 1) + black),
              1 - std::min(1.0, value(colour, 2) + black)};
    }
    default:
      return {0, 0, 0};
  }
}

std::array<double, 4> cmykOf(const Colour& colour) {
  switch (colour.space()->kind()) {
    case Kind::kDeviceGray:
      return {0, 0, 0, 1 - value(colour, 0)};
    case Kind::kDeviceRgb: {
      // All that three inks share is black, unless the job's own functions say otherwise.
      const double cyan = 1 - value(colour, 0);
      const double magenta = 1 - value(colour, 1);
      const double yellow = 1 - value(colour, 2);
      const double black = std::min({cyan, magenta, yellow});
      return {cyan - black, magenta - black, yellow - black, black};
    }
    case Kind::kDeviceCmyk:
      return {value(colour, 0), value(colour, 1), value(colour, 2), value(colour, 3)};
    default:
      return {0, 0, 0, 1};
  }
}

std::array<double, 3> rgbOfHsb(const std::array<double, 3>& hsb) {
  const double hue = std::clamp(hsb[0], 0.0, 1.0) * 6;
  const double saturation = std::clamp(hsb[1], 0.0, 1.0);
  const double brightness = std::clamp(hsb[2], 0.0, 1.0);
  const double sector = std::floor(hue);
  const double part = hue - sector;
  const double low = brightness * (1 - saturation);
  const double falling = brightness * (1 - saturation * part);
  const double rising = brightness * (1 - saturation * (1 - part));
  switch (static_cast<int>(sector) % 6) {
    case 0:
      return {brightness, rising, low};
    case 1:
      return {falling, brightness, low};
    case 2:
      return {low, brightness, rising};
    case 3:
      return {low, falling, brightness};
    case 4:
      return {rising, low, brightness};
    default:
      return {brightness, low, falling};
  }
}

std::array<double, 3> hsbOfRgb(const std::array<double, 3>& rgb) {
  const double most = std::max({rgb[0], rgb[1], rgb[2]});
  const double least = std::min({rgb[0], rgb[1], rgb[2]});
  const double spread = most - least;
  if (spread == 0) return {0, 0, most};
  double hue = 0;
  if (most == rgb[0]) {
    hue = (rgb[1] - rgb[2]) / spread;
  } else if (most == rgb[1]) {
    hue = 2 + (rgb[2] - rgb[0]) / spread;
  } else {
    hue = 4 + (rgb[0] - rgb[1]) / spread;
  }
  hue /= 6;
  return {hue < 0 ? hue + 1 : hue, spread / most, most};
}

}  // namespace quillpress::level3

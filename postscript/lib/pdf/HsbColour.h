#pragma once

namespace quillpress {

struct Rgb {
  double red = 0;
  double green = 0;
  double blue = 0;
};

// The hexcone conversion; a hue outside 0 to 1 is brought into it by whole turns.
Rgb rgbOfHsb(double hue, double saturation, double brightness);

}  // namespace quillpress

#include "postscript/lib/pdf/GraphicsState.h"

#include "postscript/lib/base/Ex.h"

namespace quillpress {

// HSB has three as well: its images are taken for RGB where they ask for a count.
std::int32_t componentCount(ColourSpace space) {
  switch (space) {
    case ColourSpace::kRgb:
    case ColourSpace::kHsb:
      return 3;
    case ColourSpace::kCmyk:
      return 4;
    case ColourSpace::kGray:
      return 1;
    case ColourSpace::kUnknown:
      break;
  }
  THROW_EX("unsupported colorspace");
}

// An HSB image has no name in PDF; its samples would have to be converted.
ImageColourSpaceNames imageColourSpaceNames(ColourSpace space) {
  switch (space) {
    case ColourSpace::kRgb:
      return {"DeviceRGB", "RGB"};
    case ColourSpace::kCmyk:
      return {"DeviceCMYK", "CMYK"};
    case ColourSpace::kGray:
      return {"DeviceGray", "G"};
    case ColourSpace::kHsb:
    case ColourSpace::kUnknown:
      break;
  }
  THROW_EX("unsupported colorspace for images");
}

}  // namespace quillpress

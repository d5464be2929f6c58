#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "postscript/lib/objects/Matrix.h"
#include "postscript/lib/pdf/CurrentPath.h"

namespace quillpress {

// How the colour components are meant. The numbers are a contract.
enum class ColourSpace : std::int32_t {
  kUnknown = -1,  // images only: the current graphics state's
  kRgb = 0,
  kHsb = 1,
  kCmyk = 2,
  kGray = 3,
};

// What gsave keeps and grestore brings back. It shadows the graphics state of the PDF viewer: coordinates
// are written in current user space, and the viewer applies the same matrices.
struct GraphicsState {
  CurrentPath path;
  double lineWidth = 0;
  Matrix ctm;
  std::string fontName = "Helvetica";  // tracked for the day when text is drawn
  double fontSize = 12.0;
  ColourSpace colourSpace = ColourSpace::kGray;
  std::array<double, 4> colour{};
};

// The number of components of a sample: 3 for RGB and HSB, 4 for CMYK, 1 for gray. Throws Ex for other
// codes.
std::int32_t componentCount(ColourSpace space);

// The names by which images call a colour space. Throws Ex for HSB and unknown codes.
struct ImageColourSpaceNames {
  std::string_view full;          // for an image XObject
  std::string_view abbreviation;  // for an inline image
};
ImageColourSpaceNames imageColourSpaceNames(ColourSpace space);

}  // namespace quillpress

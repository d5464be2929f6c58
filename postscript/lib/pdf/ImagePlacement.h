#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "postscript/lib/pdf/GraphicsState.h"

namespace quillpress {

class Postscript2Pdf;

// Sample data longer than this becomes an image XObject, unless a pattern is being captured.
inline constexpr std::size_t kInlineImageLimit = 4000;

// An image whose data is complete. The data is as the job held it: still encoded when filters are named.
struct ImageSamples {
  std::int32_t width = 0;   // samples per row
  std::int32_t height = 0;  // rows
  std::int32_t bitsPerComponent = 0;
  ColourSpace colourSpace = ColourSpace::kUnknown;  // kUnknown: the current graphics state's
  std::string filterText;                           // the PDF filter clause; empty for plain data
  std::string data;
};

// Writes an image into the page content: inline, or as the name of an image object, which an earlier image
// with the same data may have made. The image fills the unit square of user space.
void placeImage(Postscript2Pdf& converter, ImageSamples image);

// "/Filter [ /A /B] " and a blank; empty without filters.
std::string imageFilterText(const std::vector<std::string>& filters);

}  // namespace quillpress

#include "postscript/level3/images/InlineImage.h"

#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

// The short name of a device's space; empty for any other.
std::string_view shortName(std::string_view colourSpace) {
  if (colourSpace == "/DeviceGray") return "/G";
  if (colourSpace == "/DeviceRGB") return "/RGB";
  if (colourSpace == "/DeviceCMYK") return "/CMYK";
  return {};
}

}  // namespace

bool canBeInline(const ImageDescription& description) {
  return description.mask == 0 && description.colourKey.empty() && description.layout.bits <= 8 &&
         (description.isStencil || !shortName(description.colourSpace).empty());
}

bool isWithin(const ImageLayout& layout, std::size_t bytes) {
  return layout.rowBytes() <= bytes && layout.rowBytes() * static_cast<std::size_t>(layout.height) <= bytes;
}

std::optional<std::string> inlineImage(const ImageDescription& description, std::string_view data,
                                       std::string_view filter) {
  if (data.find("EI") != std::string_view::npos) return std::nullopt;
  const ImageLayout& layout = description.layout;
  std::string text = "BI/W ";
  appendInteger(text, layout.width);
  text += "/H ";
  appendInteger(text, layout.height);
  if (description.isStencil) {
    text += "/IM true";
  } else {
    text += "/CS";
    text += shortName(description.colourSpace);
    text += "/BPC ";
    appendInteger(text, layout.bits);
  }
  if (!description.decode.empty()) text += "/D" + description.decodeText();
  if (description.interpolate) text += "/I true";
  text += filter;
  text += " ID ";
  text += data;
  text += "\nEI\n";
  return text;
}

}  // namespace quillpress::level3

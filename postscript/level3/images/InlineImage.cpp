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

bool canBeInline(const ImageDescription& description, std::size_t mostBytes) {
  const ImageLayout& layout = description.layout;
  const bool isPlain = description.mask == 0 && description.colourKey.empty() && layout.bits <= 8 &&
                       (description.isStencil || !shortName(description.colourSpace).empty());
  return isPlain && layout.rowBytes() <= mostBytes &&
         layout.rowBytes() * static_cast<std::size_t>(layout.height) <= mostBytes;
}

std::optional<std::string> inlineImage(const ImageDescription& description, std::string_view data) {
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
  text += " ID ";
  text += data;
  text += "\nEI\n";
  return text;
}

}  // namespace quillpress::level3

#pragma once

#include <optional>
#include <string>

#include "postscript/level3/images/ImageObject.h"

namespace quillpress::level3 {

// Whether an image may stand in the content that draws it, with no more than so many bytes of data: a stencil
// or one in a device's colours, without anything that takes an object.
bool canBeInline(const ImageDescription& description, std::size_t mostBytes);

// "BI" to "EI" with the rows as they are; the content is compressed as a whole. Nothing when a reader that
// looks for the end could find one in the data.
std::optional<std::string> inlineImage(const ImageDescription& description, std::string_view data);

}  // namespace quillpress::level3

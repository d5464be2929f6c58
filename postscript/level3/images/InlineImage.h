#pragma once

#include <optional>
#include <string>

#include "postscript/level3/images/ImageObject.h"

namespace quillpress::level3 {

// Whether an image may stand in the content that draws it: a stencil or one in a device's colours, without
// anything that takes an object.
bool canBeInline(const ImageDescription& description);
// Whether its rows, as they are, have no more than so many bytes.
bool isWithin(const ImageLayout& layout, std::size_t bytes);

// "BI" to "EI" with the data as it is: rows, which are compressed with the content as a whole, or what
// `filter` says, in the short words of inline images. Nothing when a reader that looks for the end could find
// one in the data.
std::optional<std::string> inlineImage(const ImageDescription& description, std::string_view data,
                                       std::string_view filter = {});

}  // namespace quillpress::level3

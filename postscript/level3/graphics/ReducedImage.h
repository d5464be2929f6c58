#pragma once

#include <optional>
#include <vector>

#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/images/ImageObject.h"
#include "postscript/level3/streams/DctFilter.h"

namespace quillpress::level3 {

// Writes an image with the pixels and the quality that Graphics::images() asks for. Nothing has been read
// when nothing comes back: the image is to stay as it is. `place` is the image's square in device space,
// `jpeg` the only source when that is a decoder of JPEG data, else null: data that would not become shorter
// stays byte for byte. The height of the result is that of the data that came.
std::optional<WrittenImage> writeReduced(Graphics& graphics, const ImageDescription& description,
                                         const std::vector<SourcePointer>& sources, DctDecoder* jpeg,
                                         const Matrix& place);

}  // namespace quillpress::level3

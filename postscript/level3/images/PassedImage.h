#pragma once

#include "postscript/level3/images/ImageObject.h"
#include "postscript/level3/streams/CcittFilter.h"
#include "postscript/level3/streams/DctFilter.h"

namespace quillpress::level3 {

// Images whose compressed data PDF takes as it is: it is copied byte for byte, and nothing is lost by
// compressing it again. The decoder has not been read from; it is read to its end.

// Data that turns out to be of another shape than the description is decoded after all.
WrittenImage passJpeg(PdfFile& file, const ImageDescription& description, DctDecoder& decoder);
// The data alone, for a decoder that begins with it again.
std::vector<Byte> takeJpeg(DctDecoder& decoder);
bool canPassJpeg(const ImageDescription& description);

// Inline when it may be and has no more than so many bytes of data.
WrittenImage passFax(PdfFile& file, const ImageDescription& description, CcittDecoder& decoder,
                     std::size_t mostInlineBytes);
bool canPassFax(const ImageDescription& description, const CcittParameters& parameters);

}  // namespace quillpress::level3

#pragma once

#include <cstddef>

#include "postscript/level3/images/ImageObject.h"

namespace quillpress::level3 {

// Writes an image as JPEG data of a quality from 1 to 100, or compressed without loss where that is shorter:
// pictures of few colours, whose edges JPEG would blur. Both are held in memory. Nothing is written when no
// rows come, or when both take as much as `limit` bytes. REQUIRES: canBeLossy(description)
WrittenImage writeLossyImage(PdfFile& file, const ImageDescription& description, const RowReader& nextRow,
                             int quality, std::size_t limit);
bool canBeLossy(const ImageDescription& description);

}  // namespace quillpress::level3

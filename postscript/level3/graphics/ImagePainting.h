#pragma once

#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/graphics/ImageParameters.h"

namespace quillpress::level3 {

// Each reads the data that it needs, also when nothing of the image can be seen, and paints what has come.

// An image in a colour space. Throws rangecheck for a pattern space.
void paintImage(Graphics& graphics, const ImageParameters& parameters, const ColourSpacePointer& space);
// Paints the current colour where the samples say so.
void paintStencil(Graphics& graphics, const ImageParameters& parameters);

// An image of type 3: where `mask` says so, nothing is painted. Its interleaving is
// 1 by samples, 2 by rows, 3 for data of its own.
void paintMaskedImage(Graphics& graphics, const ImageParameters& image, const ImageParameters& mask,
                      int interleave, const ColourSpacePointer& space);

}  // namespace quillpress::level3

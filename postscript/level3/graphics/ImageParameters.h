#pragma once

#include <span>
#include <vector>

#include "postscript/level3/geometry/Matrix.h"
#include "postscript/level3/graphics/DictionaryReader.h"
#include "postscript/level3/images/ImageLayout.h"
#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// What an image operator has been told, by its operands or by a dictionary.
struct ImageParameters {
  ImageLayout layout;
  Matrix toImage;              // user space to image space
  std::vector<double> decode;  // two for each component; empty for the usual
  bool interpolate = false;
  std::vector<Object> sources;      // one, or one for each component
  std::vector<unsigned> colourKey;  // two for each component; empty when all is painted
};

// The entries that all image dictionaries have. Throw undefined, typecheck, rangecheck, invalidaccess.
ImageParameters readImageDictionary(Interpreter& interpreter, const Object& dictionary, int components);
// One without a data source of its own, because its data comes with another image's.
ImageParameters readSourcelessDictionary(Interpreter& interpreter, const Object& dictionary, int components);

// Width and height. Throw rangecheck for what is negative, limitcheck for what nobody can draw.
ImageLayout imageLayout(std::int64_t width, std::int64_t height, int components, std::int64_t bits);

// Files, strings or procedures, all of one kind. Throws typecheck, invalidaccess.
void requireImageSources(std::span<const Object> sources);

}  // namespace quillpress::level3

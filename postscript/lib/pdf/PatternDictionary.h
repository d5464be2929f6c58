#pragma once

#include <string>

#include "postscript/lib/objects/DictionaryObject.h"
#include "postscript/lib/objects/Matrix.h"

namespace quillpress {

// The number under a key of a pattern dictionary. Throws Ex when there is none.
double patternNumber(const DictionaryObject& dictionary, std::string_view key);

// The dictionary text of a pattern object. Throws Ex for a pattern dictionary without a BBox array.
std::string patternDictionaryText(const DictionaryObject& dictionary, const Matrix& matrix);

}  // namespace quillpress

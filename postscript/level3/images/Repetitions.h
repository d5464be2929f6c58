#pragma once

#include "postscript/level3/streams/Stream.h"

namespace quillpress::level3 {

// Whether searching the bytes for repetitions promises anything beyond runs of the same byte: what a
// predictor leaves of a drawing is full of them, what it leaves of a photograph is not, and is best written
// with short codes for frequent bytes and nothing else. REQUIRES: less than 64 KB
bool holdsRepetitions(Bytes bytes);

}  // namespace quillpress::level3

#pragma once

#include "postscript/lib/objects/PostscriptObject.h"

namespace quillpress {

// Copies the elements, entries or bytes of one composite into another of the same kind. Throws Ex when
// the kinds differ, are no composites, or when the destination is too short.
void copyComposite(const PostscriptObject& source, PostscriptObject& destination);

}  // namespace quillpress

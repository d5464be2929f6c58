#include "postscript/lib/objects/CompositeObject.h"

namespace quillpress {

// Another handle on the payload: it has its own flag, but it is not the payload's owner.
CompositeObject::CompositeObject(const CompositeObject& other)
    : PostscriptObject(other.typeCode), memoryArea_(other.memoryArea_), payload_(other.payload_) {
  executable = other.executable;
}

}  // namespace quillpress

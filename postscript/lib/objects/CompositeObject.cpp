#include "postscript/lib/objects/CompositeObject.h"

#include "postscript/lib/objects/VirtualMemoryObject.h"

namespace quillpress {

// The area owns the payload from the first moment, so that a handle can be given up at any time.
CompositeObject::CompositeObject(VirtualMemoryObject& memoryArea, std::unique_ptr<CompositeData> payload)
    : PostscriptObject(payload->typeCode), memoryArea_(&memoryArea), payload_(payload.get()) {
  memoryArea.add(std::move(payload));
}

// Another handle on the payload: it has its own flag, but it is not the payload's owner.
CompositeObject::CompositeObject(const CompositeObject& other)
    : PostscriptObject(other.typeCode), memoryArea_(other.memoryArea_), payload_(other.payload_) {
  executable = other.executable;
}

}  // namespace quillpress

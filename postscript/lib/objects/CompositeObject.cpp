#include "postscript/lib/objects/CompositeObject.h"

#include "postscript/lib/objects/VirtualMemoryObject.h"

namespace quillpress {

CompositeObject::CompositeObject(VirtualMemoryObject& memoryArea, std::unique_ptr<CompositeData> payload)
    : PostscriptObject(payload->typeCode), memoryArea_(&memoryArea), payload_(payload.get()) {
  memoryArea.add(std::move(payload));
}

CompositeObject::CompositeObject(const CompositeObject& other)
    : PostscriptObject(other.typeCode), memoryArea_(other.memoryArea_), payload_(other.payload_) {
  executable = other.executable;
}

}  // namespace quillpress

#include "postscript/lib/objects/CompositeObject.h"

#include "postscript/lib/objects/VirtualMemoryObject.h"

namespace quillpress {

CompositeObject::CompositeObject(VirtualMemoryObject& memoryArea, std::unique_ptr<CompositeData> payload)
    : PostscriptObject(payload->typeCode),
      memoryArea_(&memoryArea),
      payload_(payload.get()),
      payloadIndex_(memoryArea.add(std::move(payload))) {}

CompositeObject::CompositeObject(const CompositeObject& other)
    : PostscriptObject(other.typeCode),
      memoryArea_(other.memoryArea_),
      payload_(other.payload_),
      payloadIndex_(other.payloadIndex_) {
  executable = other.executable;
}

}  // namespace quillpress

#pragma once

#include <memory>

#include "postscript/lib/objects/CompositeData.h"
#include "postscript/lib/objects/Ref.h"

namespace quillpress {

class VirtualMemoryObject;

// A handle on a shared payload. Deleting the last handle leaves the payload with its memory area, so a
// handle must not be followed after its area has gone.
class CompositeObject : public PostscriptObject {
 public:
  // Registers the payload with the area, which takes it over.
  CompositeObject(VirtualMemoryObject& memoryArea, std::unique_ptr<CompositeData> payload);

  // Another handle on the same payload, with the same executable flag.
  CompositeObject(const CompositeObject& other);
  CompositeObject& operator=(const CompositeObject&) = delete;

  [[nodiscard]] VirtualMemoryObject& memoryArea() const { return *memoryArea_; }

  // Whether two handles share one payload.
  [[nodiscard]] bool sharesPayloadWith(const CompositeObject& other) const {
    return payload_ == other.payload_;
  }

 protected:
  [[nodiscard]] CompositeData& payload() const { return *payload_; }

 private:
  VirtualMemoryObject* memoryArea_;
  CompositeData* payload_;
};

}  // namespace quillpress

#pragma once

#include "postscript/lib/objects/Ref.h"

namespace quillpress {

class VirtualMemoryObject;

// The value that several handles share. It belongs to the memory area in which it was made and lives as
// long as that area, however many handles come and go.
class CompositeData {
 public:
  explicit CompositeData(TypeCode code) : typeCode(code) {}
  CompositeData(const CompositeData&) = delete;
  CompositeData& operator=(const CompositeData&) = delete;
  virtual ~CompositeData() = default;

 private:
  friend class VirtualMemoryObject;

  CompositeData* madeBefore_ = nullptr;  // in the same area

 public:
  const TypeCode typeCode;  // last, since what is derived may use the space behind it
};

// A handle on a shared payload. Deleting the last handle leaves the payload with its memory area, so a
// handle must not be followed after its area has gone.
class CompositeObject : public PostscriptObject {
 public:
  // REQUIRES: the payload is one of the area's.
  CompositeObject(VirtualMemoryObject& memoryArea, CompositeData& payload)
      : PostscriptObject(payload.typeCode), memoryArea_(&memoryArea), payload_(&payload) {}

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

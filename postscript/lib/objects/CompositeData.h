#pragma once

#include "postscript/lib/objects/TypeCode.h"

namespace quillpress {

// The value that several handles share. It belongs to the memory area in which it was made and lives as
// long as that area, however many handles come and go.
class CompositeData {
 public:
  explicit CompositeData(TypeCode code) : typeCode(code) {}
  CompositeData(const CompositeData&) = delete;
  CompositeData& operator=(const CompositeData&) = delete;
  virtual ~CompositeData() = default;

  const TypeCode typeCode;
};

}  // namespace quillpress

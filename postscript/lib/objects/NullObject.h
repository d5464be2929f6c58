#pragma once

#include "postscript/lib/objects/Ref.h"

namespace quillpress {

// The value of an array's fresh slots.
class NullObject final : public PostscriptObject {
 public:
  static constexpr TypeCode kTypeCode = TypeCode::kNull;

  NullObject() : PostscriptObject(kTypeCode) {}

  [[nodiscard]] std::string printString() const override;
  [[nodiscard]] Ref<PostscriptObject> clone(int argument) const override;
};

}  // namespace quillpress

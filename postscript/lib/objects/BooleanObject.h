#pragma once

#include "postscript/lib/objects/Ref.h"

namespace quillpress {

class BooleanObject final : public PostscriptObject {
 public:
  static constexpr TypeCode kTypeCode = TypeCode::kBoolean;

  explicit BooleanObject(bool initial) : PostscriptObject(kTypeCode), value(initial) {}

  [[nodiscard]] std::string describe() const override;
  [[nodiscard]] std::string printString() const override;
  [[nodiscard]] std::string cvsString() const override;
  [[nodiscard]] Ref<PostscriptObject> clone(int argument) const override;

  const bool value;
};

}  // namespace quillpress

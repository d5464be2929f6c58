#pragma once

#include "postscript/lib/objects/Ref.h"

namespace quillpress {

// A signed 32-bit number. Arithmetic on it wraps, it never becomes a real.
class IntegerObject final : public PostscriptObject {
 public:
  static constexpr TypeCode kTypeCode = TypeCode::kInteger;

  explicit IntegerObject(std::int32_t initial) : PostscriptObject(kTypeCode), value(initial) {
    executable = false;
  }

  [[nodiscard]] std::string describe() const override;
  [[nodiscard]] std::string printString() const override;
  [[nodiscard]] std::string cvsString() const override;
  [[nodiscard]] Ref<PostscriptObject> clone(int argument) const override;

  // Adds an integer, or a real truncated toward zero, in place. Throws Ex for any other kind.
  void add(const PostscriptObject& summand);

  std::int32_t value;
};

}  // namespace quillpress

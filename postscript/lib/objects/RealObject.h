#pragma once

#include "postscript/lib/objects/Ref.h"

namespace quillpress {

// A 64-bit IEEE number.
class RealObject final : public PostscriptObject {
 public:
  static constexpr TypeCode kTypeCode = TypeCode::kReal;

  explicit RealObject(double initial) : PostscriptObject(kTypeCode), value(initial) { executable = false; }

  // Kept: a real has no cvsString of its own, so cvs of a real stores "--nostringval--" (conversion/cvs.ps).
  [[nodiscard]] std::string describe() const override;
  [[nodiscard]] std::string printString() const override;
  [[nodiscard]] Ref<PostscriptObject> clone(int argument) const override;

  // Adds an integer or a real in place. Throws Ex for any other kind.
  void add(const PostscriptObject& summand);

  double value;
};

}  // namespace quillpress

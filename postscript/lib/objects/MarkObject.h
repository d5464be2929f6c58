#pragma once

#include "postscript/lib/objects/Ref.h"

namespace quillpress {

// Where ] and cleartomark stop.
class MarkObject final : public PostscriptObject {
 public:
  static constexpr TypeCode kTypeCode = TypeCode::kMark;

  MarkObject() : PostscriptObject(kTypeCode) {}

  // Kept: a mark that is executed does nothing at all
  // (PostscriptObjectTest.ExecutingAMarkLeavesEveryStackUnchanged).
  void execute(Interpreter& interpreter) override;
  [[nodiscard]] std::string printString() const override;
  [[nodiscard]] Ref<PostscriptObject> clone(int argument) const override;
};

}  // namespace quillpress

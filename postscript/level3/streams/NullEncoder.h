#pragma once

#include "postscript/level3/streams/Filter.h"

namespace quillpress::level3 {

// Passes data on as it is: a buffer over its target.
class NullEncoder final : public Encoder {
 public:
  explicit NullEncoder(SinkPointer target, FilterClosing closing = FilterClosing::kFilterOnly)
      : Encoder(std::move(target), closing) {}

 private:
  void encode(Bytes bytes) override { emit(bytes); }
};

}  // namespace quillpress::level3

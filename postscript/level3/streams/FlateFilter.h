#pragma once

#include <zlib.h>

#include "postscript/level3/streams/Filter.h"

namespace quillpress::level3 {

class FlateDecoder final : public Decoder {
 public:
  explicit FlateDecoder(SourcePointer source, FilterClosing closing = FilterClosing::kFilterOnly);
  ~FlateDecoder() override;

 private:
  Progress decode(Bytes input, std::span<Byte> output) override;

  z_stream stream_{};
};

class FlateEncoder final : public Encoder {
 public:
  static constexpr int kDefaultEffort = -1;

  // `effort`: from 0, no compression, to 9; or kDefaultEffort.
  explicit FlateEncoder(SinkPointer target, int effort = kDefaultEffort,
                        FilterClosing closing = FilterClosing::kFilterOnly);
  ~FlateEncoder() override;

 private:
  void encode(Bytes bytes) override { compress(bytes, Z_NO_FLUSH); }
  void encodeEnd() override { compress({}, Z_FINISH); }
  void compress(Bytes bytes, int flush);

  z_stream stream_{};
};

}  // namespace quillpress::level3

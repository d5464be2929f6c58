#pragma once

#include "postscript/level3/streams/Filter.h"

namespace quillpress::level3 {

class AsciiHexDecoder final : public Decoder {
 public:
  explicit AsciiHexDecoder(SourcePointer source, FilterClosing closing = FilterClosing::kFilterOnly)
      : Decoder(std::move(source), closing) {}

 private:
  Progress decode(Bytes input, std::span<Byte> output) override;
  std::size_t decodeEnd(std::span<Byte> output) override;

  static constexpr int kNone = -1;
  int firstDigit_ = kNone;
};

class AsciiHexEncoder final : public Encoder {
 public:
  explicit AsciiHexEncoder(SinkPointer target, FilterClosing closing = FilterClosing::kFilterOnly)
      : Encoder(std::move(target), closing) {}

 private:
  void encode(Bytes bytes) override;
  void encodeEnd() override { emit('>'); }

  int column_ = 0;
};

}  // namespace quillpress::level3

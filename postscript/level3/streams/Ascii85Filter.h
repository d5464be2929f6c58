#pragma once

#include <array>

#include "postscript/level3/streams/Filter.h"

namespace quillpress::level3 {

class Ascii85Decoder final : public Decoder {
 public:
  explicit Ascii85Decoder(SourcePointer source, FilterClosing closing = FilterClosing::kFilterOnly)
      : Decoder(std::move(source), closing) {}

 private:
  Progress decode(Bytes input, std::span<Byte> output) override;
  std::size_t decodeEnd(std::span<Byte> output) override;
  bool decodeGroups(Bytes input, std::span<Byte> output, Progress& step);
  bool takeByte(Byte byte, std::span<Byte> output, Progress& step);
  std::size_t deliverGroup(std::span<Byte> output, int bytes);

  std::uint64_t group_ = 0;  // value of the digits so far
  int digits_ = 0;
  bool sawTilde_ = false;
};

class Ascii85Encoder final : public Encoder {
 public:
  explicit Ascii85Encoder(SinkPointer target, FilterClosing closing = FilterClosing::kFilterOnly)
      : Encoder(std::move(target), closing) {}

 private:
  void encode(Bytes bytes) override;
  void encodeEnd() override;
  void emitGroup(std::uint32_t group, int digits);
  void emitOnLine(Bytes bytes);

  std::uint32_t group_ = 0;
  int bytes_ = 0;
  std::size_t column_ = 0;
};

}  // namespace quillpress::level3

#pragma once

#include <vector>

#include "postscript/level3/streams/Filter.h"

namespace quillpress::level3 {

class RunLengthDecoder final : public Decoder {
 public:
  explicit RunLengthDecoder(SourcePointer source, FilterClosing closing = FilterClosing::kFilterOnly)
      : Decoder(std::move(source), closing) {}

 private:
  Progress decode(Bytes input, std::span<Byte> output) override;

  enum class Expects { kLength, kRepeatedByte, kLiterals, kRoom };
  void takeLength(Byte length);

  Expects expects_ = Expects::kLength;
  std::size_t left_ = 0;  // bytes of the run to be delivered
  Byte repeated_ = 0;
};

class RunLengthEncoder final : public Encoder {
 public:
  // No run reaches over a multiple of `recordSize` bytes; 0 is one record for all.
  RunLengthEncoder(SinkPointer target, std::size_t recordSize,
                   FilterClosing closing = FilterClosing::kFilterOnly)
      : Encoder(std::move(target), closing), recordSize_(recordSize), leftInRecord_(recordSize) {}

 private:
  void encode(Bytes bytes) override;
  void encodeFlush() override { flushRun(); }
  void encodeEnd() override;
  void takeByte(Byte byte);
  void flushLiterals();
  void flushRun();

  std::size_t recordSize_;
  std::size_t leftInRecord_;
  std::vector<Byte> literals_;  // not yet written, in front of the run
  Byte repeated_ = 0;
  std::size_t repeats_ = 0;
};

}  // namespace quillpress::level3

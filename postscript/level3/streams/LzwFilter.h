#pragma once

#include <array>
#include <vector>

#include "postscript/level3/streams/Filter.h"

namespace quillpress::level3 {

struct LzwParameters {
  bool earlyChange = true;   // codes grow longer one code before they must
  int unitLength = 8;        // bits of a unit, 3 to 8; a unit is a byte of the decoded data
  bool lowBitFirst = false;  // codes fill bytes from the low bit, as in GIF
};

// Lengths and reserved values of the codes that follow from the parameters.
class LzwCodes {
 public:
  static constexpr unsigned kLimit = 4096;

  explicit LzwCodes(const LzwParameters& parameters)
      : clear_(1U << parameters.unitLength), early_(parameters.earlyChange ? 1 : 0) {}

  [[nodiscard]] unsigned clear() const { return clear_; }
  [[nodiscard]] unsigned endOfData() const { return clear_ + 1; }
  [[nodiscard]] unsigned first() const { return clear_ + 2; }

  // The length of a code that is read or written while `next` is the first one not yet in the table.
  [[nodiscard]] int lengthBefore(unsigned next) const;

 private:
  unsigned clear_;
  unsigned early_;
};

class LzwDecoder final : public Decoder {
 public:
  LzwDecoder(SourcePointer source, const LzwParameters& parameters,
             FilterClosing closing = FilterClosing::kFilterOnly);

 private:
  Progress decode(Bytes input, std::span<Byte> output) override;
  bool fillBits(Bytes input, std::size_t& consumed);
  unsigned takeCode();
  void interpret(unsigned code);
  void deliver(unsigned code);
  void clearTable();

  struct Entry {
    std::uint16_t prefix = 0;
    std::uint16_t length = 0;
    Byte last = 0;
    Byte first = 0;
  };

  LzwCodes codes_;
  bool lowBitFirst_;
  std::vector<Entry> table_;
  unsigned next_ = 0;
  int codeLength_ = 0;
  unsigned previous_ = LzwCodes::kLimit;  // kLimit: none since the table was cleared
  std::uint32_t bits_ = 0;
  int bitCount_ = 0;
  std::array<Byte, LzwCodes::kLimit> string_{};  // of the last code
  std::size_t stringStart_ = LzwCodes::kLimit;   // what of it is still to be delivered
};

class LzwEncoder final : public Encoder {
 public:
  LzwEncoder(SinkPointer target, const LzwParameters& parameters,
             FilterClosing closing = FilterClosing::kFilterOnly);

 private:
  void encode(Bytes bytes) override;
  void encodeEnd() override;
  void takeUnit(Byte unit);
  void emitCode(unsigned code);
  void emitString();
  void clearTable();

  LzwCodes codes_;
  bool lowBitFirst_;
  Byte unitMask_;
  // Hash table of a string's code and the unit behind it: key + 1 above, code below, 0 for a free place.
  std::vector<std::uint64_t> table_;
  unsigned next_ = 0;
  unsigned string_ = LzwCodes::kLimit;  // kLimit: none yet
  std::uint32_t bits_ = 0;
  int bitCount_ = 0;
};

}  // namespace quillpress::level3

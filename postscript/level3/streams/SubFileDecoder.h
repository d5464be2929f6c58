#pragma once

#include <string>
#include <vector>

#include "postscript/level3/streams/Filter.h"

namespace quillpress::level3 {

// A piece of another source, up to a text or of a length.
//
// With a text: a count of 0 ends in front of its first occurrence, which is consumed but not delivered; a
// count of n delivers up to and with the n-th. Without one: so many bytes, and with a count of 0 all of them.
class SubFileDecoder final : public Decoder {
 public:
  SubFileDecoder(SourcePointer source, std::uint64_t count, std::string_view endText,
                 FilterClosing closing = FilterClosing::kFilterOnly);

 private:
  Progress decode(Bytes input, std::span<Byte> output) override;
  std::size_t decodeEnd(std::span<Byte> output) override;
  [[nodiscard]] bool endsWithItsSource() const override { return count_ == 0 && endText_.empty(); }
  Progress decodeCounted(Bytes input, std::span<Byte> output);
  Progress decodePassing(Bytes input, std::span<Byte> output);
  Progress decodeWithholding(Bytes input, std::span<Byte> output);
  bool fallBack(Byte byte);
  std::size_t deliverHeld(std::span<Byte> output);
  void skipTo(Byte first, Bytes input, std::span<Byte> output, Progress& step) const;

  std::uint64_t count_;
  std::vector<Byte> endText_;
  // For each length of a match that fails: the length of the longest shorter one that it ends with.
  std::vector<std::size_t> shorterMatch_;
  std::size_t matched_ = 0;
  // Bytes from the start of endText_ that have turned out to be data.
  std::size_t heldFrom_ = 0;
  std::size_t heldTo_ = 0;
};

}  // namespace quillpress::level3

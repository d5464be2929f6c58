#pragma once

#include "postscript/level3/objects/Object.h"
#include "postscript/level3/scanner/ByteOrder.h"
#include "postscript/level3/scanner/ScanInput.h"

namespace quillpress::level3 {

class Scanner;

// Binary tokens: a byte from 128 to 159 and what follows it.
class BinaryTokens {
 public:
  BinaryTokens(Scanner& scanner, ScanInput& input) : scanner_(scanner), input_(input) {}

  // Reads one token. REQUIRES: input.peek() is from 128 to 159.
  Object read();

 private:
  Byte byte();
  std::uint32_t number(unsigned bytes, ByteOrder order);
  Object integer(unsigned bytes, ByteOrder order);
  Object real(ByteOrder order);
  Object fixedPoint();
  Object boolean();
  Object string(std::uint32_t length);
  Object numberArray();
  // One number of a representation that a fixed-point token or a number array names.
  Object represented(unsigned representation);

  Scanner& scanner_;
  ScanInput& input_;
};

}  // namespace quillpress::level3

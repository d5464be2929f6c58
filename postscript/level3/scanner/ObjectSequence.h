#pragma once

#include <vector>

#include "postscript/level3/objects/VirtualMemory.h"
#include "postscript/level3/scanner/ByteOrder.h"
#include "postscript/level3/scanner/ScanInput.h"

namespace quillpress::level3 {

// A binary object sequence: a header, then objects of eight bytes each, then the characters of their strings
// and names. All its objects become one array; the arrays among them are windows into that, so that neither
// depth nor a sequence that refers to itself matters.
class ObjectSequence {
 public:
  ObjectSequence(VirtualMemory& memory, const std::vector<Name*>& systemNames,
                 const std::vector<Name*>& userNames)
      : memory_(memory), systemNames_(systemNames), userNames_(userNames) {}

  // The executable array of the top-level objects. `code`, from 128 to 131, has been read.
  Object read(Byte code, ScanInput& input);

 private:
  struct Header {
    std::uint32_t count;
    std::uint32_t bodyLength;
  };

  Header readHeader(ScanInput& input) const;
  void readBody(ScanInput& input, std::uint32_t length);
  [[nodiscard]] std::size_t countObjects(std::size_t topCount) const;
  Object objectAt(std::size_t index, const Object& all);
  Object nameOf(std::uint32_t length, std::uint32_t value, bool isExecutable);
  [[nodiscard]] std::string_view textAt(std::uint32_t offset, std::uint32_t length) const;
  [[nodiscard]] std::uint32_t number(std::size_t offset, std::size_t bytes) const {
    return unsignedOf(std::span(body_).subspan(offset, bytes), order_);
  }

  VirtualMemory& memory_;
  const std::vector<Name*>& systemNames_;
  const std::vector<Name*>& userNames_;
  ByteOrder order_ = ByteOrder::kHighFirst;
  std::vector<Byte> body_;
};

}  // namespace quillpress::level3

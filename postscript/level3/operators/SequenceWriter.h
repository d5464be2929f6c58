#pragma once

#include <vector>

#include "postscript/level3/objects/Dictionary.h"
#include "postscript/level3/objects/ErrorName.h"
#include "postscript/level3/objects/Name.h"
#include "postscript/level3/scanner/ByteOrder.h"

namespace quillpress::level3 {

// Writes one object as a binary object sequence, the form that the scanner reads back.
class SequenceWriter {
 public:
  explicit SequenceWriter(ByteOrder order) : order_(order) {}

  // `tag` is the number that the receiver tells sequences apart by. Throws typecheck for an object that has
  // no binary form, and limitcheck for one that is too large.
  std::vector<std::uint8_t> write(const Object& object, std::uint8_t tag);

 private:
  struct Place {
    Object object;
    std::uint8_t tag;
  };

  void layOut(const Object& object);
  void writeObject(const Place& place);
  void writeText(std::string_view text, std::uint8_t type, const Place& place);
  void head(std::uint8_t type, const Place& place, std::size_t length);
  void number(std::uint32_t value, std::size_t bytes);

  ByteOrder order_;
  std::vector<Place> places_;  // all objects, in the order in which they are written
  std::size_t nextArray_ = 1;  // where the elements of the next array stand
  std::vector<std::uint8_t> bytes_;
  std::vector<std::uint8_t> texts_;
};

}  // namespace quillpress::level3

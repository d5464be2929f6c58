#include "postscript/lib/base/Arena.h"

#include <algorithm>

namespace quillpress {

namespace {

// A converter that is opened and closed needs one of these.
constexpr std::size_t kBlockSize = 8192;

}  // namespace

// What is left of the block before is given up: it is less than one object.
void* Arena::allocateInNewBlock(std::size_t size) {
  const std::size_t blockSize = std::max(size, kBlockSize);
  blocks_.push_back(std::make_unique_for_overwrite<std::byte[]>(blockSize));
  next_ = blocks_.back().get() + size;
  left_ = blockSize - size;
  return blocks_.back().get();
}

}  // namespace quillpress

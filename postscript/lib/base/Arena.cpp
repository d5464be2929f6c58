#include "postscript/lib/base/Arena.h"

#include <algorithm>

namespace quillpress {

namespace {

// A converter that is opened and closed needs one of these. A job that makes many things gets larger ones,
// since every block costs its way to the heap and back.
constexpr std::size_t kFirstBlockSize = 8192;
constexpr std::size_t kBlocksOfASize = 8;
constexpr std::size_t kMostDoublings = 5;

}  // namespace

// What is left of the block before is given up: it is less than one object.
void* Arena::allocateInNewBlock(std::size_t size) {
  const std::size_t doublings = std::min<std::size_t>(blocks_.size() / kBlocksOfASize, kMostDoublings);
  const std::size_t blockSize = std::max(size, kFirstBlockSize << doublings);
  blocks_.push_back(std::make_unique_for_overwrite<std::byte[]>(blockSize));
  next_ = blocks_.back().get() + size;
  left_ = blockSize - size;
  return blocks_.back().get();
}

}  // namespace quillpress

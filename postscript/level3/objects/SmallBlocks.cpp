#include "postscript/level3/objects/SmallBlocks.h"

#include <new>
#include <utility>

namespace quillpress::level3 {

namespace {

constexpr std::size_t kChunk = 64UL * 1024;

}  // namespace

void* SmallBlocks::cut(std::size_t bytes) {
  if (left_ < bytes) {
    std::unique_ptr<std::byte[]> chunk(new (std::nothrow) std::byte[kChunk]);
    if (!chunk) return nullptr;
    rest_ = chunk.get();
    left_ = kChunk;
    chunks_.push_back(std::move(chunk));
  }
  left_ -= bytes;
  return std::exchange(rest_, rest_ + bytes);
}

}  // namespace quillpress::level3

#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace quillpress {

// Memory for many small things that all go at the same time, cheaper than the heap in time and in room. What
// is built in it has to be destroyed by its owner; the memory goes with the arena.
class Arena {
 public:
  static constexpr std::size_t kAlignment = 8;

  // Room for an object that wants no other alignment. Throws std::bad_alloc, like the heap.
  [[nodiscard]] void* allocate(std::size_t size) {
    const std::size_t rounded = (size + kAlignment - 1) & ~(kAlignment - 1);
    if (rounded > left_) return allocateInNewBlock(rounded);
    void* const memory = next_;
    next_ += rounded;
    left_ -= rounded;
    return memory;
  }

 private:
  void* allocateInNewBlock(std::size_t size);

  std::vector<std::unique_ptr<std::byte[]>> blocks_;
  std::byte* next_ = nullptr;
  std::size_t left_ = 0;  // bytes from there to the end of the block
};

}  // namespace quillpress

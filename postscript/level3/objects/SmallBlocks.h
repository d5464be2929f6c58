#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace quillpress::level3 {

// Memory for values of a few bytes, of which a job makes very many: cut from large chunks, and kept by size
// once it is given back. Chunks go when all does.
class SmallBlocks {
 public:
  static constexpr std::size_t kLargest = 128;

  // Null when the machine has none. REQUIRES: at most kLargest bytes.
  void* take(std::size_t bytes) {
    Free*& first = free_[sizeClass(bytes)];
    if (first == nullptr) return cut(roundedUp(bytes));
    void* const block = first;
    first = first->next;
    return block;
  }
  // REQUIRES: what take() has given for as many bytes.
  void give(void* block, std::size_t bytes) {
    Free*& first = free_[sizeClass(bytes)];
    first = new (block) Free{first};
  }

 private:
  // A multiple of what every value needs. Not std::max_align_t's, whose alignment depends on the headers that
  // a file includes where they are those of MinGW.
  static constexpr std::size_t kStep = 16;
  struct Free {
    Free* next;
  };

  static constexpr std::size_t sizeClass(std::size_t bytes) { return (bytes + kStep - 1) / kStep; }
  static constexpr std::size_t roundedUp(std::size_t bytes) { return sizeClass(bytes) * kStep; }
  void* cut(std::size_t bytes);

  std::array<Free*, kLargest / kStep + 1> free_{};
  std::vector<std::unique_ptr<std::byte[]>> chunks_;
  // What is left of the last chunk.
  std::byte* rest_ = nullptr;
  std::size_t left_ = 0;
};

}  // namespace quillpress::level3

#pragma once

#include <cstddef>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

// What the library itself has taken from the heap since this object was made, and not given back: the C
// runtime's functions stand among its imports like those of Windows. What Windows, or Wine, takes for it is
// not counted. REQUIRES: one at a time, and one thread that uses
// the library
class HeapCount {
 public:
  explicit HeapCount(Library& library);
  HeapCount(const HeapCount&) = delete;
  HeapCount& operator=(const HeapCount&) = delete;

  [[nodiscard]] static std::size_t blocks();
  [[nodiscard]] static std::size_t bytes();

  // All that have ever been taken.
  [[nodiscard]] static std::size_t taken();
};

}  // namespace quillpress::harness

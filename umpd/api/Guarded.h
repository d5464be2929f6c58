#pragma once

namespace quillpress::driver {

// Runs what an exported function does. Callers cannot catch exceptions of C++: whatever should escape, such
// as a refused allocation, becomes the result of a failure.
template <typename Result, typename Work>
Result guarded(Result failure, Work work) noexcept {
  try {
    return work();
  } catch (...) {
    return failure;
  }
}

}  // namespace quillpress::driver

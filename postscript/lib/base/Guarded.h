#pragma once

namespace quillpress {

// What an exported function's work gives, or `failure` for whatever it throws: memory that ran out, mostly.
// An exception must not reach a caller who need not even be C++.
template <typename Result, typename Work>
Result guarded(Result failure, Work work) noexcept {
  try {
    return work();
  } catch (...) {
    return failure;
  }
}

}  // namespace quillpress

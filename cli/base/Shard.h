#pragma once

#include <cstddef>

namespace quillpress::cli {

// One of several parts of a list, for one of several machines: every `count`-th job, beginning with the
// `index`-th, from 1.
struct Shard {
  std::size_t index = 1;
  std::size_t count = 1;

  [[nodiscard]] bool has(std::size_t place) const { return place % count == index - 1; }

  friend bool operator==(const Shard&, const Shard&) = default;
};

}  // namespace quillpress::cli

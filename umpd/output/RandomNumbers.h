#pragma once

#include <random>

namespace quillpress {

// Non-negative numbers that differ between threads and moments. They hide nothing, they only tell files
// apart. The host's own generator is left alone.
class RandomNumbers {
 public:
  RandomNumbers();

  int next() { return numbers_(engine_); }

 private:
  std::minstd_rand engine_;
  std::uniform_int_distribution<int> numbers_;
};

}  // namespace quillpress

#pragma once

#include <unistd.h>

#include <utility>

namespace quillpress::cli {

// Owns a file descriptor and closes it. Empty when it was made from the -1 of a call that failed; errno then
// still says why.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    reset(other.release());
    return *this;
  }
  ~Descriptor() { reset(); }

  [[nodiscard]] int get() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }

  // Hands the descriptor over to the caller.
  [[nodiscard]] int release() { return std::exchange(number_, -1); }

  void reset(int number = -1) {
    if (number_ >= 0) close(number_);
    number_ = number;
  }

 private:
  int number_ = -1;
};

}  // namespace quillpress::cli

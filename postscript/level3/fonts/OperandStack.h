#pragma once

#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include "postscript/level3/fonts/FontError.h"

namespace quillpress::level3 {

// The operands of a charstring: finite numbers, and not too many of them.
class OperandStack {
 public:
  void push(double value) {
    if (values_.size() >= kMostOperands) throw FontError("a charstring has too many operands");
    if (!std::isfinite(value)) throw FontError("a charstring's arithmetic overflows");
    values_.push_back(value);
  }

  double pop() {
    need(1);
    const double value = values_.back();
    values_.pop_back();
    return value;
  }

  // A whole number that can be an index.
  int popInteger() {
    const double value = pop();
    if (value < -kLargestInteger || value > kLargestInteger)
      throw FontError("a charstring's index is too large");
    return static_cast<int>(value);
  }

  // The last of the operands, which are removed.
  std::vector<double> popLast(std::size_t count) {
    need(count);
    const auto first = values_.end() - static_cast<std::ptrdiff_t>(count);
    std::vector<double> last(first, values_.end());
    values_.erase(first, values_.end());
    return last;
  }

  void need(std::size_t count) const {
    if (values_.size() < count) throw FontError("a charstring's operator lacks operands");
  }

  double operator[](std::size_t index) const { return values_[index]; }
  double& operator[](std::size_t index) { return values_[index]; }
  std::size_t size() const { return values_.size(); }
  bool isEmpty() const { return values_.empty(); }
  void clear() { values_.clear(); }
  void removeFirst() { values_.erase(values_.begin()); }
  std::span<double> last(std::size_t count) {
    need(count);
    return std::span(values_).last(count);
  }

 private:
  // The languages allow 24 and 48; some fonts take more.
  static constexpr std::size_t kMostOperands = 513;
  static constexpr double kLargestInteger = 1e9;

  std::vector<double> values_;
};

// Ends charstrings that call subroutines for ever, or nearly so.
class StepBudget {
 public:
  void spend() {
    if (--left_ == 0) throw FontError("a charstring runs too long");
  }

 private:
  std::size_t left_ = 1'000'000;
};

}  // namespace quillpress::level3

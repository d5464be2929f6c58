#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace quillpress::cli {

// The affine map x' = a*x + c*y + tx, y' = b*x + d*y + ty, in the order in which PDF writes it.
struct Matrix {
  double a = 1;
  double b = 0;
  double c = 0;
  double d = 1;
  double tx = 0;
  double ty = 0;

  // First this one, then `next`.
  [[nodiscard]] Matrix then(const Matrix& next) const;

  [[nodiscard]] double determinant() const { return a * d - b * c; }

  // Whether points can be mapped back.
  [[nodiscard]] bool isInvertible() const;

  bool operator==(const Matrix&) const = default;
};

// Reads the six numbers that stand before offset `end` of `text`.
std::optional<Matrix> matrixBefore(std::string_view text, std::size_t end);

// The current transformation matrix along a content stream, counted from where the stream begins.
class MatrixStack {
 public:
  [[nodiscard]] const Matrix& current() const { return current_; }

  void save() { saved_.push_back(current_); }

  // Without a save before it, goes back to the start of the stream.
  void restore();

  void concat(const Matrix& matrix) { current_ = matrix.then(current_); }

 private:
  Matrix current_;
  std::vector<Matrix> saved_;
};

}  // namespace quillpress::cli

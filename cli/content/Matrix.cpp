#include "cli/content/Matrix.h"

#include <array>
#include <cmath>

#include "cli/base/TextScan.h"

namespace quillpress::cli {

namespace {

constexpr int kNumbers = 6;

// The start of the word that ends, white space aside, before `end`.
std::size_t wordBefore(std::string_view text, std::size_t end) {
  while (end > 0 && isWhite(text[end - 1])) --end;
  while (end > 0 && !isWhite(text[end - 1])) --end;
  return end;
}

}  // namespace

Matrix Matrix::then(const Matrix& next) const {
  // Row vectors: a point is multiplied from the left.
  return {a * next.a + b * next.c,
          a * next.b + b * next.d,
          c * next.a + d * next.c,
          c * next.b + d * next.d,
          tx * next.a + ty * next.c + next.tx,
          tx * next.b + ty * next.d + next.ty};
}

bool Matrix::isInvertible() const {
  return determinant() != 0 && std::isfinite(determinant());
}

std::optional<Matrix> matrixBefore(std::string_view text, std::size_t end) {
  // Backwards, since the scanner stands at the operator and numbers are all alike.
  std::size_t begin = end;
  for (int i = 0; i < kNumbers; ++i) begin = wordBefore(text, begin);
  std::string_view words = text.substr(begin, end - begin);
  std::array<double, kNumbers> numbers{};
  for (double& number : numbers) {
    const auto read = takeNumber(words);
    if (!read) return std::nullopt;
    number = *read;
  }
  return Matrix{numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5]};
}

void MatrixStack::restore() {
  // The page's own save is below, and what it restores is where the stream began.
  current_ = saved_.empty() ? Matrix() : saved_.back();
  if (!saved_.empty()) saved_.pop_back();
}

}  // namespace quillpress::cli

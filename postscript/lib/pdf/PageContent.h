#pragma once

#include <string>
#include <string_view>

#include "postscript/lib/objects/Matrix.h"
#include "postscript/lib/pdf/NumberFormat.h"

namespace quillpress {

// The content-stream text that the current call has produced. Emptied, not freed, between calls.
class PageContent {
 public:
  void append(std::string_view text) { text_.append(text); }
  void appendNumber(double value) { quillpress::appendNumber(text_, value); }

  // "x y op", line feed.
  void appendPoint(Point point, char operatorLetter);

  // "x1 y1 x2 y2 x3 y3 c", line feed.
  void appendCurve(Point control1, Point control2, Point end);

  [[nodiscard]] const std::string& text() const { return text_; }
  [[nodiscard]] std::size_t size() const { return text_.size(); }
  void clear() { text_.clear(); }

  // Cuts the text at `start`, or at its end when that is before, and returns what stood behind.
  [[nodiscard]] std::string cutFrom(std::size_t start);

 private:
  void appendCoordinates(Point point);

  std::string text_;
};

// Appends six numbers and the operator, separated by blanks, and a line feed. A degenerate matrix (a, b, c
// and d all next to zero) appends nothing.
void appendMatrix(std::string& text, const Matrix& matrix, std::string_view operatorText);

}  // namespace quillpress

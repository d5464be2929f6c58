#pragma once

#include <span>
#include <string>
#include <string_view>

#include "postscript/lib/base/Bounds.h"
#include "postscript/lib/objects/Matrix.h"
#include "postscript/lib/pdf/NumberFormat.h"

namespace quillpress {

// The content-stream text that the current call has produced. Emptied, not freed, between calls. What would
// make it longer than callers can be told throws Ex.
class PageContent {
 public:
  void append(std::string_view text) {
    checkRoomFor(text.size());
    text_.append(text);
  }
  void appendNumber(double value) {
    checkRoomFor(kLongestNumber);
    quillpress::appendNumber(text_, value);
  }

  // The numbers, separated by single blanks, and what follows them.
  void appendNumbers(std::span<const double> numbers, std::string_view end);

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
  void checkRoomFor(std::size_t length) const {
    if (length > kMaxContent - text_.size()) throwTooLong();
  }
  [[noreturn]] static void throwTooLong();
  void appendCoordinates(Point point);

  std::string text_;
};

// Appends six numbers and the operator, separated by blanks, and a line feed. Kept: a degenerate
// matrix (a, b, c and d all next to zero) appends nothing (transforms/concat.ps).
void appendMatrix(std::string& text, const Matrix& matrix, std::string_view operatorText);

}  // namespace quillpress

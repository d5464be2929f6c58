#include "postscript/lib/pdf/PageContent.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "postscript/lib/pdf/Postscript2Pdf.h"

namespace quillpress {

namespace {

// What a reader would take for a matrix without an inverse, and stop at.
constexpr double kDegenerate = 0.0001;

bool isDegenerate(const Matrix& matrix) {
  return std::fabs(matrix.a) < kDegenerate && std::fabs(matrix.b) < kDegenerate &&
         std::fabs(matrix.c) < kDegenerate && std::fabs(matrix.d) < kDegenerate;
}

}  // namespace

void PageContent::appendCoordinates(Point point) {
  appendNumber(point.x);
  text_.push_back(' ');
  appendNumber(point.y);
  text_.push_back(' ');
}

void PageContent::appendNumbers(std::span<const double> numbers, std::string_view end) {
  // Once for all numbers; the few bytes of slack a number has are enough for the blanks.
  checkRoomFor(numbers.size() * (kLongestNumber + 1) + end.size());
  quillpress::appendNumbers(text_, numbers);
  text_.append(end);
}

void PageContent::appendPoint(Point point, char operatorLetter) {
  appendCoordinates(point);
  text_.push_back(operatorLetter);
  text_.push_back('\n');
}

void PageContent::appendCurve(Point control1, Point control2, Point end) {
  appendCoordinates(control1);
  appendCoordinates(control2);
  appendPoint(end, 'c');
}

// Apart from the check, which is made for every number.
void PageContent::throwTooLong() {
  Postscript2Pdf::refuse("page content too long for one call");
}

// The start may lie behind the end: a page that was begun meanwhile has taken the text with it.
std::string PageContent::cutFrom(std::size_t start) {
  std::string cut = text_.substr(std::min(start, text_.size()));
  text_.resize(text_.size() - cut.size());
  return cut;
}

void appendMatrix(std::string& text, const Matrix& matrix, std::string_view operatorText) {
  if (isDegenerate(matrix)) return;
  appendNumbers(text, std::array{matrix.a, matrix.b, matrix.c, matrix.d, matrix.tx, matrix.ty});
  text.append(" ").append(operatorText).append("\n");
}

}  // namespace quillpress

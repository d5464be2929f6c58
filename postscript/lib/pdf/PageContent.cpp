#include "postscript/lib/pdf/PageContent.h"

#include <algorithm>
#include <cmath>

namespace quillpress {

namespace {

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

std::string PageContent::cutFrom(std::size_t start) {
  std::string cut = text_.substr(std::min(start, text_.size()));
  text_.resize(text_.size() - cut.size());
  return cut;
}

void appendMatrix(std::string& text, const Matrix& matrix, std::string_view operatorText) {
  if (isDegenerate(matrix)) return;
  for (const double number : {matrix.a, matrix.b, matrix.c, matrix.d, matrix.tx, matrix.ty}) {
    appendNumber(text, number);
    text.push_back(' ');
  }
  text.append(operatorText).push_back('\n');
}

}  // namespace quillpress

#include "cli/base/Box.h"

#include <array>
#include <cmath>
#include <cstdio>

#include "cli/base/TextScan.h"

namespace quillpress::cli {

namespace {

// PDF 1.4 to 1.7 know pages of up to 200 inches a side; readers refuse others or show nothing. The corner may
// lie anywhere near: jobs with an offset of a few pages exist, and far ones are mistakes.
constexpr double kSmallestSide = 1;
constexpr double kLargestSide = 14400;
constexpr double kFarthestCorner = 100000;

bool isSide(double length) {
  return length >= kSmallestSide && length <= kLargestSide;
}

}  // namespace

bool Box::isPageSize() const {
  const bool near = std::abs(llx) <= kFarthestCorner && std::abs(lly) <= kFarthestCorner;
  return near && isSide(urx - llx) && isSide(ury - lly);
}

std::optional<Box> parseBox(std::string_view text) {
  std::array<double, 4> corner{};
  for (double& number : corner) {
    const auto read = takeNumber(text);
    if (!read) return std::nullopt;
    number = *read;
  }
  const Box box{corner[0], corner[1], corner[2], corner[3]};
  // A fifth number means that something else stands here, such as a box of another kind.
  if (!trimmed(text).empty() || !box.isPageSize()) return std::nullopt;
  return box;
}

std::string pdfNumber(double value) {
  std::array<char, 64> buffer{};
  std::string text(buffer.data(),
                   static_cast<std::size_t>(std::snprintf(buffer.data(), buffer.size(), "%.3f", value)));
  // Three decimals are a thousandth of a point; the zeros of round sizes would only be read.
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  // A small negative value rounds to this, which no reader minds and no person understands.
  return text == "-0" ? "0" : text;
}

}  // namespace quillpress::cli

#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "postscript/level3/pdf/PdfSyntax.h"

namespace quillpress::level3 {

// A colour as page content knows it.
struct Paint {
  enum class Space : std::uint8_t {
    kGray,
    kRgb,
    kCmyk,
    kNamed,    // an object of the file: `space`
    kPattern,  // a pattern: `pattern`, with components of `space` when it has no colours of its own
  };
  // PDF's own limit for components of one colour.
  static constexpr std::size_t kMostComponents = 32;

  Space kind = Space::kGray;
  std::uint8_t count = 1;
  ObjectNumber space = 0;
  ObjectNumber pattern = 0;
  std::array<float, kMostComponents> components{};

  static Paint gray(double level) { return device(Space::kGray, {level}); }
  static Paint rgb(double red, double green, double blue) { return device(Space::kRgb, {red, green, blue}); }
  static Paint cmyk(double cyan, double magenta, double yellow, double black) {
    return device(Space::kCmyk, {cyan, magenta, yellow, black});
  }

  friend bool operator==(const Paint& left, const Paint& right) {
    return left.kind == right.kind && left.count == right.count && left.space == right.space &&
           left.pattern == right.pattern &&
           std::equal(left.components.begin(), left.components.begin() + left.count,
                      right.components.begin());
  }

 private:
  static Paint device(Space kind, std::initializer_list<double> values) {
    Paint paint;
    paint.kind = kind;
    paint.count = static_cast<std::uint8_t>(values.size());
    std::transform(values.begin(), values.end(), paint.components.begin(),
                   [](double value) { return static_cast<float>(value); });
    return paint;
  }
};

}  // namespace quillpress::level3

#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

#include "postscript/level3/geometry/Point.h"

namespace quillpress::level3 {

// Where the text of a page runs to: how many characters each way, by quarters of a circle, and between two of
// them.
class TextDirections {
 public:
  void note(Point direction, std::size_t characters) {
    const double across = std::abs(direction.x);
    const double along = std::abs(direction.y);
    std::size_t way = kBetween;
    if (across > along) way = direction.x > 0 ? 0 : 2;
    if (along > across) way = direction.y > 0 ? 1 : 3;
    counts_[way] += characters;
  }

  // The angle of most of the text, in degrees from the x axis against the clock; nothing without text, or
  // where most runs at no such angle.
  [[nodiscard]] std::optional<int> most() const {
    const auto greatest = std::ranges::max_element(counts_);
    const auto way = static_cast<std::size_t>(greatest - counts_.begin());
    if (*greatest == 0 || way == kBetween) return std::nullopt;
    return static_cast<int>(way) * 90;
  }

  void clear() { counts_ = {}; }

 private:
  static constexpr std::size_t kBetween = 4;

  std::array<std::size_t, kBetween + 1> counts_{};
};

}  // namespace quillpress::level3

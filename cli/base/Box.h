#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillpress::cli {

// A rectangle of default user space, in points: lower left and upper right corner.
struct Box {
  double llx = 0;
  double lly = 0;
  double urx = 0;
  double ury = 0;

  // Whether a page can have this size: at least one point and at most PDF's 14400 points a side.
  [[nodiscard]] bool isPageSize() const;

  bool operator==(const Box&) const = default;
};

// Reads "llx lly urx ury"; nothing when the text holds anything else or is no page size.
std::optional<Box> parseBox(std::string_view text);

// `value` as PDF writes it: at most three decimals, no exponent, no needless zeros.
std::string pdfNumber(double value);

}  // namespace quillpress::cli

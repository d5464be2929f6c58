#pragma once

#include <string_view>

namespace quillpress::cli {

// PDF readers count in 64 bits, some in less; a number with more digits than this before its point is refused
// by one or the other. A job gets such numbers by mistake only.
constexpr int kMostDigits = 18;

// Whether PDF readers take `number`.
bool isReadable(double number);

// Throws PageError when a number in `content` is beyond what PDF readers take. `content` is text of whole
// operators, without inline images, whose data may look like anything.
void checkNumbers(std::string_view content);

}  // namespace quillpress::cli

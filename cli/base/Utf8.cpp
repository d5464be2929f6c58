#include "cli/base/Utf8.h"

namespace quillpress::cli {

std::size_t characterLength(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  std::size_t length = 0;
  if (first < 0x80) length = 1;
  // C0 and C1 would begin a second form of ASCII, in which a control character could hide.
  if (first >= 0xC2 && first < 0xE0) length = 2;
  if (first >= 0xE0 && first < 0xF0) length = 3;
  if (first >= 0xF0 && first < 0xF5) length = 4;
  if (length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if (!isContinuation(static_cast<unsigned char>(text[i]))) return 0;
  }
  return length;
}

}  // namespace quillpress::cli

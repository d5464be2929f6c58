#include "postscript/level3/scanner/Base85.h"

namespace quillpress::level3 {

bool Base85::take(std::uint8_t character, std::string& bytes) {
  if (character == 'z' && digits_ == 0) {
    bytes.append(4, '\0');
    return true;
  }
  if (character < '!' || character > 'u') return false;
  group_ = group_ * 85 + (character - static_cast<unsigned>('!'));
  return ++digits_ < 5 || flush(4, bytes);
}

bool Base85::finish(std::string& bytes) {
  if (digits_ == 0) return true;
  if (digits_ == 1) return false;
  const unsigned count = digits_ - 1;
  // A short group counts as if it went on with the highest digit.
  for (; digits_ < 5; ++digits_) group_ = group_ * 85 + 84;
  return flush(count, bytes);
}

bool Base85::flush(unsigned count, std::string& bytes) {
  if (group_ > UINT32_MAX) return false;
  for (unsigned i = 0; i < count; ++i) bytes.push_back(static_cast<char>((group_ >> (24 - 8 * i)) & 0xff));
  group_ = 0;
  digits_ = 0;
  return true;
}

}  // namespace quillpress::level3

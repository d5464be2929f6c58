#include "tools/launcher/LogLine.h"

namespace quillpress::launcher {
namespace {

constexpr wchar_t kControlPictures = 0x2400;
constexpr wchar_t kPictureOfDelete = 0x2421;
constexpr wchar_t kReplacement = 0xFFFD;

wchar_t printable(wchar_t character) {
  if (character < L' ') return static_cast<wchar_t>(kControlPictures + character);
  if (character == 0x7F) return kPictureOfDelete;
  const bool breaksLines =
      (character >= 0x80 && character < 0xA0) || character == 0x2028 || character == 0x2029;
  return breaksLines ? kReplacement : character;
}

}  // namespace

std::wstring logLine(std::initializer_list<std::wstring_view> fields) {
  std::wstring line;
  for (const std::wstring_view field : fields) {
    if (!line.empty()) line += L'\t';
    for (const wchar_t character : field) line += printable(character);
  }
  return line;
}

}  // namespace quillpress::launcher

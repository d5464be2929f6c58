#include "cli/job/DscText.h"

#include <algorithm>
#include <qpdf/QUtil.hh>

#include "cli/base/TextScan.h"

namespace quillpress::cli {

namespace {

bool isOctal(char byte) {
  return byte >= '0' && byte <= '7';
}

bool isHex(char byte) {
  return isDigit(byte) || (byte >= 'a' && byte <= 'f') || (byte >= 'A' && byte <= 'F');
}

// Takes one to three octal digits off the front of `text`.
char takeOctal(std::string_view& text) {
  unsigned value = 0;
  // Fewer than three digits count too, as in a string of PostScript.
  for (int digits = 0; digits < 3 && !text.empty() && isOctal(text.front()); ++digits) {
    value = value * 8 + static_cast<unsigned>(text.front() - '0');
    text.remove_prefix(1);
  }
  return static_cast<char>(value & 0xFF);
}

// Takes what follows a backslash off the front of `text`.
char takeEscape(std::string_view& text) {
  if (isOctal(text.front())) return takeOctal(text);
  const char byte = text.front();
  text.remove_prefix(1);
  // A line of text cannot hold them, and drivers write them where a title has a line end.
  const bool isBlank = byte == 'n' || byte == 'r' || byte == 't' || byte == 'b' || byte == 'f';
  return isBlank ? ' ' : byte;
}

std::string unescaped(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const char byte = text.front();
    text.remove_prefix(1);
    result += byte == '\\' && !text.empty() ? takeEscape(text) : byte;
  }
  return result;
}

bool isHexText(std::string_view text) {
  return !text.empty() && text.size() % 2 == 0 && std::all_of(text.begin(), text.end(), isHex);
}

std::string bytesOf(std::string_view value) {
  const bool hasEnds = value.size() >= 2;
  const std::string_view inside = hasEnds ? value.substr(1, value.size() - 2) : std::string_view();
  if (value.starts_with('(') && value.ends_with(')')) return unescaped(inside);
  if (value.starts_with('<') && value.ends_with('>') && isHexText(inside)) {
    return QUtil::hex_decode(std::string(inside));
  }
  return std::string(value);
}

}  // namespace

std::string dscText(std::string_view value) {
  const std::string bytes = bytesOf(value);
  // The mark decides; without it the bytes are looked at.
  if (QUtil::is_utf16(bytes)) return QUtil::utf16_to_utf8(bytes);
  bool has8BitBytes = false;
  bool isUtf8 = false;
  bool isUtf16 = false;
  QUtil::analyze_encoding(bytes, has8BitBytes, isUtf8, isUtf16);
  // Text that is right as UTF-8 by chance hardly exists, so UTF-8 goes first.
  return has8BitBytes && !isUtf8 ? QUtil::win_ansi_to_utf8(bytes) : bytes;
}

}  // namespace quillpress::cli

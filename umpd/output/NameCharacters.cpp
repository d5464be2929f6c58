#include "umpd/output/NameCharacters.h"

#include <algorithm>

namespace quillpress {
namespace {

constexpr std::wstring_view kAllowedSigns = L",()[].$%`-@{}~!#()&_^ ";

bool isBetween(wchar_t character, wchar_t first, wchar_t last) {
  return character >= first && character <= last;
}

int hexDigitValue(wchar_t character) {
  if (isBetween(character, L'0', L'9')) return character - L'0';
  if (isBetween(character, L'a', L'f')) return character - L'a' + 10;
  if (isBetween(character, L'A', L'F')) return character - L'A' + 10;
  return -1;
}

// The hexadecimal number that a text begins with; 0 without digits.
int leadingHexNumber(std::wstring_view text) {
  int number = 0;
  for (const wchar_t character : text) {
    const int digit = hexDigitValue(character);
    if (digit < 0) break;
    number = number * 16 + digit;
  }
  return number;
}

}  // namespace

bool isAllowedNameCharacter(wchar_t character) {
  return isBetween(character, L'0', L'9') || isBetween(character, L'A', L'Z') ||
         isBetween(character, L'a', L'z') || isBetween(character, wchar_t{192}, wchar_t{255}) ||
         character == L'\0' || kAllowedSigns.find(character) != std::wstring_view::npos;
}

std::wstring decodeDocumentName(std::wstring_view name) {
  std::wstring decoded;
  while (!name.empty()) {
    const wchar_t character = name.front();
    name.remove_prefix(1);
    const bool isEscape = character == L'%' && !name.empty() && name.front() != L'%';
    if (!isEscape) {
      decoded += character == L'+' ? L' ' : character;
      continue;
    }
    const std::wstring_view digits = name.substr(0, 2);
    name.remove_prefix(digits.size());
    const auto code = static_cast<wchar_t>(leadingHexNumber(digits));
    // Kept: an escape without digits is the final zero of the name.
    if (code == L'\0') break;
    decoded += isAllowedNameCharacter(code) ? code : L'_';
  }
  return decoded;
}

}  // namespace quillpress

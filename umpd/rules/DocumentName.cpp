#include "umpd/rules/DocumentName.h"

#include <algorithm>

namespace quillpress::driver {
namespace {
// Blanks and percent signs are fine in a file's name; quotes, colons and separators are not on every file
// system.
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

// "Microsoft Word - Report.doc" is about "Report.doc".
std::wstring_view withoutApplication(std::wstring_view name, wchar_t trimCharacter) {
  const std::size_t trim = name.find(trimCharacter);
  if (trim == std::wstring_view::npos) return name;
  name.remove_prefix(trim + 1);
  name.remove_prefix(std::min(name.find_first_not_of(L' '), name.size()));
  return name;
}

// Only an ending of at most three characters is one of a file. Kept: a dot in front is none of an extension
// (RuleRowsTest.FileNames).
std::wstring_view withoutShortExtension(std::wstring_view name) {
  const std::size_t dot = name.rfind(L'.');
  if (dot == std::wstring_view::npos || dot == 0 || name.size() - dot - 1 > 3) return name;
  return name.substr(0, dot);
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
    // Of two percent signs the first stands for itself, and the second may begin an escape.
    const bool isEscape = character == L'%' && !name.empty() && name.front() != L'%';
    if (!isEscape) {
      decoded += character == L'+' ? L' ' : character;
      continue;
    }
    const std::wstring_view digits = name.substr(0, 2);
    name.remove_prefix(digits.size());
    const auto code = static_cast<wchar_t>(leadingHexNumber(digits));
    // Kept: an escape without digits is the final zero of the name
    // (OutputNameTest.AnEscapeWithoutDigitsEndsThePath).
    if (code == L'\0') break;
    decoded += isAllowedNameCharacter(code) ? code : L'_';
  }
  return decoded;
}

std::wstring cleanedName(std::wstring_view name, wchar_t trimCharacter, std::wstring_view extension,
                         std::size_t room) {
  name = withoutApplication(name, trimCharacter);
  const std::size_t needed = extension.size() + 1;
  // Cut before the short ending goes, so a long ending that the cut makes short goes as well.
  name = name.substr(0, room > needed ? room - needed : 0);
  std::wstring cleaned(withoutShortExtension(name));
  std::replace_if(
      cleaned.begin(), cleaned.end(), [](wchar_t each) { return !isAllowedNameCharacter(each); }, L'_');
  return cleaned.append(extension);
}
}  // namespace quillpress::driver

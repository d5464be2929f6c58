#include "umpd/metadata/XmlEscape.h"

namespace quillpress {
namespace {

// Null for characters that stand for themselves.
const wchar_t* entityOf(wchar_t character) {
  switch (character) {
    case L'"':
      return L"&quot;";
    case L'&':
      return L"&amp;";
    case L'\'':
      return L"&apos;";
    case L'<':
      return L"&lt;";
    case L'>':
      return L"&gt;";
    default:
      return nullptr;
  }
}

// REQUIRES: character < 32
std::wstring controlReference(wchar_t character) {
  constexpr wchar_t kDigits[] = L"0123456789abcdef";
  std::wstring text = L"&#x";
  if (character >= 16) text += L'1';
  return text + kDigits[character % 16] + L';';
}

}  // namespace

std::wstring xmlEscape(std::wstring_view text) {
  std::wstring escaped;
  for (const wchar_t character : text) {
    if (const wchar_t* entity = entityOf(character)) {
      escaped += entity;
    } else if (character < L' ') {
      escaped += controlReference(character);
    } else {
      escaped += character;
    }
  }
  return escaped;
}

}  // namespace quillpress

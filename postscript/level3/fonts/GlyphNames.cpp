#include "postscript/level3/fonts/GlyphNames.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <unordered_map>

#include "postscript/level3/fonts/AdobeGlyphList.h"
#include "postscript/level3/fonts/Encodings.h"

namespace quillpress::level3 {

namespace {

bool isCharacter(std::uint32_t value) {
  return value > 0 && value <= 0x10FFFF && !(value >= 0xD800 && value <= 0xDFFF);
}

bool areHexDigits(std::string_view text) {
  return std::ranges::all_of(
      text, [](char digit) { return (digit >= '0' && digit <= '9') || (digit >= 'A' && digit <= 'F'); });
}

std::uint32_t hexValue(std::string_view digits) {
  std::uint32_t value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  return value;
}

// One entry of the list that begins at or before a place.
struct Entry {
  std::size_t start;
  std::string_view name;
  std::string_view characters;
};

Entry entryAround(std::string_view list, std::size_t place) {
  const std::size_t before = place == 0 ? std::string_view::npos : list.rfind(';', place - 1);
  const std::size_t start = before == std::string_view::npos ? 0 : before + 1;
  const std::string_view entry = list.substr(start, list.find(';', start) - start);
  const std::size_t blank = entry.find(' ');
  return {start, entry.substr(0, blank), entry.substr(blank + 1)};
}

// The characters of a listed name as hexadecimal digits, empty when it is not listed.
std::string_view listed(std::string_view name) {
  const auto& [earlier, later] = kAdobeGlyphList;
  const std::string_view list = name < entryAround(later, 0).name ? earlier : later;
  std::size_t low = 0;
  std::size_t high = list.size() - 1;
  while (low < high) {
    const Entry entry = entryAround(list, low + (high - low) / 2);
    if (entry.name == name) return entry.characters;
    if (entry.name < name) {
      low = entry.start + entry.name.size() + entry.characters.size() + 2;
    } else {
      high = entry.start;
    }
  }
  return {};
}

struct Piece {
  std::string_view name;
  char32_t character;
};

// Unicode has got characters for these since the list was made.
constexpr Piece kLaterCharacters[] = {
    {"arrowhorizex", 0x23AF},   {"arrowvertex", 0x23D0},    {"braceex", 0x23AA},
    {"braceleftbt", 0x23A9},    {"braceleftmid", 0x23A8},   {"bracelefttp", 0x23A7},
    {"bracerightbt", 0x23AD},   {"bracerightmid", 0x23AC},  {"bracerighttp", 0x23AB},
    {"bracketleftbt", 0x23A3},  {"bracketleftex", 0x23A2},  {"bracketlefttp", 0x23A1},
    {"bracketrightbt", 0x23A6}, {"bracketrightex", 0x23A5}, {"bracketrighttp", 0x23A4},
    {"copyrightsans", 0x00A9},  {"copyrightserif", 0x00A9}, {"integralex", 0x23AE},
    {"parenleftbt", 0x239D},    {"parenleftex", 0x239C},    {"parenlefttp", 0x239B},
    {"parenrightbt", 0x23A0},   {"parenrightex", 0x239F},   {"parenrighttp", 0x239E},
    {"radicalex", 0x203E},      {"registersans", 0x00AE},   {"registerserif", 0x00AE},
    {"trademarksans", 0x2122},  {"trademarkserif", 0x2122},
};

bool isPrivate(char32_t character) {
  return character >= 0xE000 && character <= 0xF8FF;
}

// The list puts small capitals and old style figures where no reader finds them; their letters and digits are
// meant.
char32_t searchable(std::string_view name, char32_t character) {
  if (!isPrivate(character)) return character;
  const auto* later = std::ranges::find(kLaterCharacters, name, &Piece::name);
  if (later != std::end(kLaterCharacters)) return later->character;
  return character >= 0xF720 && character <= 0xF7FF ? character & 0xFF : character;
}

std::u32string textOfListed(std::string_view name) {
  std::u32string text;
  std::string_view characters = listed(name);
  while (!characters.empty()) {
    const std::string_view digits = characters.substr(0, characters.find(' '));
    characters.remove_prefix(std::min(digits.size() + 1, characters.size()));
    text += searchable(name, hexValue(digits));
  }
  return text;
}

// uni and groups of four digits
std::u32string textOfUni(std::string_view digits) {
  std::u32string text;
  if (digits.size() % 4 != 0 || !areHexDigits(digits)) return text;
  for (; !digits.empty(); digits.remove_prefix(4)) {
    const std::uint32_t value = hexValue(digits.substr(0, 4));
    if (!isCharacter(value)) return {};
    text += static_cast<char32_t>(value);
  }
  return text;
}

std::u32string textOfComponent(std::string_view name) {
  std::u32string text = textOfListed(name);
  if (!text.empty()) return text;
  if (name.size() >= 7 && name.starts_with("uni")) return textOfUni(name.substr(3));
  if (name.size() < 5 || name.size() > 7 || name[0] != 'u' || !areHexDigits(name.substr(1))) return text;
  const std::uint32_t value = hexValue(name.substr(1));
  if (isCharacter(value)) text += static_cast<char32_t>(value);
  return text;
}

// Where ZapfDingbats' characters do not follow the codes of its encoding.
struct Dingbat {
  std::uint8_t code;
  char32_t character;
};
constexpr Dingbat kOtherDingbats[] = {
    {0x20, 0x0020}, {0x25, 0x260E}, {0x2A, 0x261B}, {0x2B, 0x261E}, {0x48, 0x2605}, {0x6C, 0x25CF},
    {0x6E, 0x25A0}, {0x73, 0x25B2}, {0x74, 0x25BC}, {0x75, 0x25C6}, {0x77, 0x25D7}, {0xA8, 0x2663},
    {0xA9, 0x2666}, {0xAA, 0x2665}, {0xAB, 0x2660}, {0xD5, 0x2192}, {0xD6, 0x2194}, {0xD7, 0x2195},
};

char32_t dingbatOfCode(std::size_t code) {
  const auto* other = std::ranges::find(kOtherDingbats, code, &Dingbat::code);
  if (other != std::end(kOtherDingbats)) return other->character;
  if (code < 0x80) return static_cast<char32_t>(0x2701 + code - 0x21);
  if (code < 0xA1) return static_cast<char32_t>(0x2768 + code - 0x80);
  if (code >= 0xAC && code <= 0xB5) return static_cast<char32_t>(0x2460 + code - 0xAC);
  return static_cast<char32_t>(0x2761 + code - 0xA1);
}

}  // namespace

// A suffix says how the glyph looks; components, between underscores, are what a ligature is made of.
std::u32string textOfGlyphName(std::string_view name) {
  std::u32string text;
  std::string_view rest = name.substr(0, name.find('.'));
  while (!rest.empty()) {
    const std::string_view component = rest.substr(0, rest.find('_'));
    rest.remove_prefix(std::min(component.size() + 1, rest.size()));
    text += textOfComponent(component);
  }
  return text;
}

std::u32string textOfDingbatName(std::string_view name) {
  const EncodingTable& encoding = zapfDingbatsEncoding();
  const auto found = std::ranges::find(encoding, name);
  if (name == ".notdef" || found == encoding.end()) return {};
  return {dingbatOfCode(static_cast<std::size_t>(found - encoding.begin()))};
}

std::string_view glyphNameOf(char32_t character) {
  static const auto names = [] {
    std::unordered_map<char32_t, std::string_view> map;
    const auto addAll = [&map](const EncodingTable& encoding) {
      for (const std::string_view name : encoding) {
        const std::u32string text = textOfListed(name);
        if (text.size() == 1) map.emplace(text[0], name);
      }
    };
    // Of several names, the usual one.
    addAll(standardEncoding());
    addAll(isoLatin1Encoding());
    addAll(winAnsiEncoding());
    addAll(symbolEncoding());
    for (const std::string_view list : kAdobeGlyphList) {
      for (std::size_t place = 0; place < list.size();) {
        const Entry entry = entryAround(list, place);
        if (entry.characters.size() == 4) map.emplace(hexValue(entry.characters), entry.name);
        place = entry.start + entry.name.size() + entry.characters.size() + 2;
      }
    }
    return map;
  }();
  const auto found = names.find(character);
  return found != names.end() ? found->second : std::string_view();
}

}  // namespace quillpress::level3

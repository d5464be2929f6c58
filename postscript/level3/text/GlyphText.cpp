#include "postscript/level3/text/GlyphText.h"

#include <array>

#include "postscript/level3/fonts/Encodings.h"
#include "postscript/level3/fonts/GlyphNames.h"
#include "postscript/level3/text/FontEntries.h"

namespace quillpress::level3 {

namespace {

constexpr char32_t kLastCharacter = 0x10FFFF;

bool isDingbats(std::string_view fontName) {
  return fontName.find("Dingbats") != std::string_view::npos ||
         fontName.find("D050000L") != std::string_view::npos;
}

// The table's value is a number or UTF-16.
std::u32string textInTable(const Object& value) {
  if (value.isInteger() && value.asInteger() > 0 && value.asInteger() <= std::int64_t{kLastCharacter}) {
    return std::u32string(1, static_cast<char32_t>(value.asInteger()));
  }
  return value.isString() ? textOfUtf16(textOf(value)) : std::u32string();
}

// Ligatures that are named by their letters are searched for by these. A name or table that says the one
// character means it.
std::u32string withLetters(const std::u32string& text) {
  constexpr char32_t kFirst = 0xFB00;
  constexpr std::array<std::u32string_view, 7> kLetters{U"ff", U"fi", U"fl", U"ffi", U"ffl", U"st", U"st"};
  std::u32string letters;
  for (const char32_t character : text) {
    if (character >= kFirst && character < kFirst + kLetters.size()) {
      letters += kLetters[character - kFirst];
    } else {
      letters += character;
    }
  }
  return letters;
}

}  // namespace

std::u32string textOfCode(const GlyphKey& key) {
  if (key.name == nullptr || key.code <= ' ' || key.code > 0xff) return {};
  return withLetters(textOfGlyphName(winAnsiEncoding()[key.code]));
}

std::u32string textOfUtf16(std::string_view bytes) {
  std::u32string text;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto unit = static_cast<char32_t>(static_cast<unsigned char>(bytes[i]) << 8 |
                                            static_cast<unsigned char>(bytes[i + 1]));
    const bool isSecond = unit >= 0xDC00 && unit < 0xE000;
    if (isSecond && !text.empty() && text.back() >= 0xD800 && text.back() < 0xDC00) {
      text.back() = 0x10000 + ((text.back() - 0xD800) << 10) + (unit - 0xDC00);
    } else {
      text += unit;
    }
  }
  return text;
}

std::u32string textOfGlyph(Interpreter& interpreter, const Object& font, const GlyphKey& key) {
  const FontEntries entries(interpreter, font);
  const Object information = entries.dictionary("FontInfo");
  if (information.isDictionary()) {
    const Object table = FontEntries(interpreter, information).dictionary("GlyphNames2Unicode");
    if (table.isDictionary()) {
      const Object* value = key.name != nullptr ? table.asDictionary()->find(key.name)
                                                : table.asDictionary()->find(Object::integer(key.code));
      if (value != nullptr) {
        std::u32string text = textInTable(*value);
        if (!text.empty()) return text;
      }
    }
  }
  if (key.name == nullptr) return {};
  const std::u32string text = textOfGlyphName(key.name->text());
  if (!text.empty()) return key.name->text().starts_with('u') ? text : withLetters(text);
  if (!isDingbats(entries.text("FontName"))) return {};
  return textOfDingbatName(key.name->text());
}

}  // namespace quillpress::level3

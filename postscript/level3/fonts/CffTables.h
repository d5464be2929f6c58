#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "postscript/level3/fonts/CffDict.h"
#include "postscript/level3/fonts/CharstringPrivate.h"
#include "postscript/level3/fonts/OutlineFont.h"
#include "postscript/level3/geometry/Matrix.h"

namespace quillpress::level3 {

// A row of byte strings in a CFF; they are cut out when asked for.
class CffIndex {
 public:
  CffIndex() = default;
  CffIndex(std::string_view bytes, std::size_t place);

  std::size_t count() const { return count_; }
  // REQUIRES: item < count()
  std::string_view at(std::size_t item) const;
  // Where the index ends in the bytes that it was read from.
  std::size_t end() const { return end_; }

 private:
  std::size_t offsetAt(std::size_t item) const;

  std::string_view bytes_;
  std::size_t count_ = 0;
  std::size_t offsetSize_ = 1;
  std::size_t offsets_ = 0;
  std::size_t data_ = 0;  // one before the first byte, as offsets count from 1
  std::size_t end_ = 0;
};

// One font of a FontSet, read as far as all its glyphs need it.
struct CffTables {
  struct FontDictionary {
    // Charstring units to the character space of the whole font.
    Matrix matrix;
    CharstringPrivate privateData;
    CffIndex subroutines;
  };

  CffTables(std::string fontSet, std::size_t font);

  std::string bytes;
  std::string name;
  bool isCid = false;
  Matrix matrix{0.001, 0, 0, 0.001, 0, 0};
  Box bounds{0, 0, 0, 0};
  CffIndex strings;
  CffIndex subroutines;
  CffIndex charstrings;
  // A string number or CID for each glyph.
  std::vector<std::uint16_t> charset;
  std::vector<FontDictionary> fontDictionaries;
  // Empty when there is only one.
  std::vector<std::uint8_t> fontDictionaryOfGlyph;
  std::array<GlyphIndex, 256> encoding{};
  std::unordered_map<std::string, GlyphIndex> glyphsByName;
  std::unordered_map<std::uint32_t, GlyphIndex> glyphsByCid;

  std::string stringOf(std::size_t number) const;
  std::string nameOf(GlyphIndex glyph) const;
  const FontDictionary& dictionaryOf(GlyphIndex glyph) const;

 private:
  void readCharset(const CffDict& top);
  void readCharsetTable(std::size_t place);
  void readEncoding(const CffDict& top);
  void readEncodingTable(std::size_t place);
  void readFontDictionaries(const CffDict& top);
  void readSelection(std::size_t place);
  FontDictionary fontDictionaryOf(const CffDict& dict) const;
};

}  // namespace quillpress::level3

#include "postscript/level3/fonts/CffTables.h"

#include <algorithm>

#include "postscript/level3/fonts/ByteReader.h"
#include "postscript/level3/fonts/CffStandard.h"
#include "postscript/level3/fonts/Encodings.h"

namespace quillpress::level3 {

namespace {

std::optional<Matrix> matrixOf(const CffDict& dict) {
  const auto values = dict.numbers(CffKey::kFontMatrix);
  if (values.size() != 6) return std::nullopt;
  return Matrix{values[0], values[1], values[2], values[3], values[4], values[5]};
}

}  // namespace

CffIndex::CffIndex(std::string_view bytes, std::size_t place) : bytes_(bytes) {
  ByteReader reader(bytes, place);
  count_ = reader.u16();
  end_ = reader.position();
  if (count_ == 0) return;
  offsetSize_ = reader.u8();
  if (offsetSize_ < 1 || offsetSize_ > 4) throw FontError("an index of a CFF has wrong offsets");
  offsets_ = reader.position();
  reader.skip((count_ + 1) * offsetSize_);
  data_ = reader.position() - 1;
  end_ = data_ + offsetAt(count_);
  if (end_ > bytes.size()) throw FontError("an index of a CFF is cut off");
}

std::size_t CffIndex::offsetAt(std::size_t item) const {
  return ByteReader(bytes_, offsets_ + item * offsetSize_).unsignedOf(offsetSize_);
}

std::string_view CffIndex::at(std::size_t item) const {
  const std::size_t start = offsetAt(item);
  const std::size_t end = offsetAt(item + 1);
  if (start < 1 || end < start) throw FontError("an index of a CFF is out of order");
  return partOf(bytes_, data_ + start, end - start);
}

CffTables::CffTables(std::string fontSet, std::size_t font) : bytes(std::move(fontSet)) {
  const CffIndex names(bytes, ByteReader(bytes, 2).u8());
  const CffIndex tops(bytes, names.end());
  strings = CffIndex(bytes, tops.end());
  subroutines = CffIndex(bytes, strings.end());
  if (font >= tops.count()) throw FontError("a FontSet has fewer fonts");
  if (font < names.count()) name = names.at(font);

  const CffDict top(tops.at(font));
  isCid = top.has(CffKey::kRos);
  if (top.number(CffKey::kCharstringType, 2) != 2)
    throw FontError("a CFF font has charstrings of another type");
  matrix = matrixOf(top).value_or(matrix);
  if (const auto box = top.numbers(CffKey::kFontBBox); box.size() == 4)
    bounds = {box[0], box[1], box[2], box[3]};
  const std::size_t charstringsPlace = top.size(CffKey::kCharStrings);
  if (charstringsPlace == 0) throw FontError("a CFF font has no charstrings");
  charstrings = CffIndex(bytes, charstringsPlace);
  readCharset(top);
  readFontDictionaries(top);
  if (!isCid) readEncoding(top);
}

void CffTables::readCharset(const CffDict& top) {
  const std::size_t place = top.size(CffKey::kCharset);
  charset.push_back(0);
  if (place > 2) {
    readCharsetTable(place);
  } else if (!isCid) {
    charset = cffPredefinedCharset(static_cast<unsigned>(place));
    if (charset.size() > charstrings.count()) charset.resize(charstrings.count());
  } else {
    // A CIDFont has no predefined charsets; its glyphs are in the order of CIDs.
    for (std::size_t i = 1; i < charstrings.count(); ++i) charset.push_back(static_cast<std::uint16_t>(i));
  }
  for (std::size_t i = 0; i < charset.size(); ++i) {
    const auto glyph = static_cast<GlyphIndex>(i);
    if (isCid) {
      glyphsByCid.emplace(charset[i], glyph);
    } else {
      glyphsByName.emplace(nameOf(glyph), glyph);
    }
  }
}

void CffTables::readCharsetTable(std::size_t place) {
  ByteReader reader(bytes, place);
  const std::uint8_t format = reader.u8();
  if (format > 2) throw FontError("a CFF font's charset has an unknown format");
  while (charset.size() < charstrings.count()) {
    const std::uint32_t first = reader.u16();
    const std::uint32_t more = format == 0 ? 0 : format == 1 ? reader.u8() : reader.u16();
    for (std::uint32_t i = 0; i <= more && charset.size() < charstrings.count(); ++i) {
      charset.push_back(static_cast<std::uint16_t>(first + i));
    }
  }
}

void CffTables::readEncoding(const CffDict& top) {
  const std::size_t place = top.size(CffKey::kEncoding);
  if (place > 1) {
    readEncodingTable(place);
    return;
  }
  const EncodingTable& names = place == 0 ? standardEncoding() : expertEncoding();
  for (std::size_t code = 0; code < names.size(); ++code) {
    const auto found = glyphsByName.find(std::string(names[code]));
    if (found != glyphsByName.end()) encoding[code] = found->second;
  }
}

void CffTables::readEncodingTable(std::size_t place) {
  ByteReader reader(bytes, place);
  const std::uint8_t format = reader.u8();
  GlyphIndex glyph = 1;
  for (unsigned count = reader.u8(); count > 0; --count) {
    const unsigned first = reader.u8();
    const unsigned more = (format & 0x7FU) == 0 ? 0 : reader.u8();
    for (unsigned code = first; code <= first + more; ++code, ++glyph) {
      if (code < encoding.size() && glyph < charstrings.count()) encoding[code] = glyph;
    }
  }
  if ((format & 0x80U) == 0) return;
  for (unsigned count = reader.u8(); count > 0; --count) {
    const std::uint8_t code = reader.u8();
    const auto found = glyphsByName.find(stringOf(reader.u16()));
    if (found != glyphsByName.end()) encoding[code] = found->second;
  }
}

void CffTables::readFontDictionaries(const CffDict& top) {
  if (!isCid) {
    fontDictionaries.push_back(fontDictionaryOf(top));
    fontDictionaries.back().matrix = Matrix{};
    return;
  }
  const CffIndex dicts(bytes, top.size(CffKey::kFdArray));
  const bool hasMatrix = matrixOf(top).has_value();
  for (std::size_t i = 0; i < dicts.count() && i < 256; ++i) {
    const CffDict dict(dicts.at(i));
    FontDictionary entry = fontDictionaryOf(dict);
    entry.matrix = matrixOf(dict).value_or(hasMatrix ? Matrix{} : matrix);
    // Without a matrix of the whole font, this one maps to text space, and the usual one is set against it.
    if (!hasMatrix) entry.matrix = entry.matrix * Matrix::scaling(1000, 1000);
    fontDictionaries.push_back(std::move(entry));
  }
  if (fontDictionaries.empty()) throw FontError("a CFF CIDFont has no font dictionaries");
  if (const std::size_t place = top.size(CffKey::kFdSelect); place != 0) readSelection(place);
}

void CffTables::readSelection(std::size_t place) {
  ByteReader reader(bytes, place);
  const std::uint8_t format = reader.u8();
  fontDictionaryOfGlyph.assign(charstrings.count(), 0);
  if (format == 0) {
    for (std::uint8_t& each : fontDictionaryOfGlyph) each = reader.u8();
    return;
  }
  if (format != 3) throw FontError("a CFF CIDFont selects font dictionaries in an unknown way");
  std::size_t count = reader.u16();
  std::size_t first = reader.u16();
  for (; count > 0; --count) {
    const std::uint8_t dictionary = reader.u8();
    const std::size_t next = std::min<std::size_t>(reader.u16(), fontDictionaryOfGlyph.size());
    for (; first < next; ++first) fontDictionaryOfGlyph[first] = dictionary;
  }
}

CffTables::FontDictionary CffTables::fontDictionaryOf(const CffDict& dict) const {
  FontDictionary result;
  const std::size_t size = dict.size(CffKey::kPrivate, 0);
  const std::size_t place = dict.size(CffKey::kPrivate, 1);
  if (size == 0) return result;
  const CffDict entries(partOf(bytes, place, size));
  CharstringPrivate& hints = result.privateData;
  hints.charstringType = 2;
  hints.lenIV = -1;
  hints.blueValues = entries.sums(CffKey::kBlueValues);
  hints.otherBlues = entries.sums(CffKey::kOtherBlues);
  hints.familyBlues = entries.sums(CffKey::kFamilyBlues);
  hints.familyOtherBlues = entries.sums(CffKey::kFamilyOtherBlues);
  hints.stdHW = entries.sums(CffKey::kStdHW);
  hints.stdVW = entries.sums(CffKey::kStdVW);
  hints.stemSnapH = entries.sums(CffKey::kStemSnapH);
  hints.stemSnapV = entries.sums(CffKey::kStemSnapV);
  hints.blueScale = entries.number(CffKey::kBlueScale, hints.blueScale);
  hints.blueShift = entries.number(CffKey::kBlueShift, hints.blueShift);
  hints.blueFuzz = entries.number(CffKey::kBlueFuzz, hints.blueFuzz);
  hints.expansionFactor = entries.number(CffKey::kExpansionFactor, hints.expansionFactor);
  hints.languageGroup = entries.number(CffKey::kLanguageGroup, 0) == 1 ? 1 : 0;
  hints.forceBold = entries.number(CffKey::kForceBold, 0) != 0;
  hints.defaultWidthX = entries.number(CffKey::kDefaultWidthX, 0);
  hints.nominalWidthX = entries.number(CffKey::kNominalWidthX, 0);
  if (const std::size_t subrs = entries.size(CffKey::kSubrs); subrs != 0) {
    result.subroutines = CffIndex(bytes, place + subrs);
  }
  return result;
}

std::string CffTables::stringOf(std::size_t number) const {
  if (number < kCffStandardStrings) return std::string(cffStandardString(number));
  number -= kCffStandardStrings;
  return number < strings.count() ? std::string(strings.at(number)) : std::string();
}

std::string CffTables::nameOf(GlyphIndex glyph) const {
  return !isCid && glyph < charset.size() ? stringOf(charset[glyph]) : std::string();
}

const CffTables::FontDictionary& CffTables::dictionaryOf(GlyphIndex glyph) const {
  const std::size_t index = fontDictionaryOfGlyph.empty() ? 0 : fontDictionaryOfGlyph.at(glyph);
  if (index >= fontDictionaries.size()) throw FontError("a glyph names a missing font dictionary");
  return fontDictionaries[index];
}

}  // namespace quillpress::level3

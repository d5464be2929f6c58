#include "postscript/level3/fonts/CidFont.h"

#include <algorithm>
#include <utility>

#include "postscript/level3/fonts/ByteReader.h"
#include "postscript/level3/fonts/CffWriter.h"
#include "postscript/level3/fonts/Charstrings.h"
#include "postscript/level3/fonts/Encryption.h"

namespace quillpress::level3 {

namespace {

constexpr std::size_t kMostCids = 65536;

// Subroutines in the binary data: a row of places, one more than there are subroutines.
std::vector<std::string> subroutinesOf(std::string_view data, const CidFont::FontDictionary& dictionary) {
  std::vector<std::string> subroutines;
  if (dictionary.subrCount == 0) return subroutines;
  if (dictionary.sdBytes < 1 || dictionary.sdBytes > 4 || dictionary.subrCount > kMostCids) {
    throw FontError("a CIDFont's subroutine map is wrong");
  }
  ByteReader map(data, dictionary.subrMapOffset);
  std::size_t start = map.unsignedOf(dictionary.sdBytes);
  std::size_t left = data.size();
  for (std::size_t i = 0; i < dictionary.subrCount; ++i) {
    const std::size_t end = map.unsignedOf(dictionary.sdBytes);
    // They do not overlap, or a small file could ask for any amount of memory.
    if (end < start || end - start > left) throw FontError("a CIDFont's subroutine map is wrong");
    left -= end - start;
    subroutines.push_back(plainCharstring(partOf(data, start, end - start), dictionary.privateData.lenIV));
    start = end;
  }
  return subroutines;
}

}  // namespace

CidFont::CidFont(Data data) : data_(std::move(data)) {
  if (data_.fontDictionaries.empty()) throw FontError("a CIDFont has no font dictionaries");
  if (data_.fdBytes > 4 || data_.gdBytes > 4) throw FontError("a CIDFont's map of CIDs is wrong");
  for (FontDictionary& dictionary : data_.fontDictionaries) {
    CharstringPrivate& privateData = dictionary.privateData;
    for (std::string& subroutine : privateData.subrs) {
      subroutine = plainCharstring(subroutine, privateData.lenIV);
    }
    if (privateData.subrs.empty()) privateData.subrs = subroutinesOf(data_.glyphData, dictionary);
  }
}

void CidFont::add(std::uint32_t cid, std::string_view entry) {
  if (cid >= kMostCids) throw FontError("a CID is too large");
  added_.insert_or_assign(cid, entry);
}

// Without a charstring where the font has none.
CidFont::Entry CidFont::entryOf(std::uint32_t cid) const {
  Entry entry;
  if (const auto found = added_.find(cid); found != added_.end()) {
    ByteReader reader(found->second);
    entry.fontDictionary = reader.unsignedOf(data_.fdBytes);
    entry.charstring = std::string_view(found->second).substr(reader.position());
  } else if (cid < data_.cidCount && !data_.glyphData.empty()) {
    ByteReader map(data_.glyphData, data_.cidMapOffset + cid * (data_.fdBytes + data_.gdBytes));
    entry.fontDictionary = map.unsignedOf(data_.fdBytes);
    const std::size_t start = map.unsignedOf(data_.gdBytes);
    map.skip(data_.fdBytes);
    const std::size_t end = map.unsignedOf(data_.gdBytes);
    if (end > start) entry.charstring = partOf(data_.glyphData, start, end - start);
  }
  if (entry.fontDictionary >= data_.fontDictionaries.size()) {
    throw FontError("a glyph names a missing font dictionary");
  }
  return entry;
}

std::optional<GlyphIndex> CidFont::glyphOfCid(std::uint32_t cid) const {
  try {
    return entryOf(cid).charstring.empty() ? std::nullopt : std::optional<GlyphIndex>(cid);
  } catch (const FontError&) {
    return std::nullopt;
  }
}

std::size_t CidFont::glyphCount() const {
  std::size_t count = data_.cidCount;
  for (const auto& [cid, entry] : added_) count = std::max<std::size_t>(count, cid + std::size_t{1});
  return count;
}

GlyphProgram CidFont::program(std::uint32_t cid) const {
  const Entry entry = entryOf(cid);
  if (entry.charstring.empty()) throw FontError("the font has no such glyph");
  const CharstringPrivate& privateData = data_.fontDictionaries[entry.fontDictionary].privateData;
  CharstringContext context;
  context.local = {privateData.subrs.size(), [&privateData](std::size_t index) -> std::string_view {
                     return privateData.subrs[index];
                   }};
  context.defaultWidthX = privateData.defaultWidthX;
  context.nominalWidthX = privateData.nominalWidthX;
  const std::string plain = plainCharstring(entry.charstring, privateData.lenIV);
  return privateData.charstringType == 2 ? runType2Charstring(plain, context)
                                         : runType1Charstring(plain, context);
}

Glyph CidFont::glyph(GlyphIndex glyph) const {
  const GlyphProgram drawn = program(glyph);
  const Matrix& matrix = data_.fontDictionaries[entryOf(glyph).fontDictionary].matrix;
  return {drawn.path().transformed(matrix), matrix.applyToDistance(drawn.advance), std::nullopt};
}

FontSubset CidFont::subset(const SubsetRequest& request) const {
  CffSource source;
  for (const FontDictionary& each : data_.fontDictionaries) {
    source.fontDictionaries.push_back({each.matrix * data_.matrix, &each.privateData});
  }
  source.notdef = 0;
  source.program = [this](GlyphIndex glyph) { return program(glyph); };
  source.fontDictionary = [this](GlyphIndex glyph) { return entryOf(glyph).fontDictionary; };
  return cffSubset(request, source);
}

}  // namespace quillpress::level3

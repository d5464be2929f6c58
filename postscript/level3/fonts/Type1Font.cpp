#include "postscript/level3/fonts/Type1Font.h"

#include <utility>

#include "postscript/level3/fonts/CffWriter.h"
#include "postscript/level3/fonts/Charstrings.h"
#include "postscript/level3/fonts/Encodings.h"
#include "postscript/level3/fonts/Encryption.h"

namespace quillpress::level3 {

Type1Font::Type1Font(Data data) : data_(std::move(data)) {
  CharstringPrivate& privateData = data_.privateData;
  for (std::string& subroutine : privateData.subrs) {
    subroutine = plainCharstring(subroutine, privateData.lenIV);
  }
}

GlyphIndex Type1Font::add(std::string_view name, std::string_view charstring) {
  std::string plain = plainCharstring(charstring, data_.privateData.lenIV);
  const auto known = byName_.find(name);
  if (known != byName_.end() && glyphs_[known->second].charstring == plain) return known->second;
  const auto glyph = static_cast<GlyphIndex>(glyphs_.size());
  glyphs_.push_back({std::string(name), std::move(plain)});
  if (known != byName_.end()) {
    known->second = glyph;
  } else {
    byName_.emplace(name, glyph);
  }
  return glyph;
}

std::optional<GlyphIndex> Type1Font::glyphNamed(std::string_view name) const {
  const auto found = byName_.find(name);
  return found != byName_.end() ? std::optional(found->second) : std::nullopt;
}

const Type1Font::Entry& Type1Font::entryOf(GlyphIndex glyph) const {
  if (glyph >= glyphs_.size()) throw FontError("the font has no such glyph");
  return glyphs_[glyph];
}

std::string Type1Font::glyphName(GlyphIndex glyph) const {
  return entryOf(glyph).name;
}

CharstringContext Type1Font::context() const {
  const CharstringPrivate& privateData = data_.privateData;
  CharstringContext context;
  context.local = {privateData.subrs.size(), [&privateData](std::size_t index) -> std::string_view {
                     return privateData.subrs[index];
                   }};
  context.defaultWidthX = privateData.defaultWidthX;
  context.nominalWidthX = privateData.nominalWidthX;
  context.weightVector = data_.weightVector;
  context.standardGlyph = [this](std::uint8_t code) {
    const auto glyph = glyphNamed(standardEncoding()[code]);
    if (!glyph) throw FontError("an accented character's parts are missing");
    return glyphs_[*glyph].charstring;
  };
  return context;
}

GlyphProgram Type1Font::program(GlyphIndex glyph) const {
  const std::string& charstring = entryOf(glyph).charstring;
  return data_.privateData.charstringType == 2 ? runType2Charstring(charstring, context())
                                               : runType1Charstring(charstring, context());
}

std::vector<std::string> Type1Font::missingParts(GlyphIndex glyph) const {
  std::vector<std::string> missing;
  if (data_.privateData.charstringType == 2) return missing;
  for (const char code : accentPartsOfType1(entryOf(glyph).charstring, context())) {
    const std::string_view name = standardEncoding()[static_cast<std::uint8_t>(code)];
    if (!byName_.contains(name)) missing.emplace_back(name);
  }
  return missing;
}

Glyph Type1Font::glyph(GlyphIndex glyph) const {
  const GlyphProgram drawn = program(glyph);
  return {drawn.path(), drawn.advance, std::nullopt};
}

FontSubset Type1Font::subset(const SubsetRequest& request) const {
  CffSource source;
  source.fontDictionaries.push_back({data_.matrix, &data_.privateData});
  source.notdef = glyphNamed(".notdef");
  source.program = [this](GlyphIndex glyph) { return program(glyph); };
  source.name = [this](GlyphIndex glyph) { return glyphName(glyph); };
  return cffSubset(request, source);
}

}  // namespace quillpress::level3

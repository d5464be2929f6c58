#include "postscript/level3/fonts/CffFont.h"

#include <utility>

#include "postscript/level3/fonts/ByteReader.h"
#include "postscript/level3/fonts/CffTables.h"
#include "postscript/level3/fonts/CffWriter.h"
#include "postscript/level3/fonts/Charstrings.h"
#include "postscript/level3/fonts/Encodings.h"

namespace quillpress::level3 {

namespace {

SubroutineTable tableOf(const CffIndex& index) {
  return {index.count(), [&index](std::size_t item) { return index.at(item); }};
}

GlyphProgram programOf(const CffTables& tables, GlyphIndex glyph) {
  if (glyph >= tables.charstrings.count()) throw FontError("the font has no such glyph");
  const CffTables::FontDictionary& dictionary = tables.dictionaryOf(glyph);
  CharstringContext context;
  context.local = tableOf(dictionary.subroutines);
  context.global = tableOf(tables.subroutines);
  context.defaultWidthX = dictionary.privateData.defaultWidthX;
  context.nominalWidthX = dictionary.privateData.nominalWidthX;
  context.standardGlyph = [&tables](std::uint8_t code) {
    const auto found = tables.glyphsByName.find(std::string(standardEncoding()[code]));
    if (found == tables.glyphsByName.end()) throw FontError("an accented character's parts are missing");
    return std::string(tables.charstrings.at(found->second));
  };
  return runType2Charstring(tables.charstrings.at(glyph), context);
}

}  // namespace

std::vector<std::string> CffFont::fontNames(std::string_view bytes) {
  const CffIndex names(bytes, ByteReader(bytes, 2).u8());
  std::vector<std::string> result;
  for (std::size_t i = 0; i < names.count(); ++i) result.emplace_back(names.at(i));
  return result;
}

CffFont::CffFont(std::string bytes, std::size_t font)
    : tables_(std::make_unique<const CffTables>(std::move(bytes), font)) {}

CffFont::~CffFont() = default;

const std::string& CffFont::name() const {
  return tables_->name;
}

bool CffFont::isCid() const {
  return tables_->isCid;
}

const Matrix& CffFont::matrix() const {
  return tables_->matrix;
}

const Box& CffFont::bounds() const {
  return tables_->bounds;
}

std::uint32_t CffFont::cidOf(GlyphIndex glyph) const {
  return tables_->isCid && glyph < tables_->charset.size() ? tables_->charset[glyph] : glyph;
}

const std::array<GlyphIndex, 256>& CffFont::encoding() const {
  return tables_->encoding;
}

std::optional<GlyphIndex> CffFont::glyphNamed(std::string_view name) const {
  const auto found = tables_->glyphsByName.find(std::string(name));
  return found != tables_->glyphsByName.end() ? std::optional(found->second) : std::nullopt;
}

std::optional<GlyphIndex> CffFont::glyphOfCid(std::uint32_t cid) const {
  if (!tables_->isCid) return cid < glyphCount() ? std::optional<GlyphIndex>(cid) : std::nullopt;
  const auto found = tables_->glyphsByCid.find(cid);
  return found != tables_->glyphsByCid.end() ? std::optional(found->second) : std::nullopt;
}

std::size_t CffFont::glyphCount() const {
  return tables_->charstrings.count();
}

std::string CffFont::glyphName(GlyphIndex glyph) const {
  return tables_->nameOf(glyph);
}

Glyph CffFont::glyph(GlyphIndex glyph) const {
  const GlyphProgram program = programOf(*tables_, glyph);
  const Matrix& matrix = tables_->dictionaryOf(glyph).matrix;
  return {program.path().transformed(matrix), matrix.applyToDistance(program.advance), std::nullopt};
}

FontSubset CffFont::subset(const SubsetRequest& request) const {
  CffSource source;
  for (const CffTables::FontDictionary& each : tables_->fontDictionaries) {
    source.fontDictionaries.push_back({each.matrix * tables_->matrix, &each.privateData});
  }
  source.notdef = 0;
  source.program = [this](GlyphIndex glyph) { return programOf(*tables_, glyph); };
  source.name = [this](GlyphIndex glyph) { return tables_->nameOf(glyph); };
  source.fontDictionary = [this](GlyphIndex glyph) {
    return static_cast<std::size_t>(&tables_->dictionaryOf(glyph) - tables_->fontDictionaries.data());
  };
  return cffSubset(request, source);
}

}  // namespace quillpress::level3

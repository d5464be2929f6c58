#include "postscript/level3/text/CidFace.h"

#include <algorithm>

#include "postscript/level3/text/FontEntries.h"
#include "postscript/level3/text/Fonts.h"
#include "postscript/level3/text/GlyphDirectory.h"
#include "postscript/level3/text/Type1Face.h"

namespace quillpress::level3 {

namespace {

std::size_t sizeIn(const FontEntries& entries, std::string_view key, std::size_t otherwise) {
  const std::int64_t value = entries.integer(key, static_cast<std::int64_t>(otherwise));
  if (value < 0) raise(ErrorName::kInvalidFont);
  return static_cast<std::size_t>(value);
}

CidFont::FontDictionary readFontDictionary(Interpreter& interpreter, const Object& dictionary) {
  const FontEntries entries(interpreter, dictionary);
  const Object& privateDictionary = entries.require("Private");
  const FontEntries privateEntries(interpreter, privateDictionary);
  CidFont::FontDictionary font;
  font.matrix = entries.requireMatrix("FontMatrix");
  font.privateData = readPrivate(interpreter, privateDictionary);
  font.subrMapOffset = sizeIn(privateEntries, "SubrMapOffset", 0);
  font.subrCount = sizeIn(privateEntries, "SubrCount", 0);
  font.sdBytes = sizeIn(privateEntries, "SDBytes", 0);
  return font;
}

// GlyphData is a string, or several that are one.
std::string readGlyphData(const FontEntries& entries) {
  const Object* const data = entries.find("GlyphData");
  if (data == nullptr) return {};
  if (data->isString()) return std::string(textOf(*data));
  std::string bytes;
  if (!data->isArray()) raise(ErrorName::kInvalidFont);
  for (const Object& piece : elementsOf(*data)) {
    if (!piece.isString()) raise(ErrorName::kInvalidFont);
    bytes += textOf(piece);
  }
  return bytes;
}

CidFont::Data readData(Interpreter& interpreter, const Object& font, const Matrix& matrix) {
  const FontEntries entries(interpreter, font);
  CidFont::Data data;
  data.matrix = matrix;
  const Object dictionaries = entries.array("FDArray");
  if (dictionaries.isNull()) raise(ErrorName::kInvalidFont);
  for (const Object& dictionary : elementsOf(dictionaries)) {
    data.fontDictionaries.push_back(readFontDictionary(interpreter, dictionary));
  }
  data.glyphData = readGlyphData(entries);
  data.cidMapOffset = sizeIn(entries, "CIDMapOffset", 0);
  data.cidCount = sizeIn(entries, "CIDCount", 0);
  data.fdBytes = sizeIn(entries, "FDBytes", 0);
  data.gdBytes = sizeIn(entries, "GDBytes", 0);
  return data;
}

// Glyphs that come one by one belong to the one font.
Fingerprint contentOf(const Object& number, std::string_view name, const CidFont::Data& data) {
  Fingerprinter prints;
  prints.add("CIDFont ");
  prints.add(name);
  prints.add(data.glyphData.empty() ? std::to_string(number.asInteger()) : data.glyphData);
  for (const std::size_t size : {data.cidMapOffset, data.cidCount, data.fdBytes, data.gdBytes}) {
    prints.add(' ' + std::to_string(size));
  }
  for (const CidFont::FontDictionary& each : data.fontDictionaries) {
    prints.add(' ' + std::to_string(each.subrMapOffset) + ' ' + std::to_string(each.matrix.a));
  }
  return prints.finish();
}

}  // namespace

std::shared_ptr<Face> CidFace::make(Fonts& fonts, const Object& font) {
  const FontEntries entries(fonts.interpreter(), font);
  CidFont::Data data = readData(fonts.interpreter(), font, fonts.definedMatrix(font));
  const std::string name(entries.text("CIDFontName"));
  // The em's share of a unit after the font dictionaries' own matrices.
  const double unit = std::abs(data.matrix.d) > 0 ? std::abs(data.matrix.d) : 1;
  const Fingerprint content = contentOf(entries.require("FID"), name, data);
  const auto program = fonts.program(content, [&]() -> std::unique_ptr<OutlineProgram> {
    try {
      data.matrix = Matrix::scaling(unit, unit);
      return std::make_unique<OutlineProgram>(std::make_unique<CidFont>(std::move(data)), name, unit,
                                              OutlineProgram::Form::kComposite);
    } catch (const FontError&) {
      raise(ErrorName::kInvalidFont);
    }
  });
  return std::make_shared<CidFace>(fonts, font, program);
}

CidFace::CidFace(Fonts& fonts, const Object& font, const std::shared_ptr<OutlineProgram>& program)
    : OutlineFace(fonts, font, program),
      outlines_(static_cast<CidFont&>(program->font())),
      glyphDirectory_(fonts.interpreter().memory().name("GlyphDirectory")) {}

Object CidFace::sourceOf(const Object& font, const GlyphKey& key) {
  const Object* const entry = glyphDirectoryEntry(font, glyphDirectory_, key.code);
  return entry != nullptr ? *entry : Object::integer(key.code);
}

std::optional<OutlineFace::Found> CidFace::read(const Object& font, const GlyphKey& key,
                                                const Object& source) {
  try {
    if (source.isString()) {
      outlines_.add(key.code, textOf(source));
      program().reload(key.code);
    }
    if (const std::optional<GlyphIndex> index = outlines_.glyphOfCid(key.code)) return Found{*index};
    if (key.code == 0) return std::nullopt;
    const Object* const notdef = glyphDirectoryEntry(font, glyphDirectory_, 0);
    if (notdef != nullptr) outlines_.add(0, textOf(*notdef));
    return outlines_.glyphOfCid(0) ? std::optional(Found{0, true}) : std::nullopt;
  } catch (const FontError&) {
    return std::nullopt;
  }
}

}  // namespace quillpress::level3

#include "postscript/level3/text/Type42Face.h"

#include "postscript/level3/text/FontEntries.h"
#include "postscript/level3/text/Fonts.h"
#include "postscript/level3/text/GlyphDirectory.h"

namespace quillpress::level3 {

namespace {

constexpr int kMostPartRounds = 8;

std::vector<std::string> readStrings(const Object& array) {
  std::vector<std::string> strings;
  for (const Object& element : elementsOf(array)) {
    if (!element.isString()) raise(ErrorName::kInvalidFont);
    strings.emplace_back(textOf(element));
  }
  return strings;
}

Fingerprint contentOf(std::string_view name, const Object& strings) {
  Fingerprinter prints;
  prints.add("Type42 ");
  prints.add(name);
  for (const Object& element : elementsOf(strings)) {
    if (element.isString()) prints.add(textOf(element));
  }
  return prints.finish();
}

}  // namespace

std::shared_ptr<Face> Type42Face::make(Fonts& fonts, const Object& font) {
  const FontEntries entries(fonts.interpreter(), font);
  const Object strings = entries.array("sfnts");
  if (strings.isNull()) raise(ErrorName::kInvalidFont);
  const std::string name(entries.find("CIDFontName") != nullptr ? entries.text("CIDFontName")
                                                                : entries.text("FontName"));
  const auto program = fonts.program(contentOf(name, strings), [&]() -> std::unique_ptr<OutlineProgram> {
    try {
      return std::make_unique<OutlineProgram>(std::make_unique<TrueTypeFont>(readStrings(strings)), name, 1.0,
                                              OutlineProgram::Form::kComposite);
    } catch (const FontError&) {
      raise(ErrorName::kInvalidFont);
    }
  });
  return std::make_shared<Type42Face>(fonts, font, program);
}

Type42Face::Type42Face(Fonts& fonts, const Object& font, const std::shared_ptr<OutlineProgram>& program)
    : OutlineFace(fonts, font, program), outlines_(static_cast<TrueTypeFont&>(program->font())) {
  VirtualMemory& memory = fonts.interpreter().memory();
  charStrings_ = memory.name("CharStrings");
  glyphDirectory_ = memory.name("GlyphDirectory");
  cidMap_ = memory.name("CIDMap");
  notdef_ = memory.name(".notdef");
  const std::int64_t metrics = FontEntries(fonts.interpreter(), font).integer("MetricsCount", 0);
  metricsCount_ = metrics == 2 || metrics == 4 ? static_cast<int>(metrics) : 0;
}

bool Type42Face::isNotdef(const GlyphKey& key) const {
  return key.name != nullptr ? key.name == notdef_ : key.code == 0;
}

// CIDMap: a string, an array of strings, a dictionary, or a number to be added.
std::optional<GlyphIndex> Type42Face::numberOfCid(const Object& font, std::uint32_t cid) {
  const Object* const map = font.asDictionary()->find(cidMap_);
  if (map == nullptr) return cid;
  if (map->isInteger()) return static_cast<GlyphIndex>(cid + map->asInteger());
  if (map->isDictionary()) {
    const Object* const entry = map->asDictionary()->find(Object::integer(cid));
    if (entry == nullptr || !entry->isInteger()) return std::nullopt;
    return static_cast<GlyphIndex>(entry->asInteger());
  }
  const std::int64_t bytes = FontEntries(fonts().interpreter(), font).integer("GDBytes", 2);
  if (bytes < 1 || bytes > 4) return std::nullopt;
  std::size_t place = std::size_t{cid} * static_cast<std::size_t>(bytes);
  const auto read = [&](const Object& string) {
    GlyphIndex number = 0;
    for (std::int64_t i = 0; i < bytes; ++i)
      number = number << 8 | string.bytes()[place + static_cast<std::size_t>(i)];
    return number;
  };
  const auto holds = [&](const Object& string) {
    return place + static_cast<std::size_t>(bytes) <= string.length();
  };
  if (map->isString()) return holds(*map) ? std::optional(read(*map)) : std::nullopt;
  if (!map->isArray()) return std::nullopt;
  for (const Object& string : elementsOf(*map)) {
    if (!string.isString()) return std::nullopt;
    if (holds(string)) return read(string);
    if (place < string.length()) return std::nullopt;
    place -= string.length();
  }
  return std::nullopt;
}

// Whether it is known by its own name, if it has one.
bool Type42Face::hasName(const Object& font, const GlyphKey& key) const {
  if (key.name == nullptr) return true;
  const Object* const charStrings = font.asDictionary()->find(charStrings_);
  return charStrings != nullptr && charStrings->isDictionary() &&
         charStrings->asDictionary()->find(key.name) != nullptr;
}

std::optional<GlyphIndex> Type42Face::numberOf(const Object& font, const GlyphKey& key) {
  if (key.name == nullptr) return numberOfCid(font, key.code);
  const Object* const charStrings = font.asDictionary()->find(charStrings_);
  if (charStrings == nullptr || !charStrings->isDictionary()) return std::nullopt;
  const Object* number = charStrings->asDictionary()->find(key.name);
  if (number == nullptr) number = charStrings->asDictionary()->find(notdef_);
  if (number == nullptr || !number->isInteger()) return std::nullopt;
  if (number->asInteger() < 0 || number->asInteger() > 0xffff) return std::nullopt;
  return static_cast<GlyphIndex>(number->asInteger());
}

Object Type42Face::sourceOf(const Object& font, const GlyphKey& key) {
  const std::optional<GlyphIndex> number = numberOf(font, key);
  if (!number) return {};
  const Object* const entry = glyphDirectoryEntry(font, glyphDirectory_, *number);
  return entry != nullptr ? *entry : Object::integer(*number);
}

std::optional<OutlineFace::Found> Type42Face::read(const Object& font, const GlyphKey& key,
                                                   const Object& source) {
  const std::optional<GlyphIndex> number = numberOf(font, key);
  if (!number) return std::nullopt;
  try {
    if (source.isString()) {
      outlines_.add(*number, textOf(source), metricsCount_);
      program().reload(*number);
      addParts(font, *number);
    }
    return Found{*number, !hasName(font, key)};
  } catch (const FontError&) {
    return std::nullopt;
  }
}

void Type42Face::addParts(const Object& font, GlyphIndex index) {
  for (int round = 0; round < kMostPartRounds; ++round) {
    bool hasAdded = false;
    for (const GlyphIndex part : outlines_.missingParts(index)) {
      const Object* const entry = glyphDirectoryEntry(font, glyphDirectory_, part);
      if (entry == nullptr) continue;
      outlines_.add(part, textOf(*entry), metricsCount_);
      hasAdded = true;
    }
    if (!hasAdded) return;
  }
}

std::u32string Type42Face::ownText(GlyphIndex index) {
  const char32_t character = outlines_.unicodeOf(index);
  return character != 0 ? std::u32string(1, character) : std::u32string();
}

}  // namespace quillpress::level3

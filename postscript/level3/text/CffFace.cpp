#include "postscript/level3/text/CffFace.h"

#include "postscript/level3/text/FontEntries.h"
#include "postscript/level3/text/Fonts.h"
#include "postscript/level3/text/Type1Face.h"

namespace quillpress::level3 {

std::shared_ptr<Face> CffFace::make(Fonts& fonts, const Object& font) {
  const FontEntries entries(fonts.interpreter(), font);
  const Object& bytes = entries.require(kFontSetKey);
  if (!bytes.isString()) raise(ErrorName::kInvalidFont);
  const auto place = static_cast<std::size_t>(entries.integer(kFontSetPlaceKey, 0));
  Fingerprinter prints;
  prints.add("FontSet ");
  prints.add(std::to_string(place));
  prints.add(textOf(bytes));
  const auto program = fonts.program(prints.finish(), [&]() -> std::unique_ptr<OutlineProgram> {
    try {
      auto outlines = std::make_unique<CffFont>(std::string(textOf(bytes)), place);
      const std::string name = outlines->name();
      const double unit = unitOf(outlines->matrix());
      const auto form = outlines->isCid() ? OutlineProgram::Form::kComposite : OutlineProgram::Form::kSimple;
      return std::make_unique<OutlineProgram>(std::move(outlines), name, unit, form);
    } catch (const FontError&) {
      raise(ErrorName::kInvalidFont);
    }
  });
  return std::make_shared<CffFace>(fonts, font, program);
}

CffFace::CffFace(Fonts& fonts, const Object& font, const std::shared_ptr<OutlineProgram>& program)
    : OutlineFace(fonts, font, program),
      outlines_(static_cast<CffFont&>(program->font())),
      charStrings_(fonts.interpreter().memory().name("CharStrings")),
      notdef_(fonts.interpreter().memory().name(".notdef")) {}

bool CffFace::isNotdef(const GlyphKey& key) const {
  return key.name != nullptr ? key.name == notdef_ : key.code == 0;
}

// The dictionary has the glyph's number for its name; a job may have changed it.
Object CffFace::sourceOf(const Object& font, const GlyphKey& key) {
  if (key.name == nullptr) return Object::integer(key.code);
  const Object* const charStrings = font.asDictionary()->find(charStrings_);
  if (charStrings == nullptr || !charStrings->isDictionary()) return {};
  const Object* const number = charStrings->asDictionary()->find(key.name);
  return number != nullptr ? *number : Object();
}

std::optional<OutlineFace::Found> CffFace::read(const Object& /*font*/, const GlyphKey& key,
                                                const Object& source) {
  std::optional<GlyphIndex> index;
  if (key.name == nullptr) {
    index = outlines_.glyphOfCid(key.code);
  } else if (source.isInteger() && source.asInteger() >= 0) {
    index = static_cast<GlyphIndex>(source.asInteger());
  }
  if (index && *index < outlines_.glyphCount()) return Found{*index};
  if (outlines_.glyphCount() == 0) return std::nullopt;
  return Found{0, true};
}

}  // namespace quillpress::level3

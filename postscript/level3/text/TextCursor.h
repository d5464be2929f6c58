#pragma once

#include <array>
#include <memory>
#include <string>

#include "postscript/level3/text/Face.h"

namespace quillpress::level3 {

// One character of a string that is shown.
struct TextCharacter {
  // The base font or CIDFont that it is shown with, and that font's face; none for the font that is current
  // when a job has set none.
  Object font;
  std::shared_ptr<Face> face;
  GlyphKey key;
  // Character space to user space: the font's matrix and those of the composite fonts around it.
  Matrix matrix;
  // As widthshow and kshow count: a byte, or all that its composite font read for it.
  std::uint32_t code = 0;
  bool isVertical = false;
};

// Walks over a string as a font reads it: byte by byte, or as the mapping of a composite font says.
//
// Procedures of the job may run between characters, and may change or lose what the font's dictionaries had
// when the walk began: what it needs of them is kept.
class TextCursor final : public Roots {
 public:
  // Throws invalidfont.
  TextCursor(Interpreter& interpreter, const Object& font, std::string bytes);

  // Null at the end. Throws rangecheck where a composite font cannot read on.
  const TextCharacter* next();
  // Whether characters may be of different fonts.
  bool isComposite() const { return isComposite_; }
  // The one that next() has given last; before that, what all characters of a base font have in common.
  const TextCharacter& character() const { return character_; }

  void trace(Tracer& tracer) const override;

 private:
  // A composite font on the way to the base font.
  static constexpr std::size_t kMaxDepth = 5;
  struct Selection {
    std::uint32_t font = 0;
  };

  void nextSimple();
  bool descend(const Object& composite, const Matrix& matrix, std::size_t depth);
  bool descendByCMap(const Object& composite, const Matrix& matrix, std::size_t depth);
  Object descendant(const Object& composite, std::uint32_t number) const;
  void select(const Object& font, const Matrix& outer, std::uint32_t code);
  bool hasByte() const { return position_ < bytes_.size(); }
  std::uint32_t takeByte();

  Interpreter& interpreter_;
  Object font_;
  std::string bytes_;
  std::size_t position_ = 0;
  bool isComposite_ = false;
  Object encoding_;
  // In a base font, only its code and glyph change.
  TextCharacter character_;
  std::array<Selection, kMaxDepth> selections_;
  RootsScope scope_;
};

// The name that a base font's Encoding has for a code; null without one.
Name* encodedName(Interpreter& interpreter, const Object& font, std::uint32_t code);

// A glyph that is asked for by name, with the code that the font's Encoding has it at, if any. A font whose
// glyphs are known by code alone gets .notdef for names that its Encoding lacks.
GlyphKey namedGlyph(Interpreter& interpreter, const Object& font, Name* name);

}  // namespace quillpress::level3

#pragma once

#include <optional>
#include <vector>

#include "postscript/level3/text/TextCursor.h"

namespace quillpress::level3 {

// What an operator adds to the way that its string is shown. Distances are in user space.
struct ShowSettings {
  enum class Target {
    kPage,
    kPath,   // charpath
    kWidth,  // stringwidth
  };
  Target target = Target::kPage;
  // To every glyph's advance.
  Point extra;
  // To the advance of one character.
  std::optional<std::uint32_t> wideCode;
  Point wideExtra;
  // Instead of advances, one for each character.
  std::optional<std::vector<Point>> advances;
  // kshow's and cshow's.
  Object procedure;
};

// Shows characters one after the other: each at the current point, which it moves on. Of a string that can be
// seen in part, what is clipped away is text, too.
struct TextLine;

class Shower final : public Roots {
 public:
  Shower(Interpreter& interpreter, const ShowSettings& settings);

  // What the functions below need on the execution stack.
  static void addOperators(Interpreter& interpreter);

  // The distance, in user space, that the characters have moved the current point by.
  Point show(TextCursor& cursor);
  void showGlyph(const TextCharacter& character);

  // kshow: the procedure between characters, which may change the font. cshow: the procedure alone. `exit` in
  // the procedure ends them.
  void showWithProcedure(std::string_view bytes);
  void callWithWidths(TextCursor& cursor);

  void trace(Tracer& tracer) const override;

 private:
  // A glyph that cannot be seen, while none of its string has been.
  struct Held {
    TextCharacter character;
    FaceGlyph* glyph;
    Matrix toDevice;
    Box bounds;
  };

  bool takeTurn(const Object& procedure);
  Point advanceOf(const TextCharacter& character, const FaceGlyph& glyph) const;
  Point advanceWith(const TextCharacter& character, const FaceGlyph& glyph);
  void place(const TextCharacter& character, FaceGlyph& glyph, Point start);
  bool continuesLine(const TextCharacter& character) const;
  bool addToLine(const TextCharacter& character, const FaceGlyph& glyph, Point start);
  void beginLine(const TextCharacter& character, const FaceGlyph& glyph, const Matrix& toDevice);
  bool isSeenFrom(const Box& bounds);
  // Shows one character at the current point and moves that on.
  Point showNext(const TextCharacter& character);
  // Which way characters like this one have been shown or measured.
  void noteDirection(const TextCharacter& character, std::size_t characters);

  Interpreter& interpreter_;
  Graphics& graphics_;
  const ShowSettings& settings_;
  Ink ink_;
  TextLine& line_;
  // Its glyphs and the next of this string have all in common that the graphics state and the font say.
  bool isOnLine_ = false;
  std::size_t count_ = 0;
  std::vector<Held> held_;
  bool isSeen_ = false;
  RootsScope scope_;
};

}  // namespace quillpress::level3

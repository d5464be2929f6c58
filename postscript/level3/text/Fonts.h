#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "postscript/level3/fonts/SystemFonts.h"
#include "postscript/level3/text/CMap.h"
#include "postscript/level3/text/Face.h"
#include "postscript/level3/text/Type3Program.h"

namespace quillpress::level3 {

struct GlyphRun;

// What a font's dictionary has for all of its characters.
struct ShownFont {
  // Null while the job may still change it, as it may until definefont.
  Object font;
  bool isComposite = false;
  Matrix matrix;
  // Of a base font; the encoding is a null object when it is no array.
  std::shared_ptr<Face> face;
  Object encoding;
};

// What the glyph that was shown last has in common with those that may follow it without further ado.
struct TextLine {
  // Where it was shown; null when nothing may follow.
  const ContentWriter* content = nullptr;
  ColourPointer colour;
  RareParameters rare;
  Matrix ctm;
  // The character's.
  Matrix matrix;
  // From the current point to a glyph's origin, in device space.
  Point shift;
  // How far a distance in character space reaches at most, in device space.
  double scale = 0;

  bool isFor(const GraphicsState& state, const Matrix& characterMatrix) const;
};

// All fonts of a job: what belongs to the number in a font's dictionary (FID), the programs that go into the
// PDF, and what stood in for fonts that were not there.
class Fonts final : public Interpreter::Extension {
 public:
  static constexpr Interpreter::Slot kSlot = Interpreter::Slot::kFonts;

  Fonts(Interpreter& interpreter, Graphics& graphics);
  ~Fonts() override;

  Interpreter& interpreter() { return interpreter_; }
  Graphics& graphics() { return graphics_; }

  // A number for a new font, whose FontMatrix is the one that all instances are measured by.
  Object newFontId(const Matrix& matrix);
  // Throws invalidfont when the dictionary is none that definefont has seen, or cannot be read.
  const std::shared_ptr<Face>& faceOf(const Object& font);
  // The FontMatrix that the font was defined with.
  Matrix definedMatrix(const Object& font) const;

  // REQUIRES: a dictionary
  bool isComposite(const Object& font) const;
  // Borrowed: valid until another font is asked for. Throws invalidfont.
  const ShownFont& shown(const Object& font);

  // The program for a content, made when there is none yet.
  std::shared_ptr<OutlineProgram> program(const Fingerprint& content,
                                          const std::function<std::unique_ptr<OutlineProgram>()>& make);
  Type3Program& type3Program(const std::string& name, const Matrix& matrix);

  SystemFonts& systemFonts() { return systemFonts_; }
  // That a font stands in for another is worth a warning once its glyphs are asked for.
  void noteSubstitution(const Object& font, std::string_view wanted, std::string_view used);
  void noteMissingGlyph() { ++missingGlyphs_; }

  // CMaps by number, as their dictionaries have it. Null when there is none.
  std::int64_t newCMap();
  CMap* cmap(std::int64_t number);

  TextLine& line() { return line_; }

  // The glyph whose procedure is running; null when none is.
  GlyphRun* run() { return run_; }
  void setRun(GlyphRun* run) { run_ = run; }

  // Whether the procedure of kshow or cshow that has just run came to its end.
  void noteEndOfTurn() { hasTurnEnded_ = true; }
  bool takeEndOfTurn() { return std::exchange(hasTurnEnded_, false); }

  // Writes all fonts. To be called once, when all pages are written.
  void finish();
  std::vector<std::string> warnings() const;
  // The fonts that another has stood in for, by the names under which the job asked for them.
  std::vector<std::string> substitutedFonts() const;

  void trace(Tracer& tracer) const override;
  void onSave(std::uint32_t serial) override;
  void onRestore(std::uint32_t serial) override;

 private:
  std::shared_ptr<Face> makeFace(const Object& font);
  const std::shared_ptr<Face>& remember(std::int64_t number, const std::shared_ptr<Face>& face);

  Interpreter& interpreter_;
  Graphics& graphics_;
  SystemFonts systemFonts_;
  Name* fontId_;
  Name* fontType_;
  Name* fontMatrix_;
  Name* encoding_;
  std::int64_t lastNumber_ = 0;
  std::unordered_map<std::int64_t, Matrix> definitions_;
  std::unordered_map<std::int64_t, std::shared_ptr<Face>> faces_;
  // The one that was asked for last; mostly it is asked for again.
  std::int64_t lastFace_ = 0;
  const std::shared_ptr<Face>* lastFound_ = nullptr;
  std::unordered_map<Fingerprint, std::shared_ptr<OutlineProgram>, FingerprintHash> programs_;
  // In the order of their coming, so that the same job makes the same file.
  std::vector<OutlineProgram*> order_;
  std::vector<std::unique_ptr<Type3Program>> type3Programs_;
  struct Substitution {
    std::string wanted;
    std::string used;
    bool isUsed = false;
  };
  // By CharStrings, which copies with another encoding share. What stands in is never collected.
  std::unordered_map<const Dictionary*, Substitution> substitutions_;
  std::vector<std::unique_ptr<CMap>> cmaps_;
  std::map<std::uint32_t, std::int64_t> saves_;
  ShownFont shown_;
  TextLine line_;
  std::size_t missingGlyphs_ = 0;
  GlyphRun* run_ = nullptr;
  bool hasTurnEnded_ = false;
};

inline Fonts& fontsOf(Interpreter& interpreter) {
  return interpreter.extension<Fonts>();
}

}  // namespace quillpress::level3

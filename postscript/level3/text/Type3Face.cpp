#include "postscript/level3/text/Type3Face.h"

#include <cmath>

#include "postscript/level3/graphics/Capture.h"
#include "postscript/level3/pdf/PdfNumbers.h"
#include "postscript/level3/text/FontEntries.h"
#include "postscript/level3/text/Fonts.h"
#include "postscript/level3/text/GlyphRun.h"
#include "postscript/level3/text/GlyphText.h"

namespace quillpress::level3 {

namespace {

// Glyphs are drawn so large that rounding to pixels of the device does them no harm: pixels to the em.
constexpr double kDrawnSize = 2000;
// Around everything that a glyph may draw, in ems.
constexpr double kReach = 1000;
constexpr int kNumberPlaces = 4;

// Where the axes are neither turned nor slanted, the font of the PDF has the same matrix. Always one that can
// be inverted.
Matrix fontMatrixOf(const Matrix& defined) {
  const bool isPlain = defined.b == 0 && defined.c == 0;
  const double scale = defined.meanScale();
  const Matrix matrix = isPlain ? Matrix::scaling(defined.a, defined.d) : Matrix::scaling(scale, scale);
  return matrix.inverse() ? matrix : Matrix::scaling(0.001, 0.001);
}

void appendOperand(std::string& text, double value) {
  appendNumber(text, value, kNumberPlaces);
  text += ' ';
}

// "wx 0 llx lly urx ury d1" for shapes, "wx 0 d0" for glyphs with colours.
std::string heading(const GlyphRun& run) {
  std::string text;
  appendOperand(text, run.advance.x);
  text += "0 ";
  if (!run.isMask) return text + "d0\n";
  for (const double value : {run.bounds.left, run.bounds.bottom, run.bounds.right, run.bounds.top}) {
    appendOperand(text, value);
  }
  return text + "d1\n";
}

// The run that operators report to, for a scope.
class RunScope {
 public:
  RunScope(Fonts& fonts, GlyphRun& run) : fonts_(fonts), outer_(fonts.run()) { fonts.setRun(&run); }
  ~RunScope() { fonts_.setRun(outer_); }
  RunScope(const RunScope&) = delete;
  RunScope& operator=(const RunScope&) = delete;

 private:
  Fonts& fonts_;
  GlyphRun* outer_;
};

}  // namespace

Type3Face::Type3Face(Fonts& fonts, const Object& font)
    : fonts_(fonts), matrix_(fontMatrixOf(fonts.definedMatrix(font))), inverse_(*matrix_.inverse()) {
  const FontEntries entries(fonts.interpreter(), font);
  const Object* const byName = entries.find("BuildGlyph");
  const Object* const byCode = entries.find("BuildChar");
  hasGlyphProcedure_ = byName != nullptr && byName->isExecutable();
  if (!hasGlyphProcedure_ && (byCode == nullptr || !byCode->isProcedure())) raise(ErrorName::kInvalidFont);
  program_ = &fonts.type3Program(std::string(entries.text("FontName")), matrix_);
}

Type3Face::Key Type3Face::identityOf(const GlyphKey& key) const {
  return hasGlyphProcedure_ && key.name != nullptr ? Key(key.name, 0) : Key(nullptr, key.code);
}

// font name BuildGlyph, font cid BuildGlyph, or font code BuildChar
void Type3Face::runProcedure(const Object& font, const GlyphKey& key) {
  Interpreter& interpreter = fonts_.interpreter();
  const FontEntries entries(interpreter, font);
  interpreter.operands().require(2);
  interpreter.operands().push(font);
  const bool isNamed = hasGlyphProcedure_ && key.name != nullptr;
  interpreter.operands().push(isNamed ? Object::literalName(key.name) : Object::integer(key.code));
  interpreter.runAndWait(entries.require(hasGlyphProcedure_ ? "BuildGlyph" : "BuildChar"));
}

FaceGlyph& Type3Face::glyph(const Object& font, const GlyphKey& key) {
  if (Drawn* const recent = recent_.find(key); recent != nullptr && recent->isMask) return recent->glyph;
  const auto [place, isNew] = glyphs_.try_emplace(identityOf(key));
  Drawn& drawn = recent_.remember(key, place->second);
  if (isNew && key.name != nullptr) fonts_.interpreter().memory().name(key.name->text());
  if (isNew || !drawn.isMask) draw(font, key, drawn);
  return drawn.glyph;
}

void Type3Face::draw(const Object& font, const GlyphKey& key, Drawn& drawn) {
  Graphics& graphics = fonts_.graphics();
  const Rooted kept(fonts_.interpreter().memory(), font);
  GlyphRun run;
  // Character space, whose unit is the PDF font's, to pixels.
  const double pixels = kDrawnSize;
  const Matrix toPixels = matrix_ * Matrix::scaling(pixels, pixels);
  run.fromDevice = *toPixels.inverse();
  const Box reach = transformed(Box{-kReach, -kReach, kReach, kReach}, inverse_);
  Captured captured;
  {
    const RunScope scope(fonts_, run);
    CaptureSettings settings{toPixels, reach};
    settings.isGlyph = true;
    captured = capture(graphics, settings, [&] { runProcedure(font, key); });
  }
  FaceGlyph& glyph = drawn.glyph;
  glyph = {};
  drawn.isMask = run.isMask;
  glyph.advance = run.advance;
  glyph.bounds = run.isMask ? run.bounds : reach;
  glyph.vertical = run.hasVertical ? run.vertical : VerticalMetrics{run.advance, {0, 0}};
  glyph.width = run.advance.x * matrix_.a;
  glyph.isShown = true;
  if (run.isMask && !run.bounds.isEmpty()) glyph.reach = reachOf(run.bounds);
  if (!run.hasWidth && captured.content.empty()) {
    glyph.isShown = false;
    glyph.reach = -1;
    return;
  }
  PdfFile& file = graphics.document().file();
  Type3Program::Description description;
  description.procedure = file.addSharedStream("", heading(run) + captured.content, StreamData::kDeflate);
  description.advance = run.advance.x;
  description.isMask = run.isMask;
  if (run.isMask) description.bounds = run.bounds;
  if (key.name != nullptr) description.name = key.name->text();
  description.text = textOfGlyph(fonts_.interpreter(), font, key);
  description.code = key.code;
  glyph.slot = program_->use(file, description, captured.used, home_);
}

Box Type3Face::boundsOf(const FaceGlyph& glyph, const Matrix& toDevice) const {
  return glyph.isShown ? transformed(glyph.bounds, toDevice) : Box();
}

void Type3Face::paint(FaceGlyph& glyph, const GlyphPlace& place, Ink& ink) {
  TextGlyph text;
  text.font = glyph.slot.font;
  text.code = glyph.slot.code;
  text.width = glyph.width;
  text.toDevice = inverse_ * place.toDevice;
  ink.show(text, place.bounds);
}

// What the procedure fills and strokes; masks and images have no outline.
void Type3Face::appendOutline(FaceGlyph& /*glyph*/, const GlyphPlace& place, Path& path) {
  const std::optional<Matrix> fromDevice = place.toDevice.inverse();
  if (!fromDevice) return;
  const Rooted kept(fonts_.interpreter().memory(), place.font);
  const GlyphKey key = place.key;
  GlyphRun run;
  run.fromDevice = *fromDevice;
  const RunScope scope(fonts_, run);
  path.append(captureOutlines(fonts_.graphics(), place.toDevice, [&] { runProcedure(kept.value, key); }));
}

}  // namespace quillpress::level3

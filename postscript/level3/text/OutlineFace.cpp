#include "postscript/level3/text/OutlineFace.h"

#include <algorithm>

#include "postscript/level3/text/CidText.h"
#include "postscript/level3/text/FontEntries.h"
#include "postscript/level3/text/Fonts.h"
#include "postscript/level3/text/GlyphText.h"
#include "postscript/level3/text/TextCursor.h"

namespace quillpress::level3 {

namespace {

constexpr std::size_t kMetricsResults = 10;

// The entry of Metrics or Metrics2 for a glyph: by name, or by CID.
const Object* metricsEntry(const Object& metrics, const GlyphKey& key) {
  if (!metrics.isDictionary()) return nullptr;
  if (key.name != nullptr) return metrics.asDictionary()->find(key.name);
  return metrics.asDictionary()->find(Object::integer(key.code));
}

}  // namespace

OutlineFace::OutlineFace(Fonts& fonts, const Object& font, std::shared_ptr<OutlineProgram> program)
    : program_(std::move(program)), fonts_(fonts) {
  const FontEntries entries(fonts.interpreter(), font);
  if (entries.integer("PaintType", 0) == 2) strokeWidth_ = std::max(0.0, entries.number("StrokeWidth", 0));
}

std::uint64_t OutlineFace::identityOf(const GlyphKey& key) {
  return key.name != nullptr ? reinterpret_cast<std::uintptr_t>(key.name) : std::uint64_t{key.code} << 1 | 1;
}

FaceGlyph& OutlineFace::glyph(const Object& font, const GlyphKey& key) {
  const Object source = sourceOf(font, key);
  if (FaceGlyph* const recent = recent_.find(key);
      recent != nullptr && recent->source.isIdenticalTo(source)) {
    return *recent;
  }
  const auto [place, isNew] = glyphs_.try_emplace(identityOf(key));
  FaceGlyph& glyph = recent_.remember(key, place->second);
  if (!isNew && glyph.source.isIdenticalTo(source)) return glyph;
  // Names that are keys here are not to be collected.
  if (isNew && key.name != nullptr) fonts_.interpreter().memory().name(key.name->text());
  glyph = {};
  glyph.source = source;
  const std::optional<Found> found = read(font, key, source);
  if ((!found || found->isStandIn) && !isNotdef(key)) fonts_.noteMissingGlyph();
  if (!found) return glyph;
  glyph.index = found->index;
  glyph.isStandIn = found->isStandIn;
  measure(font, key, glyph);
  return glyph;
}

void OutlineFace::measure(const Object& font, const GlyphKey& key, FaceGlyph& glyph) {
  const Glyph& outline = program_->glyph(glyph.index);
  glyph.isShown = !outline.path.isEmpty() || !isNotdef(key);
  glyph.bounds = outline.bounds();
  glyph.advance = outline.advance;
  glyph.width = program_->width(glyph.index);
  // Without metrics for lines that run down, a glyph is set there as in others.
  glyph.vertical = outline.vertical.value_or(VerticalMetrics{outline.advance, {0, 0}});
  applyMetrics(font, key, glyph);
  applyDeviceProcedure(font, key, glyph);
  const bool isFilled = strokeWidth_ < 0;
  if (glyph.isShown && isFilled && glyph.shift == Point())
    glyph.reach = glyph.bounds.isEmpty() ? 0 : reachOf(glyph.bounds);
}

// Metrics: a width, [sidebearing width] along the baseline, or [sbx sby wx wy]; the outline moves with its
// side bearing. Metrics2: [w1x w1y vx vy].
void OutlineFace::applyMetrics(const Object& font, const GlyphKey& key, FaceGlyph& glyph) {
  const FontEntries entries(fonts_.interpreter(), font);
  if (const Object* const entry = metricsEntry(entries.dictionary("Metrics"), key)) {
    const double left = glyph.bounds.isEmpty() ? 0 : glyph.bounds.left;
    if (entry->isNumber()) {
      glyph.advance = {entry->asNumber(), 0};
    } else if (const std::vector<double> values = numbersIn(*entry); values.size() == 2) {
      glyph.shift = {values[0] - left, 0};
      glyph.advance = {values[1], 0};
    } else if (values.size() == 4) {
      glyph.shift = {values[0] - left, values[1]};
      glyph.advance = {values[2], values[3]};
    }
  }
  if (const Object* const entry = metricsEntry(entries.dictionary("Metrics2"), key)) {
    const std::vector<double> values = numbersIn(*entry);
    if (values.size() == 4) glyph.vertical = {{values[0], values[1]}, {values[2], values[3]}};
  }
}

// w0x w0y llx lly urx ury w1x w1y vx vy name|cid CDevProc -> the same ten
void OutlineFace::applyDeviceProcedure(const Object& font, const GlyphKey& key, FaceGlyph& glyph) {
  Interpreter& interpreter = fonts_.interpreter();
  const FontEntries entries(interpreter, font);
  const Object* const procedure = entries.find("CDevProc");
  if (procedure == nullptr || !procedure->isProcedure()) return;
  ObjectStack& operands = interpreter.operands();
  const Box box = glyph.bounds.isEmpty() ? Box{0, 0, 0, 0} : glyph.bounds;
  const VerticalMetrics& down = glyph.vertical;
  for (const double value : {glyph.advance.x, glyph.advance.y, box.left, box.bottom, box.right, box.top,
                             down.advance.x, down.advance.y, down.origin.x, down.origin.y}) {
    operands.push(Object::real(static_cast<float>(value)));
  }
  operands.push(key.name != nullptr ? Object::literalName(key.name) : Object::integer(key.code));
  interpreter.runAndWait(*procedure);
  if (operands.depth() < kMetricsResults) raise(ErrorName::kStackUnderflow);
  std::array<double, kMetricsResults> results{};
  for (std::size_t i = 0; i < kMetricsResults; ++i) {
    const Object& result = operands.top(kMetricsResults - 1 - i);
    if (!result.isNumber()) raise(ErrorName::kTypeCheck);
    results[i] = result.asNumber();
  }
  operands.pop(kMetricsResults);
  glyph.advance = {results[0], results[1]};
  glyph.vertical = {{results[6], results[7]}, {results[8], results[9]}};
}

std::u32string OutlineFace::meaningOf(const Object& font, const GlyphKey& key, GlyphIndex index) {
  std::u32string text = textOfGlyph(fonts_.interpreter(), font, key);
  if (text.empty()) text = ownText(index);
  if (text.empty() && key.name == nullptr) text = textOfCid(fonts_.interpreter(), font, key.code);
  // Where nothing tells, the code may: many a job names its glyphs by number and leaves them at their codes.
  if (text.empty() && !isNotdef(key) && hasCode(font, key)) text = textOfCode(key);
  return text;
}

// Not those that glyphshow asks for by names that are not in the font's Encoding.
bool OutlineFace::hasCode(const Object& font, const GlyphKey& key) {
  return key.name == nullptr || encodedName(fonts_.interpreter(), font, key.code) == key.name;
}

// More than the glyph where its outline is empty: a blank that can be seen is part of the text.
Box OutlineFace::boundsOf(const FaceGlyph& glyph, const Matrix& toDevice) const {
  if (!glyph.isShown) return {};
  Box bounds = glyph.bounds;
  bounds.include(Point{0, 0});
  return transformed(bounds, toDevice);
}

void OutlineFace::paint(FaceGlyph& glyph, const GlyphPlace& place, Ink& ink) {
  if (glyph.slot.font == 0) {
    const std::u32string text =
        glyph.isStandIn ? std::u32string() : meaningOf(place.font, place.key, glyph.index);
    const std::uint32_t code = hasCode(place.font, place.key) ? place.key.code : OutlineProgram::kNoCode;
    glyph.slot = program_->use(fonts_.graphics().document().file(), glyph.index, code, text);
  }
  TextGlyph text;
  text.font = glyph.slot.font;
  text.code = glyph.slot.code;
  text.codeBytes = glyph.slot.codeBytes;
  text.width = glyph.width;
  const double unit = program_->unit();
  text.toDevice = Matrix::scaling(1 / unit, 1 / unit) * place.toDevice;
  if (strokeWidth_ >= 0) text.mode = TextMode::kStroke;
  ink.show(text, place.bounds, strokeWidth_ >= 0 ? strokeWidth_ * place.toDevice.meanScale() : 0);
}

void OutlineFace::appendOutline(FaceGlyph& glyph, const GlyphPlace& place, Path& path) {
  if (glyph.isShown) path.append(program_->glyph(glyph.index).path.transformed(place.toDevice));
}

void OutlineFace::trace(Tracer& tracer) const {
  for (const auto& [key, glyph] : glyphs_) tracer.visit(glyph.source);
}

}  // namespace quillpress::level3

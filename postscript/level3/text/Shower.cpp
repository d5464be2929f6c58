#include "postscript/level3/text/Shower.h"

#include <cmath>

#include "postscript/level3/graphics/MatrixOperands.h"
#include "postscript/level3/text/FontEntries.h"
#include "postscript/level3/text/FontInstances.h"
#include "postscript/level3/text/Fonts.h"

namespace quillpress::level3 {

namespace {

// What is shown without a font.
const FaceGlyph kNoGlyph{};

// Frame: this operator alone. What stands above it is a turn of kshow or cshow; `exit` takes both away.
void endTurn(Interpreter& interpreter) {
  interpreter.execution().pop(1);
  fontsOf(interpreter).noteEndOfTurn();
}

// procedure ->
void beginTurn(Interpreter& interpreter) {
  interpreter.execution().require(2);
  interpreter.execution().push(interpreter.internal(endTurn));
  interpreter.execution().push(interpreter.operands().top());
  interpreter.operands().pop();
}

// A FontMatrix holds numbers of single precision, and 600 thousandths of one come out as 6.0000005. The last
// bits of a product are therefore dropped, so that widths are the round numbers that a job expects.
double rounded(double value) {
  constexpr double kKeptBits = 0x1p31 + 1;
  const double split = kKeptBits * value;
  return std::isfinite(split) ? split - (split - value) : value;
}

}  // namespace

void Shower::addOperators(Interpreter& interpreter) {
  interpreter.addInternal("kshow", beginTurn);
  interpreter.addInternal("kshow", endTurn, OperatorKind::kLoop);
}

// False when the procedure has left by `exit`.
bool Shower::takeTurn(const Object& procedure) {
  interpreter_.operands().push(procedure);
  interpreter_.runAndWait(interpreter_.internal(beginTurn));
  return fontsOf(interpreter_).takeEndOfTurn();
}

Shower::Shower(Interpreter& interpreter, const ShowSettings& settings)
    : interpreter_(interpreter),
      graphics_(graphicsOf(interpreter)),
      settings_(settings),
      ink_(graphics_),
      line_(fontsOf(interpreter).line()),
      scope_(interpreter.memory(), *this) {}

void Shower::trace(Tracer& tracer) const {
  for (const Held& held : held_) tracer.visit(held.character.font);
}

Point Shower::advanceOf(const TextCharacter& character, const FaceGlyph& glyph) const {
  const Point distance =
      character.matrix.applyToDistance(character.isVertical ? glyph.vertical.advance : glyph.advance);
  return {rounded(distance.x), rounded(distance.y)};
}

Point Shower::advanceWith(const TextCharacter& character, const FaceGlyph& glyph) {
  const std::size_t place = count_++;
  if (settings_.advances) return (*settings_.advances)[place];
  Point advance = advanceOf(character, glyph) + settings_.extra;
  if (settings_.wideCode == character.code) advance = advance + settings_.wideExtra;
  return advance;
}

bool Shower::continuesLine(const TextCharacter& character) const {
  return settings_.target == ShowSettings::Target::kPage && line_.isFor(graphics_.state(), character.matrix);
}

// Most glyphs differ from the one before in their code and place alone.
bool Shower::addToLine(const TextCharacter& character, const FaceGlyph& glyph, Point start) {
  const bool canFollow = isOnLine_ && line_.content == ink_.content() && glyph.reach >= 0 &&
                         glyph.slot.font != 0 && !character.isVertical && held_.empty();
  if (!canFollow) return false;
  const bool follows = ink_.showNext({glyph.slot.font, glyph.slot.code, glyph.slot.codeBytes, glyph.width,
                                      start + line_.shift, glyph.reach * line_.scale});
  if (follows) isSeen_ = true;
  return follows;
}

// Others may follow the glyph that has been painted.
void Shower::beginLine(const TextCharacter& character, const FaceGlyph& glyph, const Matrix& toDevice) {
  const GraphicsState& state = graphics_.state();
  isOnLine_ = glyph.reach >= 0 && !character.isVertical;
  line_.content = isOnLine_ ? ink_.content() : nullptr;
  if (!isOnLine_) return;
  line_.colour = state.colour;
  line_.rare = state.rare;
  line_.ctm = state.ctm;
  line_.matrix = character.matrix;
  line_.shift = state.ctm.applyToDistance(character.matrix.apply({}));
  line_.scale =
      std::max(std::abs(toDevice.a) + std::abs(toDevice.c), std::abs(toDevice.b) + std::abs(toDevice.d));
}

// Paints the glyph, or adds it to the path.
void Shower::place(const TextCharacter& character, FaceGlyph& glyph, Point start) {
  GraphicsState& state = graphics_.state();
  Point shift = glyph.shift;
  if (character.isVertical) shift = shift - glyph.vertical.origin;
  GlyphPlace place{character.font, character.key, character.matrix * state.ctm, {}};
  const Point origin = start + state.ctm.applyToDistance(character.matrix.apply(shift));
  place.toDevice.tx = origin.x;
  place.toDevice.ty = origin.y;
  if (settings_.target == ShowSettings::Target::kPath) {
    character.face->appendOutline(glyph, place, state.path);
  } else if (ink_.content() != nullptr) {
    place.bounds = character.face->boundsOf(glyph, place.toDevice);
    if (place.bounds.isEmpty()) return;
    if (isSeen_ || isSeenFrom(place.bounds)) {
      character.face->paint(glyph, place, ink_);
      beginLine(character, glyph, place.toDevice);
    } else {
      held_.push_back({character, &glyph, place.toDevice, place.bounds});
    }
  }
}

// The first glyph that can be seen brings those before it with it.
bool Shower::isSeenFrom(const Box& bounds) {
  if (!ink_.canBeSeen(bounds)) return false;
  isSeen_ = true;
  for (const Held& held : held_) {
    const TextCharacter& character = held.character;
    character.face->paint(*held.glyph, {character.font, character.key, held.toDevice, held.bounds}, ink_);
  }
  held_.clear();
  return true;
}

Point Shower::showNext(const TextCharacter& character) {
  FaceGlyph* const glyph = character.face ? &character.face->glyph(character.font, character.key) : nullptr;
  const Point advance = advanceWith(character, glyph != nullptr ? *glyph : kNoGlyph);
  if (settings_.target == ShowSettings::Target::kWidth) return advance;
  // Adding an outline ends with a current point of its own.
  const Point start = graphics_.currentPoint();
  if (glyph != nullptr && !addToLine(character, *glyph, start)) place(character, *glyph, start);
  graphics_.moveTo(start + graphics_.state().ctm.applyToDistance(advance));
  return advance;
}

Point Shower::show(TextCursor& cursor) {
  Point total;
  isOnLine_ = continuesLine(cursor.character());
  isSeen_ = false;
  held_.clear();
  const std::size_t shownBefore = count_;
  while (const TextCharacter* const character = cursor.next()) {
    if (cursor.isComposite()) isOnLine_ = continuesLine(*character);
    total = total + showNext(*character);
  }
  noteDirection(cursor.character(), count_ - shownBefore);
  return total;
}

// Text whose width is asked for counts, too: it is about to be shown that way, and Ghostscript counts it.
void Shower::noteDirection(const TextCharacter& character, std::size_t characters) {
  const GraphicsState& state = graphics_.state();
  const Point direction = (character.matrix * state.ctm).applyToDistance({1, 0});
  state.device->canvas->textDirections().note(direction, characters);
}

void Shower::showGlyph(const TextCharacter& character) {
  // What a face says of a glyph may run a job's procedure; the font must live as long.
  const Rooted font(interpreter_.memory(), character.font);
  isOnLine_ = continuesLine(character);
  showNext(character);
  noteDirection(character, 1);
}

void Shower::showWithProcedure(std::string_view bytes) {
  const std::string string(bytes);
  const Rooted procedure(interpreter_.memory(), settings_.procedure);
  for (std::size_t place = 0; place < string.size(); ++place) {
    if (place > 0) {
      interpreter_.operands().push(Object::integer(static_cast<unsigned char>(string[place - 1])));
      interpreter_.operands().push(Object::integer(static_cast<unsigned char>(string[place])));
      if (!takeTurn(procedure.value)) return;
    }
    TextCursor cursor(interpreter_, graphics_.state().font, string.substr(place, 1));
    show(cursor);
  }
}

void Shower::callWithWidths(TextCursor& cursor) {
  const Rooted procedure(interpreter_.memory(), settings_.procedure);
  const Rooted root(interpreter_.memory(), graphics_.state().font);
  const bool isComposite =
      !root.value.isNull() && FontEntries(interpreter_, root.value).integer("FontType", -1) == 0;
  while (cursor.next() != nullptr) {
    const TextCharacter& character = cursor.character();
    const FaceGlyph& glyph = character.face ? character.face->glyph(character.font, character.key) : kNoGlyph;
    const Point advance = advanceOf(character, glyph);
    GraphicsState& state = graphics_.state();
    if (character.face) {
      // The procedure finds the base font, as it has to be to show the character.
      state.rootFont = root.value;
      state.font =
          isComposite ? fontWithMatrix(interpreter_, character.font, character.matrix) : character.font;
    }
    interpreter_.operands().push(
        Object::integer(character.key.name == nullptr ? character.key.code : character.code));
    interpreter_.operands().push(realOf(advance.x));
    interpreter_.operands().push(realOf(advance.y));
    const bool goesOn = takeTurn(procedure.value);
    graphics_.state().font = root.value;
    graphics_.state().rootFont = root.value;
    if (!goesOn) return;
  }
}

}  // namespace quillpress::level3

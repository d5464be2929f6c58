#include "postscript/level3/graphics/MatrixOperands.h"
#include "postscript/level3/graphics/NumberStrings.h"
#include "postscript/level3/operators/Operands.h"
#include "postscript/level3/text/FontEntries.h"
#include "postscript/level3/text/Fonts.h"
#include "postscript/level3/text/Shower.h"
#include "postscript/level3/text/TextOperators.h"

// Operands are taken off before a string is shown, since glyphs may be procedures of the job, which find
// theirs on the stack. What can be wrong with font, string and current point is therefore looked at first.

namespace quillpress::level3 {

namespace {

bool isComposite(Interpreter& interpreter) {
  const Object& font = stateOf(interpreter).font;
  return !font.isNull() && fontsOf(interpreter).isComposite(font);
}

// The font's way through a string that is still an operand. Throws invalidaccess and invalidfont.
TextCursor charactersOf(Interpreter& interpreter, const Object& string) {
  requireReadable(string);
  return TextCursor(interpreter, stateOf(interpreter).font, std::string(textOf(string)));
}

void requireCurrentPoint(Interpreter& interpreter) {
  graphicsOf(interpreter).currentPoint();
}

void showWith(Interpreter& interpreter, const ShowSettings& settings, const Object& string,
              std::size_t operands) {
  TextCursor cursor = charactersOf(interpreter, string);
  requireCurrentPoint(interpreter);
  interpreter.operands().pop(operands);
  Shower(interpreter, settings).show(cursor);
}

// string ->
void show(Interpreter& interpreter) {
  showWith(interpreter, {}, interpreter.operands().top(), 1);
}

// ax ay string ->
void ashow(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  ShowSettings settings;
  settings.extra = {operands.top(2).asNumber(), operands.top(1).asNumber()};
  showWith(interpreter, settings, operands.top(), 3);
}

// The code that widthshow looks for; in a base font, a byte. Throws rangecheck.
std::uint32_t codeToWiden(Interpreter& interpreter, const Object& code) {
  constexpr std::size_t kLastOfByte = 255;
  constexpr std::size_t kLast = 0x7fffffff;
  return static_cast<std::uint32_t>(countOf(code, isComposite(interpreter) ? kLast : kLastOfByte));
}

// cx cy char string ->
void widthshow(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  ShowSettings settings;
  settings.wideExtra = {operands.top(3).asNumber(), operands.top(2).asNumber()};
  settings.wideCode = codeToWiden(interpreter, operands.top(1));
  showWith(interpreter, settings, operands.top(), 4);
}

// cx cy char ax ay string ->
void awidthshow(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  ShowSettings settings;
  settings.wideExtra = {operands.top(5).asNumber(), operands.top(4).asNumber()};
  settings.wideCode = codeToWiden(interpreter, operands.top(3));
  settings.extra = {operands.top(2).asNumber(), operands.top(1).asNumber()};
  showWith(interpreter, settings, operands.top(), 6);
}

std::size_t characterCount(Interpreter& interpreter, const Object& string) {
  if (!isComposite(interpreter)) return string.length();
  TextCursor cursor = charactersOf(interpreter, string);
  std::size_t count = 0;
  while (cursor.next() != nullptr) ++count;
  return count;
}

enum class Axes { kX, kY, kBoth };

// string numarray|numstring ->     Throws rangecheck when there are too few numbers.
template <Axes kAxes>
void showAtDistances(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  TextCursor cursor = charactersOf(interpreter, operands.top(1));
  requireCurrentPoint(interpreter);
  const std::vector<double> numbers = numbersOfArrayOrString(operands.top());
  const std::size_t count = characterCount(interpreter, operands.top(1));
  if (numbers.size() < count * (kAxes == Axes::kBoth ? 2 : 1)) raise(ErrorName::kRangeCheck);
  std::vector<Point> advances;
  for (std::size_t i = 0; i < count; ++i) {
    if (kAxes == Axes::kX) advances.push_back({numbers[i], 0});
    if (kAxes == Axes::kY) advances.push_back({0, numbers[i]});
    if (kAxes == Axes::kBoth) advances.push_back({numbers[2 * i], numbers[2 * i + 1]});
  }
  ShowSettings settings;
  settings.advances = std::move(advances);
  operands.pop(2);
  Shower(interpreter, settings).show(cursor);
}

// name|cid ->
void glyphshow(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  Graphics& graphics = graphicsOf(interpreter);
  graphics.currentPoint();
  const Object font = graphics.state().font;
  const Object glyph = operands.top();
  if (font.isNull() || isComposite(interpreter)) raise(ErrorName::kInvalidFont);
  const FontEntries entries(interpreter, font);
  const bool isCid = entries.find("CIDFontType") != nullptr;
  if (isCid != glyph.isInteger()) raise(ErrorName::kTypeCheck);
  TextCharacter character;
  character.font = font;
  character.face = fontsOf(interpreter).faceOf(font);
  character.matrix = entries.requireMatrix("FontMatrix");
  if (isCid) {
    character.key.code = static_cast<std::uint32_t>(countOf(glyph, 0xffff));
  } else {
    character.key = namedGlyph(interpreter, font, glyph.asName());
  }
  character.code = character.key.code;
  operands.pop();
  const ShowSettings settings{};
  Shower(interpreter, settings).showGlyph(character);
}

// proc string ->
void kshow(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  if (isComposite(interpreter)) raise(ErrorName::kInvalidFont);
  charactersOf(interpreter, operands.top());
  requireCurrentPoint(interpreter);
  const std::string bytes(textOf(operands.top()));
  ShowSettings settings;
  settings.procedure = operands.top(1);
  operands.pop(2);
  Shower(interpreter, settings).showWithProcedure(bytes);
}

// proc string ->
void cshow(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  TextCursor cursor = charactersOf(interpreter, operands.top());
  ShowSettings settings;
  settings.procedure = operands.top(1);
  operands.pop(2);
  Shower(interpreter, settings).callWithWidths(cursor);
}

// string -> wx wy
void stringwidth(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  TextCursor cursor = charactersOf(interpreter, operands.top());
  operands.require(1);
  operands.pop();
  ShowSettings settings;
  settings.target = ShowSettings::Target::kWidth;
  const Point width = Shower(interpreter, settings).show(cursor);
  operands.push(realOf(width.x));
  operands.push(realOf(width.y));
}

// string bool ->       True: what strokepath would make of outlined glyphs; outlines are the same otherwise.
void charpath(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  ShowSettings settings;
  settings.target = ShowSettings::Target::kPath;
  showWith(interpreter, settings, operands.top(1), 2);
}

constexpr OperatorRow kShowOperators[] = {
    {"show", "string", show},
    {"ashow", "num num string", ashow},
    {"widthshow", "num num int string", widthshow},
    {"awidthshow", "num num int num num string", awidthshow},
    {"xshow", "string array|string", showAtDistances<Axes::kX>},
    {"yshow", "string array|string", showAtDistances<Axes::kY>},
    {"xyshow", "string array|string", showAtDistances<Axes::kBoth>},
    {"kshow", "proc string", kshow},
    {"cshow", "proc string", cshow},
    {"glyphshow", "name|int", glyphshow},
    {"charpath", "string bool", charpath},
    {"stringwidth", "string", stringwidth},
};

}  // namespace

void addShowOperators(Interpreter& interpreter) {
  interpreter.addOperators(kShowOperators);
  Shower::addOperators(interpreter);
}

}  // namespace quillpress::level3

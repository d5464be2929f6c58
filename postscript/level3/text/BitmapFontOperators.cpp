#include <algorithm>

#include "postscript/level3/graphics/MatrixOperands.h"
#include "postscript/level3/operators/Operands.h"
#include "postscript/level3/operators/Resources.h"
#include "postscript/level3/text/FontData.h"
#include "postscript/level3/text/FontEntries.h"

// The procedure set BitmapFontInit. A CIDFont of type 4 (FontType 32) is one with a BuildGlyph of its own:
// that finds in CharStrings what imagemask and setcachedevice want.

namespace quillpress::level3 {

namespace {

// font cid ->
constexpr std::string_view kBuildBitmapGlyph = R"(
/.buildbitmapglyph {
  exch /CharStrings get exch
  2 copy known not { pop 0 } if get
  aload pop aload length 10 eq { setcachedevice2 } { setcachedevice } ifelse
  4 index length 0 eq { 5 { pop } repeat } { 5 -1 roll imagemask } ifelse
} bind def
)";

constexpr std::size_t kShortMetrics = 6;
constexpr std::size_t kLongMetrics = 10;
constexpr std::int64_t kLastCid = 0xffff;

Dictionary& glyphsOf(Interpreter& interpreter, const Object& font) {
  const FontEntries entries(interpreter, font);
  if (entries.integer("FontType", -1) != 32) raise(ErrorName::kInvalidFont);
  const Object glyphs = entries.dictionary("CharStrings");
  if (glyphs.isNull()) raise(ErrorName::kInvalidFont);
  return *glyphs.asDictionary();
}

// metrics bitmap cid font ->      The metrics are operands of setcachedevice or setcachedevice2.
void addglyph(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  VirtualMemory& memory = interpreter.memory();
  Dictionary& glyphs = glyphsOf(interpreter, operands.top());
  const Object cid = Object::integer(static_cast<std::int64_t>(countOf(operands.top(1), kLastCid)));
  const Object& bitmap = operands.top(2);
  const std::vector<double> metrics = numbersIn(operands.top(3));
  if (metrics.size() != kShortMetrics && metrics.size() != kLongMetrics) raise(ErrorName::kRangeCheck);
  const auto width = static_cast<std::int64_t>(metrics[4] - metrics[2]);
  const auto height = static_cast<std::int64_t>(metrics[5] - metrics[3]);
  if (width < 0 || height < 0) raise(ErrorName::kRangeCheck);
  std::vector<Object> matrix;
  for (const double number : {1.0, 0.0, 0.0, 1.0, -metrics[2], -metrics[3]}) matrix.push_back(realOf(number));
  const std::vector<Object> entry{bitmap,
                                  Object::integer(width),
                                  Object::integer(height),
                                  Object::boolean(true),
                                  memory.newArray(matrix),
                                  operands.top(3)};
  memory.put(glyphs, cid, memory.newArray(entry));
  operands.pop(4);
}

void removeBetween(Interpreter& interpreter, const Object& font, std::int64_t first, std::int64_t last) {
  Dictionary& glyphs = glyphsOf(interpreter, font);
  std::vector<Object> keys;
  for (const Dictionary::Entry& entry : glyphs.entries()) {
    if (entry.key.isInteger() && entry.key.asInteger() >= first && entry.key.asInteger() <= last) {
      keys.push_back(entry.key);
    }
  }
  for (const Object& key : keys) interpreter.memory().remove(glyphs, key);
}

// first last font ->
void removeglyphs(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  removeBetween(interpreter, operands.top(), operands.top(2).asInteger(), operands.top(1).asInteger());
  operands.pop(3);
}

// font ->
void removeall(Interpreter& interpreter) {
  removeBetween(interpreter, interpreter.operands().top(), 0, kLastCid);
  interpreter.operands().pop();
}

}  // namespace

void addBitmapFontOperators(Interpreter& interpreter) {
  VirtualMemory& memory = interpreter.memory();
  interpreter.runSetUp(kBuildBitmapGlyph);
  memory.setGlobal(true);
  const Object set = memory.newDictionary(3);
  const auto add = [&](std::string_view name, OperatorFunction function, std::string_view operands) {
    memory.put(*set.asDictionary(), memory.name(name), interpreter.addInternal(name, function, operands));
  };
  add("addglyph", addglyph, "array string int dict");
  add("removeglyphs", removeglyphs, "int int dict");
  add("removeall", removeall, "dict");
  Resources(interpreter)
      .define(memory.name("ProcSet"), Object::literalName(memory.name("BitmapFontInit")), set);
  memory.setGlobal(false);
}

}  // namespace quillpress::level3
